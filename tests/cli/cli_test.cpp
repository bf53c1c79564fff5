// Runs the built zq318 on temporary files and checks exit status, messages and outputs.
#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "model/tables.h"
#include "sampledata.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

using namespace zq;

namespace {

struct ToolRun {
    int status = -1;
    QString out;
    QString err;
    QString firstErrorLine() const { return err.section(QLatin1Char('\n'), 0, 0); }
};

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeAll(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// The files every case may use, made once per test in a fresh folder.
class Workspace {
public:
    Workspace() {
        model::Document demo;
        testdata::FillDemoData(demo);
        EXPECT_TRUE(files::SaveCloneFile(demo, path("demo.318")).ok());
        EXPECT_TRUE(files::ExportCsv(demo, path("demo.csv")).ok());
        demo.setModelVariant(model::VariantE);
        demo.setCloneCodeA(true);
        demo.memory.set(2, model::ColName, QStringLiteral("OTHER"), 1);
        EXPECT_TRUE(files::SaveCloneFile(demo, path("other.318")).ok());

        QByteArray bytes = readAll(path("demo.318"));
        writeAll(path("short.318"), bytes.left(100 * 34));
        QByteArray badLine = bytes;
        badLine.remove(12 * 34 + 3, 1); // line 13 (counted from 1) loses a character
        writeAll(path("badline.318"), badLine);
        QByteArray badTone = bytes;
        badTone.replace(28 * 34 + 24, 2, "FF"); // channel 5's transmit tone index
        writeAll(path("badtone.318"), badTone);
        writeAll(path("cut.csv"), readAll(path("demo.csv")).left(400));
        writeAll(path("previous.out"), "previous\n");
    }
    QString path(const QString& name) const { return dir_.filePath(name); }

private:
    QTemporaryDir dir_;
};

ToolRun runTool(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(ZQ318_PATH), arguments);
    ToolRun run;
    if (!process.waitForFinished(30000)) return run;
    run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

struct CliCase {
    const char* name;
    QStringList arguments; // "@name" stands for a file of the workspace
    int status;
    const char* errorStart; // how the first line on standard error starts ("" for no output)
    std::function<void(const Workspace&, const ToolRun&)> check;
};

void PrintTo(const CliCase& c, std::ostream* os) {
    *os << c.name;
}

QByteArray csvOfStartUpOpen(const QString& path) {
    model::Document document;
    EXPECT_TRUE(files::LoadCloneFile(document, path).ok());
    return files::CsvExportText(document);
}

const CliCase kCases[] = {
    {"ExportWritesTheWindowsCsv",
     {"export", "@demo.318", "-o", "@out.csv"},
     0,
     "",
     [](const Workspace& w, const ToolRun&) {
         EXPECT_EQ(readAll(w.path("out.csv")), csvOfStartUpOpen(w.path("demo.318")));
     }},
    {"ExportOfARejectedFile",
     {"export", "@badline.318", "-o", "@out.csv"},
     5,
     "Data Error: line 13 has 31 characters",
     [](const Workspace& w, const ToolRun&) { EXPECT_FALSE(QFile::exists(w.path("out.csv"))); }},
    {"ExportOfAMissingFile", {"export", "@missing.318", "-o", "@out.csv"}, 6, "", nullptr},
    {"ExportOfAShortFile",
     {"export", "@short.318", "-o", "@previous.out"},
     6,
     "",
     [](const Workspace& w, const ToolRun&) { EXPECT_EQ(readAll(w.path("previous.out")), "previous\n"); }},
    {"ExportIntoAMissingFolder",
     {"export", "@demo.318", "-o", "@no/out.csv"},
     6,
     "File Open Error: ",
     nullptr},
    {"ExportWithoutOutput", {"export", "@demo.318"}, 2, "zq318 export: ", nullptr},
    {"ExportWithTwoInputs",
     {"export", "@demo.318", "@other.318", "-o", "@x.csv"},
     2,
     "zq318 export: ",
     nullptr},
    {"ImportOntoABase",
     {"import", "@demo.csv", "-o", "@out.318", "--base", "@other.318"},
     0,
     "",
     [](const Workspace& w, const ToolRun&) {
         model::Document expected;
         ASSERT_TRUE(files::LoadCloneFile(expected, w.path("other.318")).ok());
         ASSERT_TRUE(files::ImportCsv(expected, w.path("demo.csv")).ok());
         EXPECT_EQ(readAll(w.path("out.318")), files::SerializeCloneFile(expected));
         EXPECT_TRUE(readAll(w.path("out.318")).startsWith("Korvex ZQ-318E Clone A FileStart\r\n"));
     }},
    {"ImportOntoTheStartUpData",
     {"import", "@demo.csv", "-o", "@out.318"},
     0,
     "",
     [](const Workspace& w, const ToolRun&) {
         model::Document expected;
         ASSERT_TRUE(files::ImportCsv(expected, w.path("demo.csv")).ok());
         EXPECT_EQ(readAll(w.path("out.318")), files::SerializeCloneFile(expected));
     }},
    {"ImportOfACsvCutShort",
     {"import", "@cut.csv", "-o", "@previous.out"},
     6,
     "Input past end of file",
     [](const Workspace& w, const ToolRun&) { EXPECT_EQ(readAll(w.path("previous.out")), "previous\n"); }},
    {"ImportOntoARejectedBase",
     {"import", "@demo.csv", "-o", "@out.318", "--base", "@badline.318"},
     5,
     "Data Error: line 13",
     [](const Workspace& w, const ToolRun&) { EXPECT_FALSE(QFile::exists(w.path("out.318"))); }},
    {"ImportOfAMissingCsv", {"import", "@missing.csv", "-o", "@out.318"}, 6, "", nullptr},
    {"CheckOfAGoodFile",
     {"check", "@demo.318"},
     0,
     "",
     [](const Workspace&, const ToolRun& r) { EXPECT_EQ(r.out, QStringLiteral("OK\n")); }},
    {"CheckOfABadLine",
     {"check", "@badline.318"},
     5,
     "Data Error: line 13 has 31 characters, not 32",
     [](const Workspace&, const ToolRun& r) { EXPECT_TRUE(r.out.isEmpty()); }},
    {"CheckOfAShortFile",
     {"check", "@short.318"},
     6,
     "File Open Error: line 101: the file ends after 100",
     nullptr},
    {"CheckOfAnUndecodableRecord",
     {"check", "@badtone.318"},
     6,
     "File Open Error: line 29: channel 5",
     nullptr},
    {"CheckOfAMissingFile", {"check", "@missing.318"}, 6, "File Open Error: ", nullptr},
    {"CheckOfTwoFiles", {"check", "@demo.318", "@demo.318"}, 2, "zq318 check: too many arguments", nullptr},
    {"ShowPrintsBothGrids",
     {"show", "@demo.318"},
     0,
     "",
     [](const Workspace&, const ToolRun& r) {
         const QStringList lines = r.out.split(QLatin1Char('\n'));
         ASSERT_EQ(lines.size(), 4 + 1 + 13 + 1);
         EXPECT_EQ(lines[0],
                   QStringLiteral("      Frequency  Step  Tone  TxTone  RxTone  DCS  Shift   ShiftFreq.  "
                                  "PWR  ------  BSV  Clock  BCLO"));
         EXPECT_EQ(lines[3],
                   QStringLiteral("RPT                    Tone  88.5Hz  88.5Hz  023  -Shift  0.6000"));
         EXPECT_TRUE(lines[4].isEmpty());
         EXPECT_TRUE(lines[5].startsWith(QStringLiteral("    Frequency  Step     Tone")));
         EXPECT_TRUE(lines[5].endsWith(QStringLiteral("BCLO  Name")));
         EXPECT_EQ(lines[8],
                   QStringLiteral("2   146.9400   5KHz     Tone  100.0Hz  100.0Hz  023  -Shift  0.6000 "
                                  "     High  ------  Off  Off    On    W1AW"));
         EXPECT_TRUE(lines[17].startsWith(QStringLiteral("21  146.4150")));
     }},
    {"ShowOfARejectedFile", {"show", "@badline.318"}, 5, "Data Error: line 13", nullptr},
    {"DiffOfTheSameData",
     {"diff", "@demo.318", "@demo.318"},
     0,
     "",
     [](const Workspace&, const ToolRun& r) { EXPECT_TRUE(r.out.isEmpty()); }},
    {"DiffListsEachDifference",
     {"diff", "@demo.318", "@other.318"},
     1,
     "",
     [](const Workspace&, const ToolRun& r) {
         EXPECT_EQ(r.out, QStringLiteral("header: \"Korvex ZQ-318T Clone 0 FileStart\" | "
                                         "\"Korvex ZQ-318E Clone A FileStart\"\n"
                                         "channel 2 Name: \"W1AW\" | \"OTHER\"\n"));
     }},
    {"DiffWithARejectedFile", {"diff", "@demo.318", "@badline.318"}, 5, "Data Error: line 13", nullptr},
    {"DiffWithOneFile", {"diff", "@demo.318"}, 2, "zq318 diff: missing argument", nullptr},
    {"Help",
     {"--help"},
     0,
     "",
     [](const Workspace&, const ToolRun& r) {
         for (const char* verb : {"export", "import", "check", "show", "diff"})
             EXPECT_TRUE(r.out.contains(QStringLiteral("  %1 ").arg(QLatin1String(verb)))) << verb;
     }},
    {"VerbHelp",
     {"import", "--help"},
     0,
     "",
     [](const Workspace&, const ToolRun& r) {
         EXPECT_TRUE(r.out.startsWith(QStringLiteral(
             "Usage: zq318 [--port PORT] [--quiet] import FILE.csv -o FILE.318 [--base FILE.318]\n")));
     }},
    {"Version",
     {"--version"},
     0,
     "",
     [](const Workspace&, const ToolRun& r) { EXPECT_EQ(r.out, "zq318 1.0.0\n"); }},
    {"GlobalOptionsBeforeTheVerb",
     {"--quiet", "--port", "3", "check", "@demo.318"},
     0,
     "",
     [](const Workspace&, const ToolRun& r) { EXPECT_EQ(r.out, QStringLiteral("OK\n")); }},
    {"NoCommand", {}, 2, "zq318: no command given", nullptr},
    {"UnknownCommand", {"frobnicate"}, 2, "zq318: unknown command \"frobnicate\"", nullptr},
    {"UnknownOption", {"--frob", "check"}, 2, "zq318: Unknown option 'frob'", nullptr},
    {"UnknownVerbOption", {"check", "--frob", "@demo.318"}, 2, "zq318 check: Unknown option 'frob'", nullptr},
};

class Cli : public ::testing::TestWithParam<CliCase> {};

TEST_P(Cli, ExitStatusMessageAndOutput) {
    const CliCase& c = GetParam();
    Workspace workspace;
    QStringList arguments;
    for (const QString& argument : c.arguments)
        arguments.append(argument.startsWith(QLatin1Char('@')) ? workspace.path(argument.mid(1)) : argument);
    const ToolRun run = runTool(arguments);
    EXPECT_EQ(run.status, c.status) << run.err.toStdString();
    if (*c.errorStart) {
        EXPECT_TRUE(run.firstErrorLine().startsWith(QLatin1String(c.errorStart))) << run.err.toStdString();
    }
    // Only failures speak on standard error ("diff" finding differences is no failure).
    EXPECT_EQ(run.err.isEmpty(), c.status <= 1) << run.err.toStdString();
    if (c.check) c.check(workspace, run);
}

INSTANTIATE_TEST_SUITE_P(Cases, Cli, ::testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
