#include "document.h"

#include "tables.h"

#include <QFileInfo>

namespace zq::model {

Document::Document(QObject* parent) : QObject(parent) {
    resetToStartup();
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

void Document::resetToStartup() {
    setCloneCodeA(false);
    setModelVariant(VariantT);
    ClearStores(memory, special);
    settings = RadioSettings{};
    ClearSettingsBlock(settingsBlock);
    applySettingsBlock();
    LoadSpecialDefaults(special, modelVariant_);
    RefreshSpecialGrid();
    LoadMemoryDefaults(memory, modelVariant_);
    RefreshMemoryGrid();
    dialTexts.fill(QString());
    notifyDialTexts();
    setCurrentFilePath(QString());
    setDataChanged(false);
}

QString Document::windowCaption() const {
    if (currentFilePath_.isEmpty()) return AppTitle();
    return QFileInfo(currentFilePath_).fileName() + QStringLiteral(" - ") + AppTitle();
}

void Document::applySettingsBlock() {
    ApplySettingsBlock(settingsBlock, settings);
    Q_EMIT settingsChanged();
}

void Document::buildSettingsBlock() {
    BuildSettingsBlock(settingsBlock, settings);
}

} // namespace zq::model
