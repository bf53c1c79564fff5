// The string table and LocaliseForm: languages, menus, tags, tooltips and missing ids.
#include "model/tables.h"
#include "ui/localiseform.h"
#include "ui/stringtable.h"
#include "windowfixture.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>

namespace zq::ui {
namespace {

struct Lookup {
    Language language;
    int id;
    const char* expected; // nullptr: no such string
};

class StringTableLookup : public ::testing::TestWithParam<Lookup> {};

TEST_P(StringTableLookup, FindsTheStringOfItsLanguage) {
    const Lookup& c = GetParam();
    const auto text = StringTable(c.language).text(c.id);
    if (!c.expected) {
        EXPECT_FALSE(text.has_value());
        return;
    }
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(*text, QString::fromUtf8(c.expected));
}

INSTANTIATE_TEST_SUITE_P(
    Ids, StringTableLookup,
    ::testing::Values(Lookup{Language::English, 1000, "File(&F)"},
                      Lookup{Language::English, 1007, "Exit(&X)..."},
                      Lookup{Language::English, 1100, "Status Bar(&S)"},
                      Lookup{Language::English, 1207, "ALL(&A)"}, Lookup{Language::English, 1200, "Status"},
                      Lookup{Language::English, 1015, nullptr}, Lookup{Language::English, 1030, nullptr},
                      Lookup{Language::English, 20, nullptr}, Lookup{Language::English, 21, nullptr},
                      Lookup{Language::Japanese, 1000, "ファイル(&F)"},
                      Lookup{Language::Japanese, 1013, "COMポート設定(&C)"},
                      Lookup{Language::Japanese, 1015, "目次(&C)"}, Lookup{Language::Japanese, 1043, "完了"},
                      Lookup{Language::Japanese, 1044, nullptr}, Lookup{Language::Japanese, 20, nullptr}));

TEST(StringTableLanguage, JapaneseOnlyForAJapaneseLocale) {
    EXPECT_EQ(StringTable::LanguageFor(QLocale(QStringLiteral("ja_JP"))), Language::Japanese);
    EXPECT_EQ(StringTable::LanguageFor(QLocale(QStringLiteral("en_US"))), Language::English);
    EXPECT_EQ(StringTable::LanguageFor(QLocale(QStringLiteral("de_DE"))), Language::English);
    EXPECT_EQ(StringTable::LanguageFor(QLocale::c()), Language::English);
}

TEST(StringTableLanguage, EveryEnglishIdHasAJapaneseString) {
    const StringTable english(Language::English), japanese(Language::Japanese);
    for (int id = 0; id < 2000; ++id)
        if (english.text(id)) {
            EXPECT_TRUE(japanese.text(id).has_value()) << id;
        }
}

// A small window with one control of each kind.
struct Form {
    QMainWindow window;
    QAction* menuEntry;
    QAction* missingEntry;
    QLabel* label;
    QLabel* untaggedLabel;
    QLineEdit* textBox;
    QPushButton* button;
    QTabWidget* tabs;
    QAction* toolButton;

