#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "sampledata.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <map>

using namespace zq;
using namespace zq::model;

namespace {

const QByteArray kHeading =
    "\"MODEL\",\"BANK\",\"CHANNEL\",\"FREQUENCY\",\"STEP\",\"TONE\",\"TXTONE\",\"RXTONE\",\"DCS\","
    "\"SHIFT\",\"SHIFT FREQUENCY\",\"Power\",\"ATT\",\"BS\",\"Clock\",\"BCLO\",\"Name\",\"Skip\"\r\n";

TEST(CsvExport, HeadingSpecialRowsAndChannelsInUseAsTheyStand) {
    Document document;
    testdata::SetChannel(document, 7, {146.52, 2, 1, 12, 12, 0, 2, 0.6, 2, 0, 1, 1, 1, 0, 1}, "");
    document.changeMemory(
        7, 7, [](MemoryTable& m) { m.setText(7, ColName, QStringLiteral("A\"B")); }, Document::Mark::Quiet);
    const QByteArray vfo = "\"5KHz\",\"None\",\"88.5Hz\",\"88.5Hz\",\"023\",\"None\",\"0.6000\",\"Lo\","
                           "\"------\",\"On\",\"Off\",\"Off\",\"No\",\"Off\"\r\n";
    EXPECT_EQ(
        files::CsvExportText(document),
        kHeading + "\"ZQ-318\",\"VFO\",\"VFO\",\"145.0000\"," + vfo +
            "\"ZQ-318\",\"VFO\",\"CALL\",\"145.0000\"," + vfo +
            "\"ZQ-318\",\"VFO\",\"RPT\",\"\",\"\",\"Tone\",\"88.5Hz\",\"88.5Hz\",\"023\",\"-Shift\","
            "\"0.6000\",\"\",\"\",\"\",\"\",\"\",\"No\",\"Off\"\r\n"
            "\"ZQ-318\",\"MEMORY\",\"7\",\"146.5200*\",\"12.5KHz\",\"Tone\",\"100.0Hz\",\"100.0Hz\","
            "\"023\",\"+Shift\",\"0.6000\",\"High\",\"------\",\"on1\",\"On\",\"On\",\"A\"B\",\"On\"\r\n");
}

// A memory record with the given 0-based fields replaced.
QByteArray rec(const QString& channel, const std::map<int, QString>& changes = {}) {
    QStringList fields{"ZQ-318",  "MEMORY", channel, "146.5200", "12.5KHz", "Tone",
                       "100.0Hz", "88.5Hz", "023",   "-Shift",   "0.6000",  "Hi",
                       "------",  "Off",    "On",    "Off",      "REPEAT",  "Off"};
    for (const auto& [index, value] : changes)
        fields[index] = value;
    return "\"" + fields.join(QStringLiteral("\",\"")).toLatin1() + "\"\r\n";
}

struct Expected {
    int row, column;
    const char* text; // nullptr: only the number is checked
    double number;
};
Expected at(int row, int column, const char* text, double number) {
    return {row, column, text, number};
}

struct ImportCase {
    const char* name;
    QByteArray csv;
    const char* stored; // the channels in use besides channel 0, which was in use before
    std::vector<Expected> cells;
    const char* skipped = "";          // the lines of the records found but not stored
    const char* wrongFieldCounts = ""; // "line:fields" of the record lines without 18 fields
};

const ImportCase kImports[] = {
    {"ChannelNumbers",
     kHeading + rec("200") + rec("-1") + rec("199.4") + rec("") + rec("2.5") + rec("3.5") + rec(" 9"),
     "2 4 9",
     {at(2, ColPower, "Hi", 1), at(2, ColBsv, "Off", 1), at(2, ColBlank, "------", 0)},
     "2 3 4 5"},
    {"NumbersAreFormatted",
     rec("1", {{3, "0.5"}, {10, ".25"}}) + rec("3", {{3, "abc"}, {10, "-0.6"}}),
     "1 3",
     {at(1, ColFrequency, ".5000", 0.5), at(1, ColOffset, "0.2500", 0.25), at(3, ColFrequency, nullptr, 0),
      at(3, ColOffset, nullptr, -0.6)}},
    {"VocabularyIsNormalised",
     rec("1", {{4, "25KHz"}, {5, "TSQ"}, {9, "+Shift"}, {11, "High"}, {13, "OFF"}, {14, "on"}, {15, "On"}}) +
         rec("2", {{4, "12.5kHz"}, {5, "DCS"}, {9, "Shift"}, {16, "LONGNAME"}, {17, "on"}}) +
         rec("3", {{3, "146.5200*"}, {5, "tone"}, {17, "On"}}),
     "1 2 3",
     {at(1, ColStep, "25KHz", 5), at(1, ColTone, "TSQ", 3), at(1, ColShift, "+Shift", 2),
      at(1, ColPower, "Lo", 0), at(1, ColBsv, "On", 0), at(1, ColClock, "Off", 0), at(1, ColBclo, "On", 1),
      at(2, ColStep, "5KHz", 0), at(2, ColTone, "DCS", 12), at(2, ColShift, "None", 0),
      at(2, ColName, "LONGNA", 1), at(2, ColFrequency, "146.5200", 146.52), at(3, ColTone, "None", 0),
      at(3, ColSkip, nullptr, 1), at(3, ColFrequency, "146.5200*", 146.52)}},
    {"TonesAndDcsMatchByValue",
     rec("1", {{6, "88.5"}, {7, "250.3Hz"}, {8, "23"}}) + rec("2", {{6, "88.6"}}) + rec("3", {{7, ""}}) +
         rec("4", {{8, "024"}}),
     "1",
     {at(1, ColTxTone, "88.5Hz", 8), at(1, ColRxTone, "250.3Hz", 38), at(1, ColDcs, "023", 0)},
     "2 3 4"},
    {"ReadingResynchronisesOnTheModelWord",
     "garbage,\"more\"\r\n\r\n\r\n" + rec("1").replace("\r\n", ",\"extra\",\"columns\"\r\n") + "\r\n" +
         "ZQ-318,MEMORY,2,147.0,5KHz,None,88.5,88.5,023,None,0.6,Lo,------,On,Off,Off,BARE,Off\n" +
         rec("3", {{0, "ZQ318"}}) + rec("4", {{1, "memory"}}) + rec("5"),
     "1 2 5",
     {at(2, ColFrequency, "147.0000", 147), at(2, ColName, "BARE", 1)},
     "",
     "4:20"},
    // A column left out: each record takes the next one's model word as its last field, so the record
    // after it is lost, and every such line is reported.
    {"MissingColumn",
     QByteArray(kHeading).replace("\"ATT\",", "") + rec("1").replace("\"------\",", "") +
         rec("2").replace("\"------\",", "") + rec("3").replace("\"------\",", "") + rec("4"),
     "1 3",
     {at(1, ColBsv, "On", 0), at(1, ColName, "Off", 1)},
     "",
     "1:17 2:17 3:17 4:17"},
};

class CsvImport : public ::testing::TestWithParam<ImportCase> {
protected:
    void SetUp() override {
        files::NewDocument(document);
        testdata::SetChannel(document, 0, {145.0, 0, 0, 8, 8, 0, 0, 0.6, 0, 0, 0, 0, 0, 0, 0}, "KEEP");
    }
    Document document;
};

TEST_P(CsvImport, StoresWhatItCanPlaceAndReportsTheRest) {
    const ImportCase& c = GetParam();
    files::CsvImportReport report;
    const Result result = files::ImportCsvData(document, c.csv, &report);
    ASSERT_TRUE(result.ok()) << result.detail.toStdString();
    QStringList skipped, wrongFieldCounts;
    for (const auto& dropped : report.dropped)
        skipped.append(QString::number(dropped.line));
    for (const auto& [line, fields] : report.wrongFieldCounts)
        wrongFieldCounts.append(QStringLiteral("%1:%2").arg(line).arg(fields));
    EXPECT_EQ(skipped.join(QLatin1Char(' ')), QLatin1String(c.skipped));
    EXPECT_EQ(report.recordsDropped, skipped.size());
    EXPECT_EQ(wrongFieldCounts.join(QLatin1Char(' ')), QLatin1String(c.wrongFieldCounts));
    EXPECT_EQ(report.recordsStored, QString::fromLatin1(c.stored).split(QLatin1Char(' ')).size());
    EXPECT_EQ(document.memory().text(0, ColName), QStringLiteral("KEEP"));
    const QStringList stored = QString::fromLatin1(c.stored).split(QLatin1Char(' '));
    for (int channel = 1; channel < kChannelCount; ++channel)
        EXPECT_EQ(document.memory().ChannelInUse(channel), stored.contains(QString::number(channel)))
            << channel;
    for (const Expected& e : c.cells) {
        const Cell& cell = document.memory().cell(e.row, e.column);
        if (e.text) {
            EXPECT_EQ(cell.text, QLatin1String(e.text)) << e.row << "/" << e.column;
        }
        EXPECT_EQ(cell.number, e.number) << e.row << "/" << e.column;
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, CsvImport, ::testing::ValuesIn(kImports),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(CsvImport, SpecialRowsTakeThirteenColumnsAndRptLosesItsTexts) {
    ASSERT_TRUE(files::ImportCsvData(document, rec("VFO", {{1, "VFO"}, {3, "144.3900"}, {17, "On"}}) +
                                                   rec("RPT", {{1, "VFO"}, {3, "146.0"}, {5, "TSQ"}}) +
                                                   rec("vfo", {{1, "VFO"}}))
                    .ok());
    EXPECT_EQ(document.memory().text(0, ColName), QStringLiteral("KEEP"));
    EXPECT_EQ(document.special().cell(kVfoRow, ColFrequency), (Cell{QStringLiteral("144.3900"), 144.39}));
    EXPECT_EQ(document.special().cell(kVfoRow, ColName), Cell{});
    for (int column = 0; column <= ColBclo; ++column)
        EXPECT_TRUE(document.special().text(kRptRow, column).isEmpty()) << column;
    EXPECT_EQ(document.special().number(kRptRow, ColTone), 3);
}

TEST_F(CsvImport, RecordCutShortIsFatalAndKeepsEarlierRecords) {
    const Result result = files::ImportCsvData(document, kHeading + rec("1") + rec("2").left(40));
    EXPECT_EQ(result.outcome, Outcome::Fatal);
    EXPECT_FALSE(result.message().isEmpty());
    EXPECT_TRUE(document.memory().ChannelInUse(1));
    EXPECT_FALSE(document.memory().ChannelInUse(2));
}

TEST(CsvRoundTrip, ExportKeepsTheBareNameAndImportReproducesTheChannels) {
    Document source, target;
    ASSERT_TRUE(files::LoadCloneFile(source, testdata::kDemoFile).ok());
    testdata::FillAllChannels(source);
    QTemporaryDir dir;
    ASSERT_TRUE(files::ExportCsv(source, dir.filePath(QStringLiteral("all.csv"))).ok());
    EXPECT_EQ(files::ExportCsv(source, dir.filePath(QStringLiteral("none/out.csv"))).outcome,
              Outcome::FileOpenError);
    EXPECT_EQ(source.CurrentFilePath(), QStringLiteral("all.csv"));

    files::NewDocument(target);
    ASSERT_TRUE(files::ImportCsv(target, dir.filePath(QStringLiteral("all.csv"))).ok());
    for (int c = 0; c < kChannelCount; ++c) {
        ASSERT_TRUE(target.memory().ChannelInUse(c));
        for (int column : {ColFrequency, ColStep, ColTone, ColTxTone, ColRxTone, ColDcs, ColShift, ColOffset,
                           ColClock, ColName, ColSkip})
            EXPECT_EQ(target.memory().cell(c, column), source.memory().cell(c, column)) << c << "/" << column;
        EXPECT_EQ(target.memory().number(c, ColBclo) != 0, source.memory().number(c, ColBclo) != 0);
    }
    for (int column : {ColFrequency, ColStep, ColTone, ColTxTone, ColRxTone, ColDcs, ColShift, ColOffset,
                       ColClock, ColBclo})
        EXPECT_EQ(target.special().cell(kCallRow, column), source.special().cell(kCallRow, column)) << column;
}

} // namespace
