#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "model/tables.h"
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

TEST(CsvExport, FreshDataWritesHeadingAndSpecialRowsOnly) {
    const QByteArray vfo =
        "\"5KHz\",\"None\",\"88.5Hz\",\"88.5Hz\",\"023\",\"None\",\"0.6000\",\"Lo\",\"------\","
        "\"On\",\"Off\",\"Off\",\"No\",\"Off\"\r\n";
    EXPECT_EQ(files::CsvExportText(Document()),
              kHeading + "\"ZQ-318\",\"VFO\",\"VFO\",\"145.0000\"," + vfo +
                  "\"ZQ-318\",\"VFO\",\"CALL\",\"145.0000\"," + vfo +
                  "\"ZQ-318\",\"VFO\",\"RPT\",\"\",\"\",\"Tone\",\"88.5Hz\",\"88.5Hz\",\"023\",\"-Shift\","
                  "\"0.6000\",\"\",\"\",\"\",\"\",\"\",\"No\",\"Off\"\r\n");
}

TEST(CsvExport, ChannelsInUseWithSkipAndQuotesAsTheyStand) {
    Document document;
    testdata::SetChannel(document, 7, {146.52, 2, 1, 12, 12, 0, 2, 0.6, 2, 1, true, true, "", true});
    document.memory.setText(7, ColName, QStringLiteral("A\"B"));
    const QList<QByteArray> lines = files::CsvExportText(document).split('\n');
    ASSERT_EQ(lines.size(), 6);
    EXPECT_EQ(lines[4],
              "\"ZQ-318\",\"MEMORY\",\"7\",\"146.5200*\",\"12.5KHz\",\"Tone\",\"100.0Hz\",\"100.0Hz\","
              "\"023\",\"+Shift\",\"0.6000\",\"High\",\"------\",\"on1\",\"On\",\"On\",\"A\"B\",\"On\"\r");
}

TEST(CsvExport, SetsTheBareNameAndKeepsThePreviousFileOnFailure) {
    QTemporaryDir dir;
    Document document;
    document.setDataChanged(true);
    ASSERT_TRUE(files::ExportCsv(document, dir.filePath(QStringLiteral("out.csv"))).ok());
    EXPECT_EQ(document.CurrentFilePath(), QStringLiteral("out.csv"));
    EXPECT_EQ(document.windowCaption(), QStringLiteral("out.csv - Korvex ZQ-318 Clone Utility"));
    EXPECT_FALSE(document.DataChanged());

    document.setDataChanged(true);
    const Result failed = files::ExportCsv(document, dir.filePath(QStringLiteral("none/out.csv")));
    EXPECT_EQ(failed.outcome, Outcome::FileOpenError);
    EXPECT_TRUE(document.DataChanged());
    EXPECT_EQ(document.CurrentFilePath(), QStringLiteral("out.csv"));
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
};

