#pragma once
// The program's string resources by id, in English (1033) and Japanese (1041).
#include <QLocale>
#include <QString>
#include <optional>

namespace zq::ui {

enum class Language { English = 1033, Japanese = 1041 };

class StringTable {
public:
    explicit StringTable(Language language = Language::English) : language_(language) {}
    // Japanese for a Japanese locale, English for every other.
    static Language LanguageFor(const QLocale& locale);
    static StringTable ForUser() { return StringTable(LanguageFor(QLocale::system())); }

    Language language() const { return language_; }
    // No value when the table has no string of that id.
    std::optional<QString> text(int id) const;

private:
    Language language_;
};

} // namespace zq::ui
