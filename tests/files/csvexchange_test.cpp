#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "model/tables.h"
#include "sampledata.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <map>

using namespace zq;
using model::Outcome;

namespace {

const QByteArray kHeading =
    "\"MODEL\",\"BANK\",\"CHANNEL\",\"FREQUENCY\",\"STEP\",\"TONE\",\"TXTONE\",\"RXTONE\",\"DCS\","
    "\"SHIFT\",\"SHIFT FREQUENCY\",\"Power\",\"ATT\",\"BS\",\"Clock\",\"BCLO\",\"Name\",\"Skip\"\r\n";

TEST(CsvExport, FreshDataWritesHeadingAndSpecialRowsOnly) {
    model::Document document;
    const QByteArray expected =
        kHeading +
        "\"ZQ-318\",\"VFO\",\"VFO\",\"145.0000\",\"5KHz\",\"None\",\"88.5Hz\",\"88.5Hz\",\"023\",\"None\","
        "\"0.6000\","
        "\"Lo\",\"------\",\"On\",\"Off\",\"Off\",\"No\",\"Off\"\r\n"
        "\"ZQ-318\",\"VFO\",\"CALL\",\"145.0000\",\"5KHz\",\"None\",\"88.5Hz\",\"88.5Hz\",\"023\",\"None\","
        "\"0.6000\","
        "\"Lo\",\"------\",\"On\",\"Off\",\"Off\",\"No\",\"Off\"\r\n"
        "\"ZQ-318\",\"VFO\",\"RPT\",\"\",\"\",\"Tone\",\"88.5Hz\",\"88.5Hz\",\"023\",\"-Shift\",\"0.6000\","
        "\"\",\"\",\"\",\"\",\"\",\"No\",\"Off\"\r\n";
    EXPECT_EQ(files::CsvExportText(document), expected);
}

TEST(CsvExport, ChannelsInUseWithSkipAndQuotesAsTheyStand) {
    model::Document document;
    testdata::SetChannel(document, 7, {146.52, 2, 1, 12, 12, 0, 2, 0.6, 2, 1, true, true, "", true});
    document.memory.setText(7, model::ColName, QStringLiteral("A\"B"));
    const QByteArray text = files::CsvExportText(document);
    const QList<QByteArray> lines = text.split('\n');
    ASSERT_EQ(lines.size(), 6);
    EXPECT_EQ(
        lines[4],
        "\"ZQ-318\",\"MEMORY\",\"7\",\"146.5200*\",\"12.5KHz\",\"Tone\",\"100.0Hz\",\"100.0Hz\",\"023\","
        "\"+Shift\",\"0.6000\",\"High\",\"------\",\"on1\",\"On\",\"On\",\"A\"B\",\"On\"\r");
}

TEST(CsvExport, SetsTheBareNameAndKeepsThePreviousFileOnFailure) {
    QTemporaryDir dir;
    model::Document document;
    document.setDataChanged(true);
    const QString path = dir.filePath(QStringLiteral("out.csv"));
    ASSERT_TRUE(files::ExportCsv(document, path).ok());
    EXPECT_EQ(document.CurrentFilePath(), QStringLiteral("out.csv"));
    EXPECT_EQ(document.windowCaption(), QStringLiteral("out.csv - Korvex ZQ-318 Clone Utility"));
    EXPECT_FALSE(document.DataChanged());

    document.setDataChanged(true);
    const model::Result failed = files::ExportCsv(document, dir.filePath(QStringLiteral("none/out.csv")));
    EXPECT_EQ(failed.outcome, Outcome::FileOpenError);
    EXPECT_TRUE(document.DataChanged());
    EXPECT_EQ(document.CurrentFilePath(), QStringLiteral("out.csv"));
}

// One memory record with the given fields replaced (0-based field numbers).
QByteArray memoryRecord(const QString& channel, const std::map<int, QString>& changes = {}) {
    QStringList fields{"ZQ-318",  "MEMORY", channel, "146.5200", "12.5KHz", "Tone",
                       "100.0Hz", "88.5Hz", "023",   "-Shift",   "0.6000",  "Hi",
                       "------",  "Off",    "On",    "Off",      "REPEAT",  "Off"};
    for (const auto& [index, value] : changes)
        fields[index] = value;
    return "\"" + fields.join(QStringLiteral("\",\"")).toLatin1() + "\"\r\n";
}

struct ImportCase {
    const char* name;
    QByteArray csv;
    std::function<void(const model::Document&)> check;
};

const model::Cell& cell(const model::Document& d, int channel, int column) {
    return d.memory.cell(channel, column);
}
model::Cell C(const char* text, double number) {
    return {QString::fromLatin1(text), number};
}

void expectOnlyChannels(const model::Document& d, std::initializer_list<int> channels) {
    for (int c = 0; c < model::kChannelCount; ++c)
        EXPECT_EQ(d.memory.ChannelInUse(c), std::find(channels.begin(), channels.end(), c) != channels.end())
            << "channel " << c;
}

const ImportCase kImports[] = {
    {"SevenFillsAnEmptyChannel", kHeading + memoryRecord("7"),
     [](const model::Document& d) {
         expectOnlyChannels(d, {0, 7});
         EXPECT_EQ(cell(d, 7, model::ColFrequency), C("146.5200", 146.52));
         EXPECT_EQ(cell(d, 7, model::ColStep), C("12.5KHz", 2));
         EXPECT_EQ(cell(d, 7, model::ColTone), C("Tone", 1));
         EXPECT_EQ(cell(d, 7, model::ColTxTone), C("100.0Hz", 12));
         EXPECT_EQ(cell(d, 7, model::ColRxTone), C("88.5Hz", 8));
         EXPECT_EQ(cell(d, 7, model::ColDcs), C("023", 0));
         EXPECT_EQ(cell(d, 7, model::ColShift), C("-Shift", 1));
         EXPECT_EQ(cell(d, 7, model::ColOffset), C("0.6000", 0.6));
         EXPECT_EQ(cell(d, 7, model::ColPower), C("Hi", 1));
         EXPECT_EQ(cell(d, 7, model::ColBlank), C("------", 0));
         EXPECT_EQ(cell(d, 7, model::ColBsv), C("Off", 1));
         EXPECT_EQ(cell(d, 7, model::ColClock), C("On", 1));
         EXPECT_EQ(cell(d, 7, model::ColBclo), C("Off", 0));
         EXPECT_EQ(cell(d, 7, model::ColName), C("REPEAT", 1));
         EXPECT_EQ(d.memory.number(7, model::ColSkip), 0);
     }},
    {"ChannelsOutOfRangeAreIgnored",
     memoryRecord("200") + memoryRecord("-1") + memoryRecord("199.4") + memoryRecord(""),
     [](const model::Document& d) { expectOnlyChannels(d, {0}); }},
    {"HalvesRoundToEven",
     memoryRecord("2.5") + memoryRecord("3.5") + memoryRecord("198.5") + memoryRecord(" 9") +
         memoryRecord("5.5"),
     [](const model::Document& d) {
         expectOnlyChannels(d, {0, 2, 4, 6, 9, 198});
     }},
    {"BatterySaveIsInverted",
     memoryRecord("1", {{13, "Off"}}) + memoryRecord("2", {{13, "OFF"}}) + memoryRecord("3", {{13, "on1"}}),
     [](const model::Document& d) {
         EXPECT_EQ(cell(d, 1, model::ColBsv), C("Off", 1));
         EXPECT_EQ(cell(d, 2, model::ColBsv), C("On", 0));
         EXPECT_EQ(cell(d, 3, model::ColBsv), C("On", 0));
     }},
    {"NumbersAreFormatted",
     memoryRecord("1", {{3, "0.5"}, {10, ".25"}}) + memoryRecord("2", {{3, " 145.5MHz"}, {10, "5"}}) +
         memoryRecord("3", {{3, "abc"}, {10, "-0.6"}}),
     [](const model::Document& d) {
         EXPECT_EQ(cell(d, 1, model::ColFrequency), C(".5000", 0.5));
         EXPECT_EQ(cell(d, 1, model::ColOffset), C("0.2500", 0.25));
         EXPECT_EQ(cell(d, 2, model::ColFrequency), C("145.5000", 145.5));
         EXPECT_EQ(cell(d, 2, model::ColOffset), C("5.0000", 5));
         EXPECT_EQ(cell(d, 3, model::ColFrequency).number, 0);
         EXPECT_EQ(cell(d, 3, model::ColOffset).number, -0.6);
     }},
    {"VocabularyIsNormalised",
     memoryRecord("1", {{4, "25KHz"}, {5, "TSQ"}, {9, "+Shift"}, {11, "High"}, {14, "on"}, {15, "On"}}) +
         memoryRecord("2", {{4, "12.5kHz"}, {5, "DCS"}, {9, "Shift"}, {11, "hi"}}) +
         memoryRecord("3", {{5, "tone"}, {16, "LONGNAME"}}),
     [](const model::Document& d) {
         EXPECT_EQ(cell(d, 1, model::ColStep), C("25KHz", 5));
         EXPECT_EQ(cell(d, 1, model::ColTone), C("TSQ", 3));
         EXPECT_EQ(cell(d, 1, model::ColShift), C("+Shift", 2));
         EXPECT_EQ(cell(d, 1, model::ColPower), C("Lo", 0));
         EXPECT_EQ(cell(d, 1, model::ColClock), C("Off", 0));
         EXPECT_EQ(cell(d, 1, model::ColBclo), C("On", 1));
         EXPECT_EQ(cell(d, 2, model::ColStep), C("5KHz", 0));
         EXPECT_EQ(cell(d, 2, model::ColTone), C("DCS", 12));
         EXPECT_EQ(cell(d, 2, model::ColShift), C("None", 0));
         EXPECT_EQ(cell(d, 2, model::ColPower), C("Lo", 0));
         EXPECT_EQ(cell(d, 3, model::ColTone), C("None", 0));
         EXPECT_EQ(cell(d, 3, model::ColName), C("LONGNA", 1));
     }},
    {"TonesAndDcsMatchByValue",
     memoryRecord("1", {{6, "88.5"}, {7, "250.3Hz"}, {8, "23"}}) + memoryRecord("2", {{6, "88.6"}}) +
         memoryRecord("3", {{7, ""}}) + memoryRecord("4", {{8, "024"}}) + memoryRecord("5", {{8, "754"}}),
     [](const model::Document& d) {
         expectOnlyChannels(d, {0, 1, 5});
         EXPECT_EQ(cell(d, 1, model::ColTxTone), C("88.5Hz", 8));
         EXPECT_EQ(cell(d, 1, model::ColRxTone), C("250.3Hz", 38));
         EXPECT_EQ(cell(d, 1, model::ColDcs), C("023", 0));
         EXPECT_EQ(cell(d, 5, model::ColDcs), C("754", 103));
     }},
    {"SkipAppendsAStar", memoryRecord("6", {{3, "146.5200*"}, {17, "On"}}) + memoryRecord("8", {{17, "on"}}),
     [](const model::Document& d) {
         EXPECT_EQ(cell(d, 6, model::ColFrequency), C("146.5200*", 146.52));
         EXPECT_EQ(d.memory.number(6, model::ColSkip), 1);
         EXPECT_EQ(cell(d, 8, model::ColFrequency), C("146.5200", 146.52));
         EXPECT_EQ(d.memory.number(8, model::ColSkip), 0);
     }},
    {"ReadingResynchronisesOnTheModelWord",
     "garbage,\"more\"\r\n\r\n\r\n" + memoryRecord("1").replace("\r\n", ",\"extra\",\"columns\"\r\n") +
         "\r\n" + "ZQ-318,MEMORY,2,147.0,5KHz,None,88.5,88.5,023,None,0.6,Lo,------,On,Off,Off,BARE,Off\n" +
         memoryRecord("3", {{0, "ZQ318"}}) + memoryRecord("4", {{1, "memory"}}) + memoryRecord("5"),
     [](const model::Document& d) {
         expectOnlyChannels(d, {0, 1, 2, 5});
         EXPECT_EQ(cell(d, 2, model::ColFrequency), C("147.0000", 147));
         EXPECT_EQ(cell(d, 2, model::ColName), C("BARE", 1));
     }},
    {"SpecialRowsTakeThirteenColumnsAndRptLosesItsTexts",
     memoryRecord("VFO", {{1, "VFO"}, {3, "144.3900"}}) + memoryRecord("CALL", {{1, "VFO"}, {3, "145.5"}}) +
         memoryRecord("RPT", {{1, "VFO"}, {3, "146.0"}, {5, "TSQ"}}) + memoryRecord("vfo", {{1, "VFO"}}),
     [](const model::Document& d) {
         expectOnlyChannels(d, {0});
         EXPECT_EQ(d.special.cell(model::kVfoRow, model::ColFrequency), C("144.3900", 144.39));
         EXPECT_EQ(d.special.cell(model::kVfoRow, model::ColPower), C("Hi", 1));
         EXPECT_EQ(d.special.cell(model::kVfoRow, model::ColName), model::Cell{});
         EXPECT_EQ(d.special.cell(model::kCallRow, model::ColFrequency), C("145.5000", 145.5));
         for (int column = 0; column <= model::ColBclo; ++column)
             EXPECT_TRUE(d.special.text(model::kRptRow, column).isEmpty()) << column;
         EXPECT_EQ(d.special.number(model::kRptRow, model::ColTone), 3);
         EXPECT_EQ(d.special.number(model::kRptRow, model::ColFrequency), 146.0);
     }},
};

void PrintTo(const ImportCase& c, std::ostream* os) {
    *os << c.name;
}

class CsvImport : public ::testing::TestWithParam<ImportCase> {};

TEST_P(CsvImport, StoresWhatItCanPlace) {
    model::Document document;
    files::NewDocument(document);
    testdata::SetChannel(document, 0, {145.0, 0, 0, 8, 8, 0, 0, 0.6, 0, 0, false, false, "KEEP", false});
    document.setCurrentFilePath(QStringLiteral("/a/b.318"));
    document.setDataChanged(true);
    const model::Result result = files::ImportCsvData(document, GetParam().csv);
    ASSERT_TRUE(result.ok()) << result.detail.toStdString();
    EXPECT_TRUE(document.memory.ChannelInUse(0));
    EXPECT_EQ(document.memory.text(0, model::ColName), QStringLiteral("KEEP"));
    EXPECT_TRUE(document.CurrentFilePath().isEmpty());
    EXPECT_FALSE(document.DataChanged());
    GetParam().check(document);
}

INSTANTIATE_TEST_SUITE_P(Cases, CsvImport, ::testing::ValuesIn(kImports),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(CsvImportFile, RecordCutShortIsFatalAndKeepsEarlierRecords) {
    model::Document document;
    files::NewDocument(document);
    const QByteArray csv = kHeading + memoryRecord("1") + memoryRecord("2").left(40);
    const model::Result result = files::ImportCsvData(document, csv);
    EXPECT_EQ(result.outcome, Outcome::Fatal);
    EXPECT_FALSE(result.message().isEmpty());
    EXPECT_TRUE(document.memory.ChannelInUse(1));
    EXPECT_FALSE(document.memory.ChannelInUse(2));

    const model::Result missing = files::ImportCsv(document, QStringLiteral("/no/such/file.csv"));
    EXPECT_EQ(missing.outcome, Outcome::Fatal);
}

TEST(CsvRoundTrip, ExportThenImportReproducesTheChannels) {
    model::Document source;
    testdata::FillDemoData(source);
    testdata::FillAllChannels(source);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("all.csv"));
    ASSERT_TRUE(files::ExportCsv(source, path).ok());

    model::Document target;
    files::NewDocument(target);
    ASSERT_TRUE(files::ImportCsv(target, path).ok());
    for (int c = 0; c < model::kChannelCount; ++c) {
        ASSERT_TRUE(target.memory.ChannelInUse(c));
        for (int column : {model::ColFrequency, model::ColStep, model::ColTone, model::ColTxTone,
                           model::ColRxTone, model::ColDcs, model::ColShift, model::ColOffset,
                           model::ColClock, model::ColName, model::ColSkip}) {
            EXPECT_EQ(target.memory.number(c, column), source.memory.number(c, column)) << c << "/" << column;
            EXPECT_EQ(target.memory.text(c, column), source.memory.text(c, column)) << c << "/" << column;
        }
        EXPECT_EQ(target.memory.number(c, model::ColBclo) != 0, source.memory.number(c, model::ColBclo) != 0);
    }
    for (int column = 0; column <= model::ColBclo; ++column) {
        if (column == model::ColPower || column == model::ColBsv) continue; // their words do not survive
        EXPECT_EQ(target.special.cell(model::kVfoRow, column), source.special.cell(model::kVfoRow, column))
            << column;
        EXPECT_EQ(target.special.cell(model::kCallRow, column), source.special.cell(model::kCallRow, column));
        EXPECT_TRUE(target.special.text(model::kRptRow, column).isEmpty());
    }

    // Exporting the import again gives the same file (skip stars and all).
    const QByteArray again = files::CsvExportText(target);
    model::Document third;
    files::NewDocument(third);
    files::ImportCsvText(third, again);
    EXPECT_EQ(files::CsvExportText(third), again);
}

} // namespace
