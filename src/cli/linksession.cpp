#include "linksession.h"

#include "files/preferences.h"
#include "link/portnumbers.h"
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

Result OpenLink(const CliContext& context, link::SerialLink& serial) {
    const PortChoice choice = ChoosePort(context);
    if (!choice.result.ok()) return choice.result;
    serial.setPortName(choice.device);
    return serial.open();
}

QCommandLineOption SettingsOnlyOption() {
    return QCommandLineOption(QStringList{QStringLiteral("settings")},
                              QStringLiteral("Only the settings, special channels and dial memories."));
}

QCommandLineOption MemoryOnlyOption() {
    return QCommandLineOption(QStringList{QStringLiteral("memory")},
                              QStringLiteral("Only the memory channels."));
}

ProgressBar::ProgressBar(const CliContext& context, const QString& caption)
    : enabled_(!context.quiet && isatty(STDERR_FILENO)), caption_(caption) {}

ProgressBar::~ProgressBar() {
    if (shown_) std::fputs("\n", stderr);
}

link::Progress ProgressBar::callback() {
    if (!enabled_) return {};
    return [this](int channel) { show(channel); };
}

void ProgressBar::show(int channel) {
    constexpr int kWidth = 40;
    const int filled = (channel + 1) * kWidth / model::kChannelCount;
    const QString bar =
        QStringLiteral("\r%1 [%2%3] %4/%5")
            .arg(caption_, QString(filled, QLatin1Char('#')), QString(kWidth - filled, QLatin1Char(' ')))
            .arg(channel)
            .arg(model::kChannelCount - 1);
    std::fputs(bar.toLocal8Bit().constData(), stderr);
    std::fflush(stderr);
    shown_ = true;
}

} // namespace zq::cli
