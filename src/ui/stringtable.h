#pragma once
// The program's string resources by id, in English (1033) and Japanese (1041).
#include <QLocale>
#include <QString>
#include <optional>

namespace zq::ui {

enum class Language { English = 1033, Japanese = 1041 };

// The texts of the program's own additions beside the designed window (menu captions come through
// the menu table).
namespace text {
inline constexpr int kVerifyTitle = 1314;
inline constexpr int kNoDifferences = 1315;
inline constexpr int kOneDifference = 1316;
inline constexpr int kDifferences = 1317; // %1: their count
inline constexpr int kChirpImportTitle = 1318;
inline constexpr int kOneChannelImported = 1319;
inline constexpr int kChannelsImported = 1320;
inline constexpr int kChirpExportTitle = 1321;
inline constexpr int kOneChannelExported = 1322;
inline constexpr int kChannelsExported = 1323;
inline constexpr int kTraceFolderIs = 1324;   // %1: the folder
inline constexpr int kNoTraceKept = 1325;     // %1: why
inline constexpr int kTraceIncomplete = 1326; // %1: why
inline constexpr int kNoBackupKept = 1327;    // %1: why
inline constexpr int kMoreLines = 1328;       // %1: how many more
inline constexpr int kChirpFileFilter = 1329;
} // namespace text

class StringTable {
public:
    explicit StringTable(Language language = Language::English) : language_(language) {}
    // Japanese for a Japanese locale, English for every other.
    static Language LanguageFor(const QLocale& locale);
    static StringTable ForUser() { return StringTable(LanguageFor(QLocale::system())); }

    Language language() const { return language_; }
    // No value when the table has no string of that id.
    std::optional<QString> text(int id) const;
    // The string of an id the table holds; empty for any other.
    QString string(int id) const;

private:
    Language language_;
};

} // namespace zq::ui
