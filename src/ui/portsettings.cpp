#include "portsettings.h"

#include "files/preferences.h"

namespace zq::ui {

using model::Outcome;
using model::Result;

QString PortSettings::filePath() const {
    return filePath_.isEmpty() ? files::PortFilePath() : filePath_;
}

Result PortSettings::load() {
    const files::PortSetting setting = files::LoadPortSetting(filePath());
    if (setting.result.outcome == Outcome::Fatal) return setting.result;
    number_ = setting.port;
    return Result::done();
}

Result PortSettings::save() const {
    const Result saved = files::SavePortSetting(number_, filePath());
    if (saved.ok() || saved.outcome == Outcome::Fatal) return saved;
    return Result::fail(Outcome::Fatal, saved.message());
}

void PortSettings::choose(int number) {
    number_ = number;
    deviceOverride_.clear();
}

QString PortSettings::device() const {
    return deviceOverride_.isEmpty() ? link::DeviceForPortNumber(number_)
                                     : link::DeviceForPortArgument(deviceOverride_);
}

} // namespace zq::ui
