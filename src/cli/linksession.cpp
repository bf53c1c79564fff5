#include "linksession.h"

#include "commands.h"
#include "files/backups.h"
#include "files/preferences.h"
#include "link/portnumbers.h"
#include "link/tracerecorder.h"
#include "link/serialports.h"

#include <cstdio>
#include <unistd.h>

namespace zq::cli {

using model::Outcome;
using model::Result;

namespace {
Result NoSuchPort(int number, const QString& where) {
    return Result::fail(Outcome::ComPortError, QStringLiteral("no serial port %1 (%2%3); %4")
                                                   .arg(number)
                                                   .arg(link::PortCaption(number), where,
                                                        link::ListedPortsText(link::ListedPorts())));
}
} // namespace

PortChoice ChoosePort(const CliContext& context) {
    if (!context.port.isEmpty()) {
        const QString device = link::DeviceForPortArgument(context.port);
        if (device.isEmpty()) return {NoSuchPort(context.port.toInt(), QString()), {}};
        return {Result::done(), device};
    }
    const files::PortSetting setting = files::LoadPortSetting();
    if (!setting.result.ok()) return {setting.result, {}};
    const files::RememberedAdapter adapter = files::LoadRememberedAdapter();
    const link::ResolvedPort resolved =
        link::ResolvePortNumber(setting.port, adapter.port, adapter.identity, link::ListedPortDevices());
    if (resolved.device.isEmpty())
        return {NoSuchPort(setting.port, QStringLiteral(" from the port file ") + files::PortFilePath()), {}};
    return {Result::done(), resolved.device};
}

Result OpenLink(CliContext& context, link::SerialLink& serial) {
    const PortChoice choice = ChoosePort(context);
    if (!choice.result.ok()) return choice.result;
    serial.setPortName(choice.device);
    if (!context.trace) {
        auto trace = std::make_shared<link::TraceRecorder>();
        const QString heading = context.commandLine;
        if (!context.tracePath.isEmpty()) {
            const Result started = trace->start(context.tracePath, heading);
            if (!started.ok()) return started;
        } else if (const Result started =
                       trace->startInTraceFolder(QLatin1String(context.command->name), heading);
                   !started.ok()) {
            context.traceProblem = started.detail;
        }
        context.trace = trace;
    }
    if (context.trace->isRecording()) context.trace->attach(serial);
    return serial.open();
}

void FinishTrace(CliContext& context, int status) {
    if (!context.traceProblem.isEmpty())
        PrintErr(QStringLiteral("zq318: no serial trace kept: %1").arg(context.traceProblem));
    if (!context.trace) return;
    const QString outcome = status == ExitOk ? QStringLiteral("done")
                            : LastReport().isEmpty()
                                ? QStringLiteral("exit status %1").arg(status)
                                : QStringLiteral("%1 (exit status %2)").arg(LastReport()).arg(status);
    if (const Result finished = context.trace->finish(outcome); !finished.ok())
        PrintErr(QStringLiteral("zq318: the serial trace is incomplete: %1").arg(finished.detail));
    context.trace.reset();
}

void KeepBackup(const model::Document& document, const QString& operation) {
    if (const Result kept = files::KeepBackup(document, operation); !kept.ok())
        PrintErr(QStringLiteral("zq318: no backup kept: %1").arg(kept.detail));
}

QCommandLineOption SettingsOnlyOption() {
    return QCommandLineOption(QStringList{QStringLiteral("settings")},
                              QStringLiteral("Only the settings, special channels and dial memories."));
}

QCommandLineOption MemoryOnlyOption() {
    return QCommandLineOption(QStringList{QStringLiteral("memory")},
                              QStringLiteral("Only the memory channels."));
}

link::VerifyScope ScopeOf(const QCommandLineParser& parser, const QCommandLineOption& settingsOnly,
                          const QCommandLineOption& memoryOnly) {
    if (parser.isSet(settingsOnly)) return link::VerifyScope::Settings;
    if (parser.isSet(memoryOnly)) return link::VerifyScope::Memory;
    return link::VerifyScope::All;
}

int VerifyAgainst(const CliContext& context, link::SerialLink& serial, const model::Document& document,
                  const QString& file, link::VerifyScope scope) {
    link::VerifyReport report;
    {
        ProgressBar progress(context, QStringLiteral("Verify"));
        report = link::VerifyRadio(serial, document, scope, progress.steps());
    }
    for (const link::Difference& difference : report.differences)
        PrintOut(link::DifferenceText(difference));
    if (!report.result.ok()) return Report(report.result);
    if (report.differences.isEmpty()) {
        PrintOut(QStringLiteral("No differences"));
        return ExitOk;
    }
    const qsizetype count = report.differences.size();
    return Report(Result::fail(
        Outcome::CommunicationError,
        QStringLiteral("%1 %2 between the radio and %3")
            .arg(count)
            .arg(count == 1 ? QStringLiteral("difference") : QStringLiteral("differences"), file)));
}

ProgressBar::ProgressBar(const CliContext& context, const QString& caption)
    : enabled_(!context.quiet && isatty(STDERR_FILENO)), caption_(caption) {}

ProgressBar::~ProgressBar() {
    if (shown_) std::fputs("\n", stderr);
}

link::Progress ProgressBar::callback() {
    if (!enabled_) return {};
    return [this](int channel) { show(channel, model::kChannelCount - 1); };
}

link::StepProgress ProgressBar::steps() {
    if (!enabled_) return {};
    return [this](int step, int total) { show(step, total - 1); };
}

void ProgressBar::show(int value, int last) {
    constexpr int kWidth = 40;
    const int filled = last > 0 ? (value + 1) * kWidth / (last + 1) : kWidth;
    const QString bar =
        QStringLiteral("\r%1 [%2%3] %4/%5")
            .arg(caption_, QString(filled, QLatin1Char('#')), QString(kWidth - filled, QLatin1Char(' ')))
            .arg(value)
            .arg(last);
    std::fputs(bar.toLocal8Bit().constData(), stderr);
    std::fflush(stderr);
    shown_ = true;
}

} // namespace zq::cli
