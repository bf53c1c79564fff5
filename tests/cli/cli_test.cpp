#include "files/chirpcsv.h"
#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "model/tables.h"
#include "sampledata.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace zq;
using namespace zq::testdata;

namespace {

class Workspace : public ::testing::Test {
protected:
    void SetUp() override {
        model::Document demo;
        ASSERT_TRUE(files::LoadCloneFile(demo, kDemoFile).ok());
        ASSERT_TRUE(files::SaveCloneFile(demo, path("demo.318")).ok());
        ASSERT_TRUE(files::ExportCsv(demo, path("demo.csv")).ok());
        demo.setModelVariant(model::VariantE);
        demo.setCloneCodeA(true);
        demo.changeMemory(
            2, 2, [](model::MemoryTable& m) { m.set(2, model::ColName, QStringLiteral("OTHER"), 1); },
            model::Document::Mark::Edit);
        ASSERT_TRUE(files::SaveCloneFile(demo, path("other.318")).ok());
        const QByteArray bytes = ReadFile(path("demo.318"));
        WriteFile(path("badline.318"), QByteArray(bytes).remove(12 * 34 + 3, 1)); // line 13 is one short
        WriteFile(path("badtone.318"), QByteArray(bytes).replace(28 * 34 + 24, 2, "FF")); // channel 5's tone
        WriteFile(path("cut.csv"), ReadFile(path("demo.csv")).left(400));
        WriteFile(path("empty.csv"), "");
        WriteFile(path("semicolons.csv"), ReadFile(path("demo.csv")).replace(',', ';'));
        WriteFile(path("lf.318"), QByteArray(bytes).replace("\r\n", "\n"));
        // channel 6's frequency with a hex letter, channel 7's power code beyond High
        WriteFile(path("strict.318"),
                  QByteArray(bytes).replace(30 * 34 + 10, 1, "A").replace(33 * 34 + 18, 2, "07"));
    }
    QString path(const QString& name) const { return dir.filePath(name); }

