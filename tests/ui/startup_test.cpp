// Start-up: the command line, the port file, the command-line clone file, the splash and pause.
#include "model/tables.h"
#include "windowfixture.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>

namespace zq::ui {
namespace {

TEST(ParseProgramArguments, FileArgumentPortQuoteRuleAndUsageErrors) {
    const struct {
        QStringList arguments;
        const char* rawWindowsTail; // wins over the arguments; ends dropped above 5 characters, quotes or not
        const char* file;
        const char* port;
        bool ok = true;
    } cases[] = {
        {{"--port", "/dev/pts/7", "/home/me/radio.318"}, "", "/home/me/radio.318", "/dev/pts/7"},
        {{"x"}, "\"C:\\my data.318\"", "C:\\my data.318", ""},
        {{}, "a.318", "a.318", ""},
        {{}, "ab.318", "b.31", ""},
        {{"--bogus"}, "", "", "", false},
        {{"a", "b"}, "", "", "", false},
    };
    for (const auto& c : cases) {
        const ProgramOptions options = ParseProgramArguments(
            QStringList{QStringLiteral("zq318-utility")} + c.arguments, QString::fromUtf8(c.rawWindowsTail));
        SCOPED_TRACE(c.arguments.join(QLatin1Char(' ')).toStdString() + " | " + c.rawWindowsTail);
        EXPECT_EQ(options.ok, c.ok);
        EXPECT_EQ(options.exitStatus, c.ok ? 0 : 2);
        EXPECT_EQ(options.commandLineFile, QString::fromUtf8(c.file));
        EXPECT_EQ(options.portDevice, QString::fromUtf8(c.port));
    }
}

class Startup : public test::WindowFixture {};

TEST_F(Startup, WithoutAFileShowsTheStartUpDataAndReadsThePortFile) {
    ASSERT_TRUE(load().ok());
    EXPECT_TRUE(boxes.shown.isEmpty());
    // The designed 680 x 527 grows with the font, within the screen.
    const QSize screen = window->screen()->availableSize();
    EXPECT_EQ(window->width(), std::min(screen.width(), qRound(680 * LayoutScale(window->font()))));
    EXPECT_EQ(window->height(), std::min(screen.height(), qRound(527 * LayoutScale(window->font()))));
    EXPECT_FALSE(doc().special().text(0, 0).isEmpty()); // the VFO row is shown
    EXPECT_EQ(specialGrid()->model()->index(0, 0).data().toString(), doc().special().text(0, 0));
    EXPECT_EQ(find<QTabWidget>("TabStrip1")->currentIndex(), 0);

    test::WriteFile(portFile(), "14\r\n");
    ASSERT_TRUE(load().ok());
    EXPECT_EQ(program->ports().number(), 14);
}

TEST_F(Startup, EmptyPortFileOrMissingFileEndsTheProgram) {
    const std::pair<QByteArray, const char*> cases[] = {{"", ""}, {"1\r\n", "missing.318"}};
    int fatals = 0;
    for (const auto& [portText, file] : cases) {
        test::WriteFile(portFile(), portText);
        EXPECT_EQ(load(*file ? path(file) : QString()).outcome, model::Outcome::Fatal) << file;
        ASSERT_EQ(boxes.shown.size(), ++fatals) << file;
        EXPECT_EQ(boxes.shown.last().icon, MessageIcon::Critical);
        EXPECT_EQ(boxes.shown.last().title, model::AppTitle());
        EXPECT_EQ(fatalSpy.count(), fatals);
        EXPECT_EQ(fatalSpy.last().at(0).toInt(), 1);
    }
}

TEST_F(Startup, CommandLineFileIsLoadedWithItsVariantOrRejected) {
    ASSERT_TRUE(load(demoCopy("mydata.318", model::HeaderLine(1, true))).ok());
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("mydata.318 - Korvex ZQ-318 Clone Utility"));
    EXPECT_EQ(doc().ModelVariant(), 1);
    EXPECT_FALSE(doc().DataChanged());
    EXPECT_EQ(memoryCell(1, 1), doc().memory().text(0, 0));
    EXPECT_FALSE(memoryCell(1, 1).isEmpty());

    ASSERT_TRUE(load(demoCopy("bad.318", model::HeaderLine(2, false), true)).ok()); // and goes on
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0], (MessageRequest{QStringLiteral("Data Error"), QStringLiteral("ERROR"),
                                              MessageButtons::Ok, MessageIcon::Critical, MessageAnswer::Ok}));
    EXPECT_EQ(doc().ModelVariant(), 2); // the header was read before the end line failed
    EXPECT_EQ(window->windowTitle(), model::AppTitle());
}

TEST(ProgramStart, SplashStaysTwoSecondsThenTheWindowShows) {
    QTemporaryDir temp;
    ScriptedMessageBoxes boxes;
    ScriptedFileDialogs dialogs;
    const StringTable strings; // the window keeps a reference
    Program program(boxes, dialogs, strings);
    const auto splashVisible = [] {
        for (QWidget* top : QApplication::topLevelWidgets())
            if (top->objectName() == QLatin1String("frmSplash") && top->isVisible()) return true;
        return false;
    };
    bool splashAloneMidway = false;
    QTimer::singleShot(1000, [&] { splashAloneMidway = splashVisible() && !program.window().isVisible(); });
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(program.start({}, LoadOptions{{}, temp.filePath(QStringLiteral("p.ini")), 2000}).ok());
    EXPECT_GE(clock.elapsed(), 2000);
    EXPECT_GE(program.msToShownWindow(), 2000);
    EXPECT_TRUE(splashAloneMidway);
    EXPECT_TRUE(program.window().isVisible());
    EXPECT_FALSE(splashVisible());
    auto* modify = program.window().findChild<QDialog*>(QStringLiteral("dlgModify"));
    ASSERT_NE(modify, nullptr); // loaded, hidden, ready for the grids
    EXPECT_FALSE(modify->isVisible());
    program.window().hide();
}

} // namespace
} // namespace zq::ui
