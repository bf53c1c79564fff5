#include "linksession.h"

#include "files/preferences.h"
#include "link/portnumbers.h"

#include <cstdio>
#include <unistd.h>

namespace zq::cli {

using model::Outcome;
using model::Result;

PortChoice ChoosePort(const CliContext& context) {
    if (!context.port.isEmpty()) {
        const QString device = link::DeviceForPortArgument(context.port);
        if (device.isEmpty())
            return {
                Result::fail(Outcome::ComPortError, QStringLiteral("no serial port %1").arg(context.port)),
                {}};
        return {Result::done(), device};
    }
    const files::PortSetting setting = files::LoadPortSetting();
    if (!setting.result.ok()) return {setting.result, {}};
    const QString device = link::DeviceForPortNumber(setting.port);
    if (device.isEmpty())
        return {Result::fail(Outcome::ComPortError, QStringLiteral("no serial port %1 (%2)")
                                                        .arg(setting.port)
                                                        .arg(link::PortCaption(setting.port))),
                {}};
    return {Result::done(), device};
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
