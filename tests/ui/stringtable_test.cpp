// The string table and the window in the language of the user's locale.
#include "model/tables.h"
#include "ui/stringtable.h"
#include "windowfixture.h"

#include <QAction>
#include <QLabel>

namespace zq::ui {
namespace {

using enum Language;

TEST(StringTable, JapaneseHasEveryEnglishStringAndMissingIdsHaveNone) {
    const StringTable english(English), japanese(Japanese);
    for (int id = 0; id < 2000; ++id)
        if (english.text(id)) {
            EXPECT_TRUE(japanese.text(id).has_value()) << id;
        }
    EXPECT_EQ(japanese.text(1015), QString::fromUtf8("目次(&C)")); // a Japanese-only entry
    for (int id : {1015, 1030, 20, 21})
        EXPECT_FALSE(english.text(id).has_value()) << id;
}

// Run by ctest once per language with LANG set (ui.UserLocale_ja, ui.UserLocale_en), skipped otherwise: the
// user's language picks the table, and the window's menus, toolbar and status bar follow it.
class UserLocale : public test::WindowFixture {
protected:
    UserLocale() : WindowFixture(StringTable::ForUser().language()) {}
};

TEST_F(UserLocale, WindowSpeaksTheUsersLanguage) {
    const QByteArray expected = qgetenv("ZQ_EXPECT_LANGUAGE");
    if (expected.isEmpty()) GTEST_SKIP() << "run through ctest with ZQ_EXPECT_LANGUAGE";
    EXPECT_EQ(strings.language(), expected == "ja" ? Japanese : English);
    ASSERT_TRUE(load().ok());
    // "name=caption" of menus, the first toolbar button's tooltip and the status panel, '|' between.
    const char* const captions =
        expected == "ja" ? "mnuFile=ファイル(&F)|mnuFileOpen=開く(&O)...|mnuImport=インポート(&I)...|"
                           "mnuEditUndo=変更(&M)|mnuStatusBar=ステータス バー(&S)|mnuReAll=全て(&A)|"
                           "mnuToolsOptions=COMポート設定(&C)|mnuHelpAbout=バージョン情報(&A)|"
                           "mnuHelpGuide=ユーザー ガイド(&G)|"
                           "tbToolBar_Button1=新規作成|sbStatusBar_Panel1=状態"
                         : "mnuFile=File(&F)|mnuFileSaveAs=Save As(&A)...|mnuHelpGuide=User Guide(&G)|"
                           "tbToolBar_Button1=New|"
                           "sbStatusBar_Panel1=Status";
    for (const QString& entry : QString::fromUtf8(captions).split(QLatin1Char('|'))) {
        const QStringList parts = entry.split(QLatin1Char('='));
        const QByteArray name = parts[0].toLatin1();
        const QString shown = name.startsWith("sb")   ? find<QLabel>(name.constData())->text()
                              : name.startsWith("tb") ? find<QAction>(name.constData())->toolTip()
                                                      : find<QAction>(name.constData())->text();
        EXPECT_EQ(shown, parts[1]);
    }
    EXPECT_EQ(window->windowTitle(), model::AppTitle());
}

} // namespace
} // namespace zq::ui
