#include "document.h"

#include "channelcodec.h"
#include "tables.h"

#include <QFileInfo>

namespace zq::model {

Document::Document(QObject* parent) : QObject(parent) {
    resetToStartup();
}

void Document::settle(Mark mark) {
    if (mark == Mark::Edit) setDataChanged(true);
}

void Document::changeMemory(int first, int last, const std::function<void(MemoryTable&)>& change, Mark mark) {
    change(contents_.memory);
    Q_EMIT memoryRowsChanged(first, last);
    settle(mark);
}

void Document::changeSpecial(int first, int last, const std::function<void(SpecialTable&)>& change,
                             Mark mark) {
    change(contents_.special);
    Q_EMIT specialRowsChanged(first, last);
    settle(mark);
}

void Document::changeSettings(const std::function<void(RadioSettings&)>& change, Mark mark) {
    change(contents_.settings);
    Q_EMIT settingsChanged();
    settle(mark);
}

void Document::setDialText(int memory, const QString& text, Mark mark) {
    if (memory < 0 || memory >= kDialCount) return;
    contents_.dialTexts[memory] = text;
    Q_EMIT dialTextsChanged();
    settle(mark);
}

void Document::setSettingsHalf(int half, const QString& digits) {
    (half == 0 ? contents_.settingsBlock.halfA : contents_.settingsBlock.halfB) = digits;
}

void Document::replaceContents(const Contents& contents) {
    contents_.settingsBlock = contents.settingsBlock;
    contents_.settings = contents.settings;
    Q_EMIT settingsChanged();
    contents_.special = contents.special;
    RefreshSpecialGrid();
    contents_.dialTexts = contents.dialTexts;
    Q_EMIT dialTextsChanged();
    contents_.memory = contents.memory;
    RefreshMemoryGrid();
}

void Document::applySettingsBlock() {
    ApplySettingsBlock(contents_.settingsBlock, contents_.settings);
    Q_EMIT settingsChanged();
}

void Document::buildSettingsBlock() {
    BuildSettingsBlock(contents_.settingsBlock, contents_.settings);
}

QString Document::encodeSpecialHalf(int row, int half) {
    return half == 0 ? EncodeSpecialFirstHalf(contents_.special, row)
                     : EncodeSpecialSecondHalf(contents_.special, row);
}

void Document::setDataChanged(bool changed) {
    if (dataChanged_ == changed) return;
    dataChanged_ = changed;
    Q_EMIT dataChangedFlagChanged(changed);
}

void Document::setCloneCodeA(bool codeA) {
    if (cloneCodeA_ == codeA) return;
    cloneCodeA_ = codeA;
    Q_EMIT cloneCodeAChanged(codeA);
}

void Document::setCurrentFilePath(const QString& path) {
    if (currentFilePath_ == path) return;
    currentFilePath_ = path;
    Q_EMIT currentFilePathChanged(path);
}

void Document::setModelVariant(int variant) {
    if (variant < -1 || variant >= kVariantCount) variant = -1;
    if (modelVariant_ == variant) return;
    modelVariant_ = variant;
    Q_EMIT modelVariantChanged(variant);
}

void Document::chooseModelVariant(int variant) {
    setModelVariant(variant);
    setDataChanged(true);
    RefreshMemoryGrid();
}

void Document::resetToStartup() {
    setCloneCodeA(false);
    setModelVariant(VariantT);
    Contents startup = contents_;
    startup.settings = RadioSettings{};
    startup.dialTexts.fill(QString());
    ClearStores(startup.memory, startup.special);
    ClearSettingsBlock(startup.settingsBlock);
    ApplySettingsBlock(startup.settingsBlock, startup.settings);
    LoadSpecialDefaults(startup.special, modelVariant_);
    LoadMemoryDefaults(startup.memory, modelVariant_);
    replaceContents(startup);
    setCurrentFilePath(QString());
    setDataChanged(false);
}

QString Document::windowCaption() const {
    if (currentFilePath_.isEmpty()) return AppTitle();
    return QFileInfo(currentFilePath_).fileName() + QStringLiteral(" - ") + AppTitle();
}

} // namespace zq::model