    // The exit status, standard output and standard error of zq318 run in the workspace.
    std::tuple<int, QString, QString> run(const QStringList& arguments) const {
        QProcess process;
        process.setWorkingDirectory(dir.path());
        process.start(QStringLiteral(ZQ318_PATH), arguments);
        if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit)
            return {-1, {}, {}};
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QTemporaryDir dir;
};

struct CliCase {
    const char* name;
    const char* arguments; // split at blanks
    int status;
    const char* errorStart; // how the first line on standard error starts
    const char* out = "";   // the whole standard output
};

const CliCase kCases[] = {
    {"Export", "export demo.318 -o out.csv", 0, ""},
    {"ExportOverAnotherFile", "export demo.318 -o demo.csv", 0, ""},
    {"ExportIntoAMissingFolder", "export demo.318 -o no/out.csv", 6, "File Open Error: "},
    {"ExportWithoutOutput", "export demo.318", 2, "zq318 export: -o FILE.csv is required"},
    {"ImportOntoABase", "import demo.csv -o out.318 --base other.318", 0, ""},
    {"ImportOntoTheStartUpData", "import demo.csv -o out.318", 0, ""},
    {"ImportOfACsvCutShort", "import cut.csv -o out.318", 6, "Input past end of file"},
    {"ImportOfAnEmptyFile", "import empty.csv -o out.318", 5,
     "Data Error: empty.csv holds no channel record"},
    {"ImportOfSemicolons", "import semicolons.csv -o out.318", 5, "Data Error: semicolons.csv holds no"},
    {"ImportOfAnotherKindOfFile", "import demo.318 -o out.318", 5, "Data Error: demo.318 holds no"},
    {"ImportOntoItsBase", "import demo.csv --base demo.318 -o demo.318", 2,
     "zq318 import: the output demo.318"},
    {"CheckOfAGoodFile", "check demo.318", 0, "", "OK\n"},
    {"CheckOfABadLine", "check badline.318", 5, "Data Error: line 13 has 31 characters, not 32"},
    {"CheckOfAnUndecodableRecord", "check badtone.318", 6, "File Open Error: line 29: channel 5"},
    {"CheckOfTwoFiles", "check demo.318 demo.318", 2, "zq318 check: too many arguments"},
    {"CheckOfLfLineEnds", "check lf.318", 5,
     "Data Error: line 1 is longer than 32 characters: it ends in LF alone, and clone files need CR LF line "
     "ends"},
    {"StrictCheckOfAGoodFile", "check --strict demo.318", 0, "", "OK\n"},
    {"StrictCheckOfAnUndecodableRecord", "check --strict badtone.318", 6,
     "File Open Error: line 29: channel 5: tone index beyond the tone table\n"
     "line 29: channel 5: TX tone index 255 outside the tone table (0-38)\n"},
    {"StrictCheckNamesEachField", "check strict.318 --strict", 5,
     "Data Error: 2 fields hold no valid value\n"
     "line 31: channel 6: frequency \"01A66100\" holds non-digits\n"
     "line 34: channel 7: power code 7 is none of 0 (Low), 1 (Mid), 2 (High)\n"},
    {"DiffOfTheSameData", "diff demo.318 demo.318", 0, ""},
    {"DiffListsEachDifference", "diff demo.318 other.318", 1, "",
     "header: \"Korvex ZQ-318T Clone 0 FileStart\" | \"Korvex ZQ-318E Clone A FileStart\"\n"
     "channel 2 Name: \"W1AW\" | \"OTHER\"\n"},
    {"DiffWithOneFile", "diff demo.318", 2, "zq318 diff: missing argument"},
    {"Version", "--version", 0, "", "zq318 1.0.0\n"},
    {"VerbHelp", "verify --help", 0, "",
     "Usage: zq318 [--port PORT] [--quiet] [--trace FILE] verify FILE.318 [--settings | --memory]\n"
     "Read back what writing the clone file sends and list the differences; exit status 3 when any.\n\n"
     "Options:\n"
     "  --settings  Only the settings, special channels and dial memories.\n"
     "  --memory    Only the memory channels.\n"
     "  -h, --help  Show this help.\n"},
    {"NoCommand", "", 2, "zq318: no command given"},
    {"UnknownCommand", "frobnicate", 2, "zq318: unknown command \"frobnicate\""},
    {"UnknownOption", "--frob check", 2, "zq318: Unknown option 'frob'"},
    {"UnknownVerbOption", "check --frob demo.318", 2, "zq318 check: Unknown option 'frob'"},
};

class Cli : public Workspace, public ::testing::WithParamInterface<CliCase> {};

TEST_P(Cli, ExitStatusMessageAndOutput) {
    const CliCase& c = GetParam();
    const QStringList arguments =
        QString::fromLatin1(c.arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const auto [status, out, err] = run(arguments);
    EXPECT_EQ(status, c.status) << err.toStdString();
    EXPECT_TRUE(!*c.errorStart || err.startsWith(QLatin1String(c.errorStart))) << err.toStdString();
    // Only failures speak on standard error ("diff" finding differences is no failure).
    EXPECT_EQ(err.isEmpty(), c.status <= 1) << err.toStdString();
    EXPECT_EQ(out, QLatin1String(c.out));
    EXPECT_FALSE(c.status > 1 && (QFile::exists(path("out.csv")) || QFile::exists(path("out.318"))));
    // Conversions write what the library gives for the same input (opened as at start-up).
    if (c.status != 0 || arguments.value(2) != QLatin1String("-o")) return;
    const bool toCsv = arguments[0] == QLatin1String("export");
    model::Document expected;
    ASSERT_TRUE(arguments.size() < 6 || files::LoadCloneFile(expected, path(arguments[5])).ok());
    const QString input = path(arguments[1]);
    ASSERT_TRUE((toCsv ? files::LoadCloneFile(expected, input) : files::ImportCsv(expected, input)).ok());
    EXPECT_EQ(ReadFile(path(arguments[3])),
              toCsv ? files::CsvExportText(expected) : files::SerializeCloneFile(expected));
}

INSTANTIATE_TEST_SUITE_P(Cases, Cli, ::testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Lines the import cannot use are listed; the data are imported as the window would import them.
TEST_F(Workspace, ImportListsTheLinesItCannotUse) {
    QList<QByteArray> lines = ReadFile(path("demo.csv")).split('\n');
    lines[5].replace("\"------\",", "");                   // a field short: the next record is lost
    lines[9].insert(lines[9].size() - 1, ",\"extra\"");    // a field too many: ignored
    lines[11].replace("\"MEMORY\",\"", "\"MEMORY\",\"20"); // channel 207
    const QByteArray csv = lines.join('\n');
    WriteFile(path("odd.csv"), csv);
    const auto [status, out, err] = run({"import", "odd.csv", "-o", "out.318"});
    EXPECT_EQ(status, 0);
    const QStringList said = err.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(said.size(), 3) << err.toStdString();
    EXPECT_TRUE(said[0].startsWith(QLatin1String("odd.csv:6: 17 fields instead of 18;")))
        << err.toStdString();
    EXPECT_TRUE(said[1].startsWith(QLatin1String("odd.csv:10: 19 fields instead of 18;")))
        << err.toStdString();
    EXPECT_TRUE(said[2].startsWith(QLatin1String("odd.csv:12: record skipped: CHANNEL \"207\"")))
        << err.toStdString();
    model::Document expected;
    ASSERT_TRUE(files::ImportCsvData(expected, csv).ok());
    EXPECT_EQ(ReadFile(path("out.318")), files::SerializeCloneFile(expected));
}

TEST_F(Workspace, ChirpLayoutBothWays) {
    auto [status, out, err] = run({"export", "demo.318", "--format", "chirp", "-o", "out.csv"});
    EXPECT_EQ(status, 0);
    // the demonstration file sets busy lock-out, battery save and clock shift on channels 2 to 6
    EXPECT_EQ(err.count(QLatin1Char('\n')), 5) << err.toStdString();
    EXPECT_TRUE(err.startsWith(QLatin1String("channel 2: busy lock-out On: no column in the layout")))
        << err.toStdString();
    model::Document demo;
    ASSERT_TRUE(files::LoadCloneFile(demo, path("demo.318")).ok());
    EXPECT_EQ(ReadFile(path("out.csv")), files::ChirpExportText(demo));

    std::tie(status, out, err) =
        run({"import", "out.csv", "--format", "chirp", "--base", "demo.318", "-o", "out.318"});
    EXPECT_EQ(status, 0);
    EXPECT_EQ(err, QString());
    EXPECT_EQ(ReadFile(path("out.318")), ReadFile(path("demo.318")));

    std::tie(status, out, err) = run({"import", QStringLiteral(ZQ_EXAMPLES_DIR "/chirp-channels.csv"),
                                      "--format", "chirp", "-o", "ex.318"});
    EXPECT_EQ(status, 0);
    EXPECT_EQ(
        err,
        QStringLiteral(
            "row 6 (Location 2): Name \"Metro\": lower-case letters upper-cased; stored as \"METRO\"\n"
            "row 8 (Location 4): Duplex \"off\": the radio cannot keep its transmitter off on a channel; "
            "row skipped\n"
            "row 9 (Location 5): Mode \"AM\": the radio sends and receives FM only; row skipped\n"
            "row 10 (Location 6): Mode \"NFM\": the radio has no narrow FM; taken as FM\n"
            "row 10 (Location 6): TStep \"2.50\": not a step of the radio; 5.00 taken\n"
            "row 11 (Location 7): Frequency \"446.000000\": outside the band 136 to below 174 MHz; row "
            "skipped\n"
            "row 12 (Location 8): Name \"Simplex Two\": lower-case letters upper-cased, longer than 6 "
            "characters; stored as \"SIMPLE\"\n"));
    std::tie(status, out, err) = run({"show", "ex.318"});
    EXPECT_EQ(out.count(QLatin1Char('\n')),
              4 + 1 + 1 + 6); // the special grid, a blank line, channels 0-3, 6, 8

    std::tie(status, out, err) = run({"import", "demo.318", "--format", "chirp", "-o", "no.318"});
    EXPECT_EQ(status, 5);
    EXPECT_EQ(err, QStringLiteral("Data Error: no header with the columns Location and Frequency\n"));
    std::tie(status, out, err) = run({"import", "out.csv", "--format", "CHIRP", "-o", "no.318"});
    EXPECT_EQ(status, 2);
    EXPECT_TRUE(err.startsWith(QLatin1String("zq318 import: unknown --format \"CHIRP\" (zq318 or chirp)")));
    EXPECT_FALSE(QFile::exists(path("no.318")));
}

TEST_F(Workspace, ShowPrintsBothGrids) {
    const auto [status, out, err] = run({"show", "demo.318"});
    EXPECT_EQ(status, 0);
    const QStringList lines = out.split(QLatin1Char('\n'));
    EXPECT_EQ(lines.size(), 4 + 1 + 13 + 1);
    EXPECT_EQ(lines.value(0),
              QStringLiteral("      Frequency  Step  Tone  TxTone  RxTone  DCS  Shift   ShiftFreq.  "
                             "PWR  ------  BSV  Clock  BCLO"));
    EXPECT_EQ(lines.value(8),
              QStringLiteral("2   146.9400   5KHz     Tone  100.0Hz  100.0Hz  023  -Shift  0.6000 "
                             "     High  ------  Off  Off    On    W1AW"));
}

} // namespace