    Form() {
        window.setProperty("tag", QStringLiteral("1010"));
        QMenu* menu = window.menuBar()->addMenu(QStringLiteral("1000"));
        menu->menuAction()->setObjectName(QStringLiteral("mnuFile"));
        menuEntry = menu->addAction(QStringLiteral("1001"));
        menuEntry->setObjectName(QStringLiteral("mnuFileNew"));
        missingEntry = menu->addAction(QStringLiteral("1999"));
        missingEntry->setObjectName(QStringLiteral("mnuMissing"));
        auto* central = new QWidget(&window);
        window.setCentralWidget(central);
        label = new QLabel(QStringLiteral("design"), central);
        label->setProperty("tag", QStringLiteral("1200"));
        untaggedLabel = new QLabel(QStringLiteral("kept"), central);
        untaggedLabel->setProperty("tag", QStringLiteral("9999"));
        textBox = new QLineEdit(QStringLiteral("typed"), central);
        textBox->setProperty("tag", QStringLiteral("1001"));
        textBox->setToolTip(QStringLiteral("1017"));
        button = new QPushButton(QStringLiteral("button"), central);
        button->setProperty("tag", QStringLiteral("1018"));
        button->setToolTip(QStringLiteral("1019"));
        tabs = new QTabWidget(central);
        tabs->addTab(new QWidget, QStringLiteral("first"));
        tabs->tabBar()->setTabData(0, QStringLiteral("1203"));
        tabs->setTabToolTip(0, QStringLiteral("1204"));
        tabs->addTab(new QWidget, QStringLiteral("second")); // no tag
        QToolBar* bar = window.addToolBar(QStringLiteral("bar"));
        toolButton = bar->addAction(QStringLiteral("key"));
        toolButton->setToolTip(QStringLiteral("1021"));
    }
};

TEST(LocaliseForm, EnglishCaptionsTooltipsAndMissingIds) {
    Form form;
    LocaliseForm(&form.window, StringTable(Language::English));
    EXPECT_EQ(form.window.windowTitle(), QStringLiteral("View(&V)"));
    EXPECT_EQ(form.window.findChild<QAction*>(QStringLiteral("mnuFile"))->text(), QStringLiteral("File(&F)"));
    EXPECT_EQ(form.menuEntry->text(), QStringLiteral("New(&N)"));
    EXPECT_EQ(form.missingEntry->text(), QStringLiteral("1999")); // the id number stays
    EXPECT_EQ(form.label->text(), QStringLiteral("Status"));
    EXPECT_EQ(form.untaggedLabel->text(), QStringLiteral("kept"));
    EXPECT_EQ(form.textBox->text(), QStringLiteral("typed"));
    EXPECT_EQ(form.textBox->toolTip(), QStringLiteral("1017")); // text boxes are left alone
    EXPECT_EQ(form.button->text(), QStringLiteral("Open"));
    EXPECT_EQ(form.button->toolTip(), QStringLiteral("Save"));
    EXPECT_EQ(form.tabs->tabText(0), QStringLiteral("Read(&R)"));
    EXPECT_EQ(form.tabs->tabToolTip(0), QStringLiteral("Write(&W)"));
    EXPECT_EQ(form.tabs->tabText(1), QStringLiteral("second"));
    EXPECT_EQ(form.toolButton->toolTip(), QStringLiteral("Help"));
}

TEST(LocaliseForm, JapaneseCaptions) {
    Form form;
    LocaliseForm(&form.window, StringTable(Language::Japanese));
    EXPECT_EQ(form.menuEntry->text(), QString::fromUtf8("新規作成(&N)"));
    EXPECT_EQ(form.label->text(), QString::fromUtf8("状態"));
    EXPECT_EQ(form.toolButton->toolTip(), QString::fromUtf8("ヘルプ"));
    EXPECT_EQ(form.missingEntry->text(), QStringLiteral("1999"));
}

class JapaneseWindow : public test::WindowFixture {
protected:
    JapaneseWindow() : WindowFixture(Language::Japanese) {}
};

TEST_F(JapaneseWindow, MenusToolbarAndStatusBarSpeakJapanese) {
    ASSERT_TRUE(load().ok());
    const struct {
        const char* name;
        const char* caption;
    } menus[] = {{"mnuFile", "ファイル(&F)"},
                 {"mnuFileOpen", "開く(&O)..."},
                 {"mnuImport", "インポート(&I)..."},
                 {"mnuEditUndo", "変更(&M)"},
                 {"mnuStatusBar", "ステータス バー(&S)"},
                 {"mnuReAll", "全て(&A)"},
                 {"mnuWrSet", "設定(&S)"},
                 {"mnuToolsOptions", "COMポート設定(&C)"},
                 {"mnuHelpAbout", "バージョン情報(&A)"}};
    for (const auto& menu : menus)
        EXPECT_EQ(find<QAction>(menu.name)->text(), QString::fromUtf8(menu.caption)) << menu.name;
    EXPECT_EQ(find<QAction>("tbToolBar_Button1")->toolTip(), QString::fromUtf8("新規作成"));
    EXPECT_EQ(find<QLabel>("sbStatusBar_Panel1")->text(), QString::fromUtf8("状態"));
    EXPECT_EQ(window->windowTitle(), model::AppTitle());
}

class EnglishWindow : public test::WindowFixture {};

TEST_F(EnglishWindow, MenuCaptionsAndSeparators) {
    ASSERT_TRUE(load().ok());
    const struct {
        const char* name;
        const char* caption;
    } menus[] = {{"mnuFile", "File(&F)"},
                 {"mnuFileNew", "New(&N)"},
                 {"mnuFileSaveAs", "Save As(&A)..."},
                 {"mnuExport", "Export(&E)..."},
                 {"mnuFilePageSetup", "Print Setup(&U)..."},
                 {"mnuFilePrint", "Print(&P)..."},
                 {"mnuFileExit", "Exit(&X)..."},
                 {"mnuEdit", "Edit(&E)"},
                 {"mnuView", "View(&V)"},
                 {"mnuViewToolbar", "Tool Bar(&T)"},
                 {"mnuTools", "Tool(&T)"},
                 {"mnuRe", "Read(&R)"},
                 {"mnuReMem", "Memory(&M)"},
                 {"mnuWr", "Write(&W)"},
                 {"mnuHelp", "Help(&H)"}};
    for (const auto& menu : menus)
        EXPECT_EQ(find<QAction>(menu.name)->text(), QString::fromUtf8(menu.caption)) << menu.name;
    for (const char* bar : {"mnuFileBar0", "mnuFileBar1", "mnuFileBar2"})
        EXPECT_TRUE(find<QAction>(bar)->isSeparator()) << bar;
}

TEST_F(EnglishWindow, ViewTogglesShowAndHideToolbarAndStatusBar) {
    ASSERT_TRUE(load().ok());
    window->show();
    auto* toolbar = find<QToolBar>("tbToolBar");
    auto* status = find<QStatusBar>("sbStatusBar");
    auto* toggleToolbar = find<QAction>("mnuViewToolbar");
    auto* toggleStatus = find<QAction>("mnuStatusBar");
    ASSERT_TRUE(toolbar->isVisible() && status->isVisible());
    toggleToolbar->trigger();
    EXPECT_FALSE(toggleToolbar->isChecked());
    EXPECT_FALSE(toolbar->isVisible());
    toggleStatus->trigger();
    EXPECT_FALSE(status->isVisible());
    toggleToolbar->trigger();
    toggleStatus->trigger();
    EXPECT_TRUE(toolbar->isVisible() && status->isVisible());
    EXPECT_TRUE(toggleToolbar->isChecked() && toggleStatus->isChecked());
}

} // namespace
} // namespace zq::ui

namespace zq::ui {
namespace {

// Run by ctest a second time with LANG=ja_JP.UTF-8 (ui.JapaneseUserLocale): the user's language
// picks the table, and the main window's menus follow it.
TEST(UserLocale, LanguageFollowsTheEnvironment) {
    const QByteArray expected = qgetenv("ZQ_EXPECT_LANGUAGE");
    if (expected.isEmpty()) GTEST_SKIP() << "run through ctest with ZQ_EXPECT_LANGUAGE";
    const StringTable strings = StringTable::ForUser();
    EXPECT_EQ(strings.language(), expected == "ja" ? Language::Japanese : Language::English);
    ScriptedMessageBoxes boxes;
    ScriptedFileDialogs dialogs;
    QTemporaryDir temp;
    MainWindow window(boxes, dialogs, strings);
    ASSERT_TRUE(window.load(LoadOptions{{}, temp.filePath(QStringLiteral("p.ini")), 0}).ok());
    EXPECT_EQ(window.findChild<QAction*>(QStringLiteral("mnuFile"))->text(),
              QString::fromUtf8(expected == "ja" ? "ファイル(&F)" : "File(&F)"));
}

} // namespace
} // namespace zq::ui