const ImportCase kImports[] = {
    {"SevenFillsAnEmptyChannel",
     kHeading + rec("7"),
     "7",
     {at(7, ColFrequency, "146.5200", 146.52), at(7, ColStep, "12.5KHz", 2), at(7, ColTone, "Tone", 1),
      at(7, ColTxTone, "100.0Hz", 12), at(7, ColRxTone, "88.5Hz", 8), at(7, ColDcs, "023", 0),
      at(7, ColShift, "-Shift", 1), at(7, ColOffset, "0.6000", 0.6), at(7, ColPower, "Hi", 1),
      at(7, ColBlank, "------", 0), at(7, ColBsv, "Off", 1), at(7, ColClock, "On", 1),
      at(7, ColBclo, "Off", 0), at(7, ColName, "REPEAT", 1), at(7, ColSkip, nullptr, 0)}},
    {"ChannelsOutOfRangeAreIgnored", rec("200") + rec("-1") + rec("199.4") + rec(""), "", {}},
    {"HalvesRoundToEven", rec("2.5") + rec("3.5") + rec(" 9"), "2 4 9", {}},
    {"BatterySaveIsInverted",
     rec("1", {{13, "Off"}}) + rec("2", {{13, "OFF"}}) + rec("3", {{13, "on1"}}),
     "1 2 3",
     {at(1, ColBsv, "Off", 1), at(2, ColBsv, "On", 0), at(3, ColBsv, "On", 0)}},
    {"NumbersAreFormatted",
     rec("1", {{3, "0.5"}, {10, ".25"}}) + rec("2", {{3, " 145.5MHz"}, {10, "5"}}) +
         rec("3", {{3, "abc"}, {10, "-0.6"}}),
     "1 2 3",
     {at(1, ColFrequency, ".5000", 0.5), at(1, ColOffset, "0.2500", 0.25),
      at(2, ColFrequency, "145.5000", 145.5), at(2, ColOffset, "5.0000", 5), at(3, ColFrequency, nullptr, 0),
      at(3, ColOffset, nullptr, -0.6)}},
    {"VocabularyIsNormalised",
     rec("1", {{4, "25KHz"}, {5, "TSQ"}, {9, "+Shift"}, {11, "High"}, {14, "on"}, {15, "On"}}) +
         rec("2", {{4, "12.5kHz"}, {5, "DCS"}, {9, "Shift"}, {11, "hi"}}) +
         rec("3", {{5, "tone"}, {16, "LONGNAME"}}),
     "1 2 3",
     {at(1, ColStep, "25KHz", 5), at(1, ColTone, "TSQ", 3), at(1, ColShift, "+Shift", 2),
      at(1, ColPower, "Lo", 0), at(1, ColClock, "Off", 0), at(1, ColBclo, "On", 1), at(2, ColStep, "5KHz", 0),
      at(2, ColTone, "DCS", 12), at(2, ColShift, "None", 0), at(2, ColPower, "Lo", 0),
      at(3, ColTone, "None", 0), at(3, ColName, "LONGNA", 1)}},
    {"TonesAndDcsMatchByValue",
     rec("1", {{6, "88.5"}, {7, "250.3Hz"}, {8, "23"}}) + rec("2", {{6, "88.6"}}) + rec("3", {{7, ""}}) +
         rec("4", {{8, "024"}}) + rec("5", {{8, "754"}}),
     "1 5",
     {at(1, ColTxTone, "88.5Hz", 8), at(1, ColRxTone, "250.3Hz", 38), at(1, ColDcs, "023", 0),
      at(5, ColDcs, "754", 103)}},
    {"SkipAppendsAStar",
     rec("6", {{3, "146.5200*"}, {17, "On"}}) + rec("8", {{17, "on"}}),
     "6 8",
     {at(6, ColFrequency, "146.5200*", 146.52), at(6, ColSkip, nullptr, 1),
      at(8, ColFrequency, "146.5200", 146.52), at(8, ColSkip, nullptr, 0)}},
    {"ReadingResynchronisesOnTheModelWord",
     "garbage,\"more\"\r\n\r\n\r\n" + rec("1").replace("\r\n", ",\"extra\",\"columns\"\r\n") + "\r\n" +
         "ZQ-318,MEMORY,2,147.0,5KHz,None,88.5,88.5,023,None,0.6,Lo,------,On,Off,Off,BARE,Off\n" +
         rec("3", {{0, "ZQ318"}}) + rec("4", {{1, "memory"}}) + rec("5"),
     "1 2 5",
     {at(2, ColFrequency, "147.0000", 147), at(2, ColName, "BARE", 1)}},
};

class CsvImport : public ::testing::TestWithParam<ImportCase> {
protected:
    void SetUp() override {
        files::NewDocument(document);
        testdata::SetChannel(document, 0, {145.0, 0, 0, 8, 8, 0, 0, 0.6, 0, 0, false, false, "KEEP", false});
        document.setCurrentFilePath(QStringLiteral("/a/b.318"));
        document.setDataChanged(true);
    }
    Document document;
};

