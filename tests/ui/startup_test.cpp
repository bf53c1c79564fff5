// Start-up: the command line, the port file, the command-line clone file, the splash and pause.
#include "model/tables.h"
#include "ui/program.h"
#include "windowfixture.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTabWidget>
#include <QTimer>

namespace zq::ui {
namespace {

using model::Outcome;

TEST(StripCommandLineQuotes, DropsFirstAndLastCharacterOnlyAboveFiveCharacters) {
    const struct {
        const char* raw;
        const char* file;
    } cases[] = {
        {"", ""},
        {"a.318", "a.318"},   // 5 characters: kept
        {"\"a.31\"", "a.31"}, // 6 characters: stripped
        {"\"C:\\radio\\my data.318\"", "C:\\radio\\my data.318"},
        {"C:\\radio.318", ":\\radio.31"}, // no quotes: loses its ends all the same
        {"\"ab\"", "\"ab\""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(StripCommandLineQuotes(QString::fromUtf8(c.raw)), QString::fromUtf8(c.file)) << c.raw;
}

TEST(ParseProgramArguments, FileArgumentIsTakenAsItStands) {
    const ProgramOptions plain =
        ParseProgramArguments({QStringLiteral("zq318-utility"), QStringLiteral("/home/me/radio.318")});
    ASSERT_TRUE(plain.ok);
    EXPECT_EQ(plain.commandLineFile, QStringLiteral("/home/me/radio.318"));
    EXPECT_TRUE(plain.portDevice.isEmpty());

    const ProgramOptions withPort =
        ParseProgramArguments({QStringLiteral("zq318-utility"), QStringLiteral("--port"),
                               QStringLiteral("/dev/pts/7"), QStringLiteral("a.318")});
    ASSERT_TRUE(withPort.ok);
    EXPECT_EQ(withPort.portDevice, QStringLiteral("/dev/pts/7"));
    EXPECT_EQ(withPort.commandLineFile, QStringLiteral("a.318"));

    const ProgramOptions none = ParseProgramArguments({QStringLiteral("zq318-utility")});
    ASSERT_TRUE(none.ok);
    EXPECT_TRUE(none.commandLineFile.isEmpty());
}

TEST(ParseProgramArguments, RawWindowsCommandLineFollowsTheQuoteRule) {
    const ProgramOptions options = ParseProgramArguments(
        {QStringLiteral("zq318-utility.exe"), QStringLiteral("x")}, QStringLiteral("\"C:\\my.318\""));
    ASSERT_TRUE(options.ok);
    EXPECT_EQ(options.commandLineFile, QStringLiteral("C:\\my.318"));
}

TEST(ParseProgramArguments, UsageErrors) {
    EXPECT_FALSE(ParseProgramArguments({QStringLiteral("zq318-utility"), QStringLiteral("--bogus")}).ok);
    const ProgramOptions two =
        ParseProgramArguments({QStringLiteral("zq318-utility"), QStringLiteral("a"), QStringLiteral("b")});
    EXPECT_FALSE(two.ok);
    EXPECT_EQ(two.exitStatus, 2);
}

class Startup : public test::WindowFixture {};

TEST_F(Startup, WithoutAFileShowsTheStartUpData) {
    ASSERT_TRUE(load().ok());
    EXPECT_EQ(window->windowTitle(), model::AppTitle());
    EXPECT_FALSE(doc().DataChanged());
    EXPECT_EQ(doc().ModelVariant(), 0);
    EXPECT_FALSE(doc().CloneCodeA());
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_EQ(window->portNumber(), 1);
    EXPECT_EQ(window->size(), QSize(680, 527));
    EXPECT_EQ(specialCell(1, 1), doc().special.text(0, 0));
    EXPECT_FALSE(specialCell(1, 1).isEmpty());
    EXPECT_EQ(memoryCell(1, 1), QString()); // default channels are not in use
    auto* tabs = find<QTabWidget>("TabStrip1");
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_TRUE(find<QWidget>("Frame1_0")->isEnabled());
    EXPECT_FALSE(find<QWidget>("Frame1_1")->isEnabled());
    EXPECT_FALSE(find<QWidget>("Frame1_2")->isEnabled());
    EXPECT_EQ(find<QWidget>("Frame1_3")->property("index").toInt(), 3);
}

TEST_F(Startup, PortFileSetsThePortNumber) {
    const struct {
        QByteArray contents;
        int port;
    } cases[] = {{"14\r\n", 14}, {"3\r\n", 3}, {"15\r\n", 1}, {"0\r\n", 1}, {"abc\r\n", 1}};
    for (const auto& c : cases) {
        test::WriteFile(portFile(), c.contents);
        ASSERT_TRUE(load().ok()) << c.contents.constData();
        EXPECT_EQ(window->portNumber(), c.port) << c.contents.constData();
    }
    EXPECT_EQ(fatalSpy->count(), 0);
}

TEST_F(Startup, EmptyPortFileEndsTheProgram) {
    test::WriteFile(portFile(), QByteArray());
    EXPECT_EQ(load().outcome, Outcome::Fatal);
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::Critical);
    EXPECT_EQ(boxes.shown[0].title, model::AppTitle());
    EXPECT_EQ(fatalSpy->count(), 1);
    EXPECT_EQ(fatalSpy->at(0).at(0).toInt(), 1);
    EXPECT_TRUE(window->fatalErrorShown());
}

TEST_F(Startup, CommandLineFileIsLoadedWithItsVariant) {
    QByteArray demo = test::ReadFile(test::ExamplePath("demo.318"));
    ASSERT_FALSE(demo.isEmpty());
    demo.replace(0, 32, model::HeaderLine(1, true).toLatin1());
    const QString file = path("mydata.318");
    test::WriteFile(file, demo);
    ASSERT_TRUE(load(file).ok());
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("mydata.318 - Korvex ZQ-318 Clone Utility"));
    EXPECT_EQ(doc().ModelVariant(), 1);
    EXPECT_TRUE(doc().CloneCodeA());
    EXPECT_FALSE(doc().DataChanged());
    EXPECT_EQ(doc().CurrentFilePath(), file);
    int shown = 0;
    for (int row = 1; row <= 200; ++row)
        if (!memoryCell(row, 1).isEmpty()) {
            EXPECT_EQ(memoryCell(row, 1), doc().memory.text(row - 1, 0));
            ++shown;
        }
    EXPECT_GT(shown, 0);
}

TEST_F(Startup, RejectedFileShowsDataErrorAndGoesOn) {
    QByteArray demo = test::ReadFile(test::ExamplePath("demo.318"));
    demo.replace(0, 32, model::HeaderLine(2, false).toLatin1());
    demo.replace(demo.size() - 34, 32, QByteArray(32, 'X')); // the end line
    const QString file = path("bad.318");
    test::WriteFile(file, demo);
    ASSERT_TRUE(load(file).ok());
    ASSERT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(boxes.shown[0], (MessageRequest{QStringLiteral("Data Error"), QStringLiteral("ERROR"),
                                              MessageButtons::Ok, MessageIcon::Critical, MessageAnswer::Ok}));
    EXPECT_EQ(doc().ModelVariant(), 2); // the header was read before the end line failed
    EXPECT_EQ(window->windowTitle(), model::AppTitle());
    EXPECT_FALSE(doc().DataChanged());
    EXPECT_EQ(fatalSpy->count(), 0);
}

TEST_F(Startup, MissingOrShortFileEndsTheProgram) {
    QByteArray shortFile = test::ReadFile(test::ExamplePath("demo.318")).left(34 * 100);
    test::WriteFile(path("short.318"), shortFile);
    for (const QString& file : {path("missing.318"), path("short.318")}) {
        boxes.shown.clear();
        EXPECT_EQ(load(file).outcome, Outcome::Fatal) << file.toStdString();
        ASSERT_EQ(boxes.shown.size(), 1);
        EXPECT_EQ(boxes.shown[0].icon, MessageIcon::Critical);
        EXPECT_FALSE(boxes.shown[0].text.isEmpty());
    }
    EXPECT_EQ(fatalSpy->count(), 2);
}

TEST(ProgramStart, SplashStaysTwoSecondsThenTheWindowShows) {
    QTemporaryDir temp;
    ScriptedMessageBoxes boxes;
    ScriptedFileDialogs dialogs;
    const StringTable strings;
    Program program(boxes, dialogs, strings);
    bool splashSeen = false, windowHiddenMeanwhile = true;
    QTimer probe;
    QObject::connect(&probe, &QTimer::timeout, [&] {
        for (QWidget* top : QApplication::topLevelWidgets())
            if (top->objectName() == QLatin1String("frmSplash") && top->isVisible()) splashSeen = true;
        if (program.window().isVisible()) windowHiddenMeanwhile = false;
    });
    probe.start(100);
    QElapsedTimer clock;
    clock.start();
    const auto started =
        program.start(ProgramOptions{}, LoadOptions{{}, temp.filePath(QStringLiteral("p.ini")), 2000});
    probe.stop();
    ASSERT_TRUE(started.ok());
    EXPECT_GE(clock.elapsed(), 2000);
    EXPECT_GE(program.msToShownWindow(), 2000);
    EXPECT_TRUE(splashSeen);
    EXPECT_TRUE(windowHiddenMeanwhile);
    EXPECT_TRUE(program.window().isVisible());
    auto* modify = program.window().findChild<QDialog*>(QStringLiteral("dlgModify"));
    ASSERT_NE(modify, nullptr); // loaded, hidden, ready for the grids
    EXPECT_FALSE(modify->isVisible());
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top->objectName() == QLatin1String("frmSplash")) {
            EXPECT_FALSE(top->isVisible());
        }
    program.window().hide();
}

} // namespace
} // namespace zq::ui
