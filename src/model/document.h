#pragma once
// The one model of the radio's contents and the program-wide state, shared by the window and the
// command-line tool.
#include "settingscodec.h"
#include "stores.h"

#include <QObject>
#include <QString>
#include <array>

namespace zq::model {

class Document : public QObject {
    Q_OBJECT
public:
    explicit Document(QObject* parent = nullptr);

    // The stores. Code that changes them calls the matching notify function afterwards so that
    // views redraw (the equivalent of redrawing a grid from its store).
    MemoryTable memory;
    SpecialTable special;
    SettingsBlock settingsBlock;
    RadioSettings settings; // the settings pages' working copy
    std::array<QString, 9> dialTexts;

    bool DataChanged() const { return dataChanged_; }
    void setDataChanged(bool changed);
    bool CloneCodeA() const { return cloneCodeA_; }
    void setCloneCodeA(bool codeA);
    const QString& CurrentFilePath() const { return currentFilePath_; }
    void setCurrentFilePath(const QString& path);
    // 0..3 (T, E, J, A); -1 when no model option is selected.
    int ModelVariant() const { return modelVariant_; }
    void setModelVariant(int variant);

    // The data the program holds right after start-up with no file: variant T, clone code 0,
    // a blank settings block applied, the special and memory defaults, no dial texts, no file.
    void resetToStartup();

    // "name.318 - Korvex ZQ-318 Clone Utility", or the title alone when there is no file.
    QString windowCaption() const;

    // Settings bytes <-> the settings value.
    void applySettingsBlock(); // ApplySettingsBlock, then notifies
    void buildSettingsBlock(); // BuildSettingsBlock from the working copy

    void RefreshMemoryGrid() { Q_EMIT memoryRowsChanged(0, kChannelCount - 1); }
    void RefreshSpecialGrid() { Q_EMIT specialRowsChanged(0, 2); }
    void notifyMemoryRows(int first, int last) { Q_EMIT memoryRowsChanged(first, last); }
    void notifySpecialRows(int first, int last) { Q_EMIT specialRowsChanged(first, last); }
    void notifySettings() { Q_EMIT settingsChanged(); }
    void notifyDialTexts() { Q_EMIT dialTextsChanged(); }

Q_SIGNALS:
    void memoryRowsChanged(int first, int last);
    void specialRowsChanged(int first, int last);
    void settingsChanged();
    void dialTextsChanged();
    void dataChangedFlagChanged(bool changed);
    void cloneCodeAChanged(bool codeA);
    void currentFilePathChanged(const QString& path);
    void modelVariantChanged(int variant);

private:
    bool dataChanged_ = false;
    bool cloneCodeA_ = false;
    QString currentFilePath_;
    int modelVariant_ = VariantIndexT;
    static constexpr int VariantIndexT = 0;
};

} // namespace zq::model
