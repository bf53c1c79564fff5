#pragma once
// The one model of the radio's contents and the program-wide state, shared by the window and the
// command-line tool. The stores are read through const accessors and changed only through the
// change functions below, which announce what they touched and, for the user's edits, mark the
// document changed: no caller has to remember either.
#include "dialcodec.h"
#include "settingscodec.h"
#include "stores.h"

#include <QObject>
#include <QString>
#include <array>
#include <functional>

namespace zq::model {

using DialTexts = std::array<QString, kDialCount>;

// Everything a clone file or a radio image carries besides its header, as one value.
struct Contents {
    MemoryTable memory;
    SpecialTable special;
    SettingsBlock settingsBlock;
    RadioSettings settings;
    DialTexts dialTexts;
    bool operator==(const Contents&) const = default;
};

class Document : public QObject {
    Q_OBJECT
public:
    explicit Document(QObject* parent = nullptr);

    // Whether a change is an edit of the user's (it sets DataChanged) or data arriving from a
    // file or the radio, or a redraw-only update (DataChanged is left to the command that runs).
    enum class Mark { Edit, Quiet };

    const MemoryTable& memory() const { return contents_.memory; }
    const SpecialTable& special() const { return contents_.special; }
    const SettingsBlock& settingsBlock() const { return contents_.settingsBlock; }
    const RadioSettings& settings() const { return contents_.settings; }
    const DialTexts& dialTexts() const { return contents_.dialTexts; }
    const Contents& contents() const { return contents_; }

    // Changes memory rows first..last (0-based table rows) through `change`, then announces them.
    void changeMemory(int first, int last, const std::function<void(MemoryTable&)>& change, Mark mark);
    // Changes special rows first..last through `change`, then announces them.
    void changeSpecial(int first, int last, const std::function<void(SpecialTable&)>& change, Mark mark);
    // Changes the settings pages' working copy, then announces it.
    void changeSettings(const std::function<void(RadioSettings&)>& change, Mark mark);
    void setDialText(int memory, const QString& text, Mark mark);
    // One raw half (0: A at 00E0, 1: B at 00F0) of the settings bytes, as the radio sent it.
    // The working copy follows only with applySettingsBlock().
    void setSettingsHalf(int half, const QString& digits);
    // Replaces every store at once (a file opened, New), announcing each; DataChanged stays.
    void replaceContents(const Contents& contents);

    // Settings bytes <-> the settings value.
    void applySettingsBlock(); // ApplySettingsBlock (with its repairs), then announces
    void buildSettingsBlock(); // BuildSettingsBlock from the working copy

    // Half 0 or 1 of a special record as the encoder writes it. Encoding any special row first
    // sets the RPT row's numeric frequency to 145.0, and that stays in the store.
    QString encodeSpecialHalf(int row, int half);

    bool DataChanged() const { return dataChanged_; }
    void setDataChanged(bool changed);
    bool CloneCodeA() const { return cloneCodeA_; }
    void setCloneCodeA(bool codeA);
    const QString& CurrentFilePath() const { return currentFilePath_; }
    void setCurrentFilePath(const QString& path);
    // 0..3 (T, E, J, A); -1 when no model option is selected.
    int ModelVariant() const { return modelVariant_; }
    void setModelVariant(int variant);
    // What a click of a model option does, and Auto Select after it: select the variant, mark
    // the data as changed and redraw the memory grid.
    void chooseModelVariant(int variant);

    // The data the program holds right after start-up with no file: variant T, clone code 0,
    // a blank settings block applied, the special and memory defaults, no dial texts, no file.
    void resetToStartup();

    // "name.318 - Korvex ZQ-318 Clone Utility", or the title alone when there is no file.
    QString windowCaption() const;

    // Redraw requests with no change to the data.
    void RefreshMemoryGrid() { Q_EMIT memoryRowsChanged(0, kChannelCount - 1); }
    void RefreshSpecialGrid() { Q_EMIT specialRowsChanged(0, kRptRow); }

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
    void settle(Mark mark);

    Contents contents_;
    bool dataChanged_ = false;
    bool cloneCodeA_ = false;
    QString currentFilePath_;
    int modelVariant_ = VariantIndexT;
    static constexpr int VariantIndexT = 0;
};

} // namespace zq::model
