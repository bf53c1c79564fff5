// The Help menu: the user guide in a window of the program's own, and the about box's licence and
// documentation link; and the menus' accelerator letters, which added entries must not take twice.
#include "files/programfiles.h"
#include "ui/aboutbox.h"
#include "ui/guidewindow.h"
#include "windowfixture.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTextBrowser>

namespace zq::ui::test {
namespace {

class HelpMenu : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load().ok());
    }
};

TEST_F(HelpMenu, UserGuideOpensOnceInAWindowOfItsOwn) {
    ASSERT_FALSE(files::UserGuidePath().isEmpty()); // the source tree's guide
    auto* entry = find<QAction>("mnuHelpGuide");
    EXPECT_EQ(entry->text(), QStringLiteral("User Guide(&G)"));
    entry->trigger();
    entry->trigger(); // the window already open comes to the front
    const auto guides = window->findChildren<GuideWindow*>();
    ASSERT_EQ(guides.size(), 1);
    EXPECT_TRUE(guides[0]->isVisible());
    EXPECT_FALSE(guides[0]->isModal());
    // Rendered, not shown as markup: the headings lose their '#'.
    const QString shown = guides[0]->browser()->toPlainText();
    EXPECT_TRUE(shown.contains(QLatin1String("Before you start"))) << shown.left(200).toStdString();
    EXPECT_FALSE(shown.contains(QLatin1String("## "))) << shown.left(200).toStdString();
    EXPECT_TRUE(boxes.shown.isEmpty());
    guides[0]->close();
}

TEST_F(HelpMenu, NoGuideToShowSaysSoAndWhere) {
    const QString missing = path("guide.md");
    const struct {
        const char* name;
        QString path;
        QString detail;
    } cases[] = {
        {"NotInstalled", QString(), QStringLiteral("guide.md is neither installed nor in the sources")},
        {"Unreadable", missing, missing + QStringLiteral(": ")},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        boxes.shown.clear();
        EXPECT_EQ(GuideWindow::open(c.path, boxes, strings, window), nullptr);
        ASSERT_EQ(boxes.shown.size(), 1);
        EXPECT_EQ(boxes.shown[0].text, QStringLiteral("The user guide cannot be shown."));
        EXPECT_EQ(boxes.shown[0].icon, MessageIcon::Information);
        EXPECT_TRUE(boxes.shown[0].detail.startsWith(c.detail)) << boxes.shown[0].detail.toStdString();
    }
}

TEST_F(HelpMenu, AboutBoxNamesTheLicenceAndLinksTheDocumentation) {
    find<QAction>("mnuHelpAbout")->trigger();
    auto* about = window->findChild<AboutBox*>(QStringLiteral("frmAbout"));
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->findChild<QLabel*>(QStringLiteral("lblLicence"))
                    ->text()
                    .contains(QLatin1String("GPL-3.0-or-later")));
    auto* homepage = about->findChild<QLabel*>(QStringLiteral("lblHomepage"));
    EXPECT_TRUE(homepage->text().contains(QStringLiteral("href=\"" ZQ_HOMEPAGE_URL "\"")));
    EXPECT_TRUE(homepage->openExternalLinks());
    about->close();
}

// In each menu and language, an accelerator letter leads to one entry only.
class MenuAccelerators : public WindowFixture, public ::testing::WithParamInterface<Language> {
protected:
    MenuAccelerators() : WindowFixture(GetParam()) {}
};

TEST_P(MenuAccelerators, AreUniqueWithinEachMenu) {
    ASSERT_TRUE(load().ok());
    const auto menus = window->menuBar()->findChildren<QMenu*>();
    ASSERT_GE(menus.size(), 5);
    for (const QMenu* menu : menus) {
        QHash<QChar, QString> taken;
        for (const QAction* action : menu->actions()) {
            const QString caption = action->text();
            const qsizetype amp = caption.indexOf(QLatin1Char('&'));
            if (action->isSeparator() || amp < 0 || amp + 1 >= caption.size()) continue;
            const QChar letter = caption.at(amp + 1).toUpper();
            EXPECT_FALSE(taken.contains(letter))
                << menu->objectName().toStdString() << ": " << caption.toStdString() << " and "
                << taken.value(letter).toStdString();
            taken.insert(letter, caption);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, MenuAccelerators,
                         ::testing::Values(Language::English, Language::Japanese), [](const auto& info) {
                             return std::string(info.param == Language::English ? "English" : "Japanese");
                         });

} // namespace
} // namespace zq::ui::test