TEST_P(CsvImport, StoresWhatItCanPlace) {
    const ImportCase& c = GetParam();
    const Result result = files::ImportCsvData(document, c.csv);
    ASSERT_TRUE(result.ok()) << result.detail.toStdString();
    EXPECT_EQ(document.memory.text(0, ColName), QStringLiteral("KEEP"));
    EXPECT_TRUE(document.CurrentFilePath().isEmpty());
    EXPECT_FALSE(document.DataChanged());
    for (int channel = 0; channel < kChannelCount; ++channel) {
        const bool stored =
            channel == 0 ||
            QString::fromLatin1(c.stored).split(QLatin1Char(' ')).contains(QString::number(channel));
        EXPECT_EQ(document.memory.ChannelInUse(channel), stored) << "channel " << channel;
    }
    for (const Expected& e : c.cells) {
        const Cell& cell = document.memory.cell(e.row, e.column);
        if (e.text) {
            EXPECT_EQ(cell.text, QLatin1String(e.text)) << e.row << "/" << e.column;
        }
        EXPECT_EQ(cell.number, e.number) << e.row << "/" << e.column;
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, CsvImport, ::testing::ValuesIn(kImports),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(CsvImport, SpecialRowsTakeThirteenColumnsAndRptLosesItsTexts) {
    ASSERT_TRUE(files::ImportCsvData(document, rec("VFO", {{1, "VFO"}, {3, "144.3900"}}) +
                                                   rec("CALL", {{1, "VFO"}, {3, "145.5"}}) +
                                                   rec("RPT", {{1, "VFO"}, {3, "146.0"}, {5, "TSQ"}}) +
                                                   rec("vfo", {{1, "VFO"}}))
                    .ok());
    for (int channel = 1; channel < kChannelCount; ++channel)
        EXPECT_FALSE(document.memory.ChannelInUse(channel)) << channel;
    EXPECT_EQ(document.special.cell(kVfoRow, ColFrequency), (Cell{QStringLiteral("144.3900"), 144.39}));
    EXPECT_EQ(document.special.cell(kVfoRow, ColPower), (Cell{QStringLiteral("Hi"), 1}));
    EXPECT_EQ(document.special.cell(kVfoRow, ColName), Cell{});
    EXPECT_EQ(document.special.cell(kCallRow, ColFrequency), (Cell{QStringLiteral("145.5000"), 145.5}));
    for (int column = 0; column <= ColBclo; ++column)
        EXPECT_TRUE(document.special.text(kRptRow, column).isEmpty()) << column;
    EXPECT_EQ(document.special.number(kRptRow, ColTone), 3);
    EXPECT_EQ(document.special.number(kRptRow, ColFrequency), 146.0);
}

TEST_F(CsvImport, RecordCutShortIsFatalAndKeepsEarlierRecords) {
    const Result result = files::ImportCsvData(document, kHeading + rec("1") + rec("2").left(40));
    EXPECT_EQ(result.outcome, Outcome::Fatal);
    EXPECT_FALSE(result.message().isEmpty());
    EXPECT_TRUE(document.memory.ChannelInUse(1));
    EXPECT_FALSE(document.memory.ChannelInUse(2));
    EXPECT_EQ(files::ImportCsv(document, QStringLiteral("/no/such/file.csv")).outcome, Outcome::Fatal);
}

TEST(CsvRoundTrip, ExportThenImportReproducesTheChannels) {
    Document source, target, third;
    testdata::FillDemoData(source);
    testdata::FillAllChannels(source);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("all.csv"));
    ASSERT_TRUE(files::ExportCsv(source, path).ok());
    files::NewDocument(target);
    ASSERT_TRUE(files::ImportCsv(target, path).ok());
    for (int c = 0; c < kChannelCount; ++c) {
        ASSERT_TRUE(target.memory.ChannelInUse(c));
        for (int column : {ColFrequency, ColStep, ColTone, ColTxTone, ColRxTone, ColDcs, ColShift, ColOffset,
                           ColClock, ColName, ColSkip})
            EXPECT_EQ(target.memory.cell(c, column), source.memory.cell(c, column)) << c << "/" << column;
        EXPECT_EQ(target.memory.number(c, ColBclo) != 0, source.memory.number(c, ColBclo) != 0);
    }
    for (int column = 0; column <= ColBclo; ++column) {
        if (column == ColPower || column == ColBsv) continue; // their words do not survive
        EXPECT_EQ(target.special.cell(kVfoRow, column), source.special.cell(kVfoRow, column)) << column;
        EXPECT_EQ(target.special.cell(kCallRow, column), source.special.cell(kCallRow, column));
        EXPECT_TRUE(target.special.text(kRptRow, column).isEmpty());
    }

    // Exporting the import again gives the same file (skip stars and all).
    const QByteArray again = files::CsvExportText(target);
    files::NewDocument(third);
    files::ImportCsvText(third, again);
    EXPECT_EQ(files::CsvExportText(third), again);
}

} // namespace
