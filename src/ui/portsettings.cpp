#include "portsettings.h"

#include <QFileInfo>

namespace zq::ui {

using model::Outcome;
using model::Result;

namespace {

QStringList DevicesOf(const QList<link::SerialPortDetails>& listed) {
    QStringList devices;
    for (const link::SerialPortDetails& port : listed)
        devices << port.device;
    return devices;
}

// The port the numbering puts at `number` now; empty details when it names none.
link::SerialPortDetails PortAt(int number, const QList<link::SerialPortDetails>& listed) {
    const QString device = link::DeviceForPortNumber(number, DevicesOf(listed));
    for (const link::SerialPortDetails& port : listed)
        if (port.device == device) return port;
    link::SerialPortDetails none;
    none.device = device;
    return none;
}

} // namespace

QString PortSettings::filePath() const {
    return filePath_.isEmpty() ? files::PortFilePath() : filePath_;
}

Result PortSettings::load() {
    const files::PortSetting setting = files::LoadPortSetting(filePath());
    if (setting.result.outcome == Outcome::Fatal) return setting.result;
    number_ = setting.port;
    adapter_ = files::LoadRememberedAdapter();
    return Result::done();
}

Result PortSettings::save() const {
    const Result saved = files::SavePortSetting(number_, filePath());
    if (saved.ok() || saved.outcome == Outcome::Fatal) return saved;
    return Result::fail(Outcome::Fatal, saved.message());
}

void PortSettings::choose(const PortChoice& choice, const QList<link::SerialPortDetails>& listed) {
    const QString rememberedDevice = link::DeviceOfStableId(adapter_.identity);
    const bool stillFollowed =
        choice.number == number_ && adapter_.port == number_ && !rememberedDevice.isEmpty();
    number_ = choice.number;
    deviceOverride_ = choice.otherDevice.trimmed();
    if (stillFollowed) return;
    adapter_ = {number_, PortAt(number_, listed).stableId};
    files::SaveRememberedAdapter(adapter_);
}

link::ResolvedPort PortSettings::resolve(const QList<link::SerialPortDetails>& listed) const {
    const QStringList devices = DevicesOf(listed);
    if (!deviceOverride_.isEmpty()) return {link::DeviceForPortArgument(deviceOverride_, devices), false};
    return link::ResolvePortNumber(number_, adapter_.port, adapter_.identity, devices);
}

QString PortSettings::adapterNote(const QList<link::SerialPortDetails>& listed) const {
    if (adapter_.port != number_ || adapter_.identity.isEmpty()) return QString();
    const QString caption = link::PortCaption(number_);
    const QString name = QFileInfo(adapter_.identity).fileName();
    const QString now = link::DeviceOfStableId(adapter_.identity);
    const link::SerialPortDetails numbered = PortAt(number_, listed);
    if (now.isEmpty())
        return QStringLiteral(
                   "The adapter chosen for %1 (%2) is not plugged in; %1 stands for %3 until it is.")
            .arg(caption, name, numbered.device.isEmpty() ? QStringLiteral("no port") : numbered.device);
    if (QFileInfo(numbered.device).canonicalFilePath() == now) return QString();
    return QStringLiteral("%1 follows its adapter %2, now at %3.").arg(caption, name, now);
}

} // namespace zq::ui
