#include "files/chirpcsv.h"
#include "files/clonefile.h"
#include "files/csvrecords.h"
#include "model/tables.h"
#include "sampledata.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <set>

using namespace zq;
using namespace zq::model;

namespace {

const char* const kNames[] = {"CH", "RPT-1", "A*#+-/", "\\=($_?", " 09 AZ", ""};

// 200 channels in use that together hold every tone, DCS code, shift, power, tone mode and both
// steps a memory record keeps, with busy lock-out, clock shift and battery save set on some.
void fillEveryValue(Document& document) {
    for (int c = 0; c < kChannelCount; ++c) {
        const bool step12k5 = c % 3 == 1;
        const double mhz = 136.0 + c * 0.175 + (step12k5 ? 0.0125 : 0.005 * (c % 2));
        const int mode = c % 5; // None, Tone, TSQ one tone, TSQ two tones, DCS
        const int tx = c % kToneCount;
        const int rx = mode == 2 ? tx : (c * 7 + 3) % kToneCount;
        testdata::SetChannel(document, c,
                             {mhz, step12k5 ? 2.0 : 0.0, double(std::array{0, 1, 3, 3, 12}[mode]), double(tx),
                              double(rx), double(c % kDcsCount), double(c % 3), 0.6 + 0.1 * (c % 5),
                              double(c % 3), 0, double(c % 3), double(c % 5 == 0), double(c % 7 == 0), 0,
                              double(c % 6 == 0)},
                             kNames[c % 6]);
    }
}

// Busy lock-out, clock shift and battery save: the fields the layout has no column for.
bool lostInExport(int column) {
    return column == ColBsv || column == ColClock || column == ColBclo;
}

class ChirpRoundTrip : public ::testing::Test {
protected:
    void SetUp() override {
        Document source;
        fillEveryValue(source);
        ASSERT_TRUE(files::SaveCloneFile(source, dir.filePath(QStringLiteral("all.318"))).ok());
        ASSERT_TRUE(files::LoadCloneFile(original, dir.filePath(QStringLiteral("all.318"))).ok());
        csv = files::ChirpExportText(original, &exportReports);
    }
    QTemporaryDir dir;
    Document original;
    QByteArray csv;
    QList<files::ChirpReport> exportReports;
};

TEST_F(ChirpRoundTrip, TheFixtureHoldsEveryValue) {
    std::set<double> seen[kMemoryColumns];
    for (int c = 0; c < kChannelCount; ++c)
        for (int column = 0; column < kMemoryColumns; ++column)
            seen[column].insert(original.memory().number(c, column));
    EXPECT_EQ(seen[ColTxTone].size(), size_t(kToneCount));
    EXPECT_EQ(seen[ColDcs].size(), size_t(kDcsCount));
    EXPECT_EQ(seen[ColTone], (std::set<double>{0, 1, 3, 12}));
    EXPECT_EQ(seen[ColStep], (std::set<double>{0, 2}));
    EXPECT_EQ(seen[ColShift].size(), 3u);
    EXPECT_EQ(seen[ColPower].size(), 3u);
}

TEST_F(ChirpRoundTrip, KeepsEveryFieldWithAColumnAndReportsTheOthers) {
    // Every channel whose lost fields are set is reported, and no other.
    std::set<int> reported, expected;
    for (const files::ChirpReport& report : exportReports)
        reported.insert(report.channel);
    for (int c = 0; c < kChannelCount; ++c)
        if (original.memory().number(c, ColBsv) != 0 || original.memory().number(c, ColClock) != 0 ||
            original.memory().number(c, ColBclo) != 0)
            expected.insert(c);
    EXPECT_EQ(reported, expected);
    EXPECT_EQ(exportReports.value(0).text(),
              QStringLiteral(
                  "channel 0: busy lock-out On, clock shift On: no column in the layout; not written (an "
                  "import takes them from the channel it replaces, or from the template)"));

    Document target; // the start-up data: the lost fields come from the template
    const files::ChirpOutcome imported = files::ImportChirpCsvData(target, csv);
    ASSERT_TRUE(imported.result.ok());
    EXPECT_EQ(imported.lines(), QStringList());
    EXPECT_EQ(imported.channels, kChannelCount);
    EXPECT_TRUE(target.DataChanged());
    for (int c = 0; c < kChannelCount; ++c) {
        ASSERT_TRUE(target.memory().ChannelInUse(c)) << c;
        for (int column = 0; column < kMemoryColumns; ++column)
            EXPECT_EQ(target.memory().number(c, column),
                      lostInExport(column) ? 0 : original.memory().number(c, column))
                << c << "/" << column;
        EXPECT_EQ(target.memory().text(c, ColName), original.memory().text(c, ColName));
    }
}

TEST_F(ChirpRoundTrip, OntoTheSameFileGivesItBackByteForByte) {
    Document base;
    ASSERT_TRUE(files::LoadCloneFile(base, dir.filePath(QStringLiteral("all.318"))).ok());
    const files::ChirpOutcome imported = files::ImportChirpCsvData(base, csv);
    ASSERT_TRUE(imported.result.ok());
    EXPECT_EQ(files::SerializeCloneFile(base), testdata::ReadFile(dir.filePath(QStringLiteral("all.318"))));
}

TEST(ChirpExport, RowsInTheLayoutsOwnNumberFormats) {
    Document document;
    testdata::SetChannel(document, 3, {146.94, 0, 3, 12, 8, 0, 1, 0.6, 2, 0, 0, 0, 0, 0, 1}, "W1AW");
    testdata::SetChannel(document, 10, {145.0125, 2, 12, 8, 8, 103, 2, 10, 0, 0, 0, 0, 0, 0, 0}, "");
    document.changeMemory(
        10, 10, [](MemoryTable& m) { m.setText(10, ColName, QStringLiteral("A,\"B")); },
        Document::Mark::Quiet);
    QList<files::ChirpReport> reports;
    EXPECT_EQ(
        files::ChirpExportText(document, &reports),
        "Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,DtcsCode,DtcsPolarity,RxDtcsCode,"
        "CrossMode,Mode,TStep,Skip,Power,Comment,URCALL,RPT1CALL,RPT2CALL,DVCODE\r\n"
        "3,W1AW,146.940000,-,0.600000,Cross,100.0,88.5,023,NN,023,Tone->Tone,FM,5.00,S,High,,,,,\r\n"
        "10,\"A,\"\"B\",145.012500,+,10.000000,DTCS,88.5,88.5,754,NN,754,Tone->Tone,FM,12.50,,Low,,,,,\r\n");
    EXPECT_TRUE(reports.isEmpty());

    QTemporaryDir dir;
    const files::ChirpOutcome written =
        files::ExportChirpCsv(document, dir.filePath(QStringLiteral("x/y.csv")));
    EXPECT_EQ(written.result.outcome, Outcome::FileOpenError);
    EXPECT_EQ(files::ExportChirpCsv(document, dir.filePath(QStringLiteral("y.csv"))).channels, 2);
    EXPECT_TRUE(document.CurrentFilePath().isEmpty());
}

const QByteArray kHeader =
    "Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,DtcsCode,DtcsPolarity,"
    "RxDtcsCode,CrossMode,Mode,TStep,Skip,Power\r\n";
// Row r of a file with kHeader on row 1.
QString at(int row, int location, const char* text) {
    return QStringLiteral("row %1 (Location %2): %3").arg(row).arg(location).arg(QLatin1String(text));
}

struct ImportCase {
    const char* name;
    QByteArray csv;
    QStringList reports;
    std::vector<std::tuple<int, int, const char*>> cells; // channel, column, text; those channels in use
    int variant = VariantT;
    bool cloneCodeA = false;
};

const ImportCase kImports[] = {
    {"MissingColumnsTakeTheTemplate",
     "Location,Frequency\r\n3,146.52\r\n4,145.0125\r\n",
     {"row 1: no column Name, Duplex, Offset, Tone, rToneFreq, cToneFreq, DtcsCode, TStep, Skip, Power: "
      "every "
      "channel takes the template channel's value (the step: the one its frequency fits)"},
     {{3, ColFrequency, "146.5200"},
      {3, ColStep, "5KHz"},
      {3, ColTxTone, "88.5Hz"},
      {3, ColOffset, "0.6000"},
      {3, ColPower, "Low"},
      {3, ColName, ""},
      {4, ColStep, "12.5KHz"}}},
    {"CommentsByteOrderMarkAndLfLines",
     "\xEF\xBB\xBF# made by hand\nlocation , "
     "Frequency,Name,TStep,Tone,rToneFreq,cToneFreq,DtcsCode,Duplex,Offset,"
     "Skip,Power\n# a comment\n\n,,,\n5,145.0125,abc,12.50,TSQL,88.5,100.0,023,+,0.6,S,1.5 W\n",
     {at(6, 5, "Name \"abc\": lower-case letters upper-cased; stored as \"ABC\"")},
     {{5, ColFrequency, "145.0125*"},
      {5, ColName, "ABC"},
      {5, ColTone, "TSQ"},
      {5, ColTxTone, "100.0Hz"},
      {5, ColRxTone, "100.0Hz"},
      {5, ColShift, "+Shift"},
      {5, ColPower, "Mid"}}},
    {"QuotedFieldsAndCrOnlyLines",
     kHeader +
         "\"7\",\"A,B\"\"C\",\"146.520000\",\"\",\"\",\"\",,,,,,,,,,\"High\"\r8,X,146.55,,,,,,,,,,,,,0.5\r",
     {at(2, 7, "Name \"A,B\"C\": \",\"\" not among the radio's name characters; stored as \"ABC\"")},
     {{7, ColName, "ABC"}, {7, ColPower, "High"}, {8, ColPower, "Low"}}},
    {"RowsTheRadioCannotHold",
     kHeader + "-1,A,146.52,,,,,,,,,,,,,\r\n"
               "200,A,146.52,,,,,,,,,,,,,\r\n"
               "1,A,146.5x,,,,,,,,,,,,,\r\n"
               "2,A,446.0,,,,,,,,,,,,,\r\n"
               "3,A,146.5225,,,,,,,,,,,,,\r\n"
               "4,WX,162.4,off,,,,,,,,,,,,\r\n"
               "5,A,146.52,split,250.0,,,,,,,,,,,\r\n"
               "6,A,146.52,+,0.6025,,,,,,,,,,,\r\n"
               "7,A,146.52,,,Tone,159.8,,,,,,,,,\r\n"
               "8,A,146.52,,,TSQL,88.5,,,,,,,,,\r\n"
               "9,A,146.52,,,DTCS,,,024,,,,,,,\r\n"
               "10,A,146.52,,,DTCS,,,023,NR,,,,,,\r\n"
               "11,A,146.52,,,Cross,,,023,,047,DTCS->DTCS,,,,\r\n"
               "12,A,146.52,,,Cross,88.5,,,,,->Tone,,,,\r\n"
               "13,A,146.52,,,TSQL-R,,,,,,,,,,\r\n"
               "14,A,146.52,,,,,,,,,,AM,,,\r\n"
               "15,A,146.52,,,,,,,,,,0123456789012345678901234567890123456789+,,,\r\n",
     {"row 2: Location \"-1\": not a channel number 0..199; row skipped",
      "row 3: Location \"200\": not a channel number 0..199; row skipped",
      at(4, 1, "Frequency \"146.5x\": not a frequency in MHz; row skipped"),
      at(5, 2, "Frequency \"446.0\": outside the band 136 to below 174 MHz; row skipped"),
      at(6, 3,
         "Frequency \"146.5225\": on neither the 5 kHz nor the 12.5 kHz raster the radio tunes; row skipped"),
      at(7, 4, "Duplex \"off\": the radio cannot keep its transmitter off on a channel; row skipped"),
      at(8, 5,
         "Offset \"250.0\": a split the radio cannot do: an offset must stay below 100 MHz on the 5 kHz "
         "raster "
         "of the step; row skipped"),
      at(9, 6,
         "Offset \"0.6025\": an offset must stay below 100 MHz on the 5 kHz raster of the step; row skipped"),
      at(10, 7, "rToneFreq \"159.8\": not in the radio's tone table; row skipped"),
      at(11, 8, "cToneFreq \"\": empty, but the tone mode uses it; row skipped"),
      at(12, 9, "DtcsCode \"024\": not in the radio's DCS code table; row skipped"),
      at(13, 10,
         "DtcsPolarity \"NR\": the radio sends and receives DCS with normal polarity only; row skipped"),
      at(14, 11,
         "RxDtcsCode \"047\": differs from DtcsCode; the radio has one DCS code both ways; row skipped"),
      at(15, 12,
         "CrossMode \"->Tone\": the radio's cross modes are Tone->Tone, Tone-> and DTCS->DTCS with one code; "
         "row "
         "skipped"),
      at(16, 13, "Tone \"TSQL-R\": not a tone mode the radio has; row skipped"),
      at(17, 14, "Mode \"AM\": the radio sends and receives FM only; row skipped"),
      at(18, 15,
         "Mode \"0123456789012345678901234567890123456789...\": the radio sends and receives FM only; row "
         "skipped")},
     {}},
    {"FieldsLeftAtTheTemplatesValue",
     kHeader + "1,A,146.52,,0.6025,Tone,100.0,159.8,999,RN,,,NFM,6.25,P,5 dBm\r\n"
               "2,A,146.52,,,,,,,,,,,,X,\r\n",
     {at(2, 1, "Mode \"NFM\": the radio has no narrow FM; taken as FM"),
      at(2, 1, "TStep \"6.25\": not a step of the radio; 5.00 taken"),
      at(2, 1,
         "Offset \"0.6025\": an offset must stay below 100 MHz on the 5 kHz raster of the step; left at "
         "0.600000"),
      at(2, 1, "cToneFreq \"159.8\": not in the radio's tone table; left at 88.5"),
      at(2, 1, "DtcsCode \"999\": not in the radio's DCS code table; left at 023"),
      at(2, 1, "Skip \"P\": the radio has no priority channel; scanned as usual"),
      at(2, 1, "Power \"5 dBm\": neither Low, Mid, High nor watts; left at Low"),
      at(3, 2, "Skip \"X\": neither \"\" nor \"S\"; scanned as usual")},
     {{1, ColTone, "Tone"},
      {1, ColTxTone, "100.0Hz"},
      {1, ColRxTone, "88.5Hz"},
      {1, ColOffset, "0.6000"},
      {1, ColStep, "5KHz"},
      {1, ColPower, "Low"},
      {1, ColFrequency, "146.5200"},
      {2, ColFrequency, "146.5200"}}},
    {"ModesTheRadioHas",
     kHeader + "1,A,146.52,split,145.92,Cross,100.0,123.0,,,,Tone->Tone,,25.00,,\r\n"
               "2,A,146.52,,,Cross,100.0,123.0,,,,Tone->,,,,\r\n"
               "3,A,146.52,,,Cross,,,047,NN,047,DTCS->DTCS,,,,\r\n"
               "4,A,146.52,,,DTCS,,,047,NN,023,Tone->Tone,,,,\r\n",
     {at(2, 1, "TStep \"25.00\": does not fit 146.520000 MHz; 5.00 taken")},
     {{1, ColShift, "-Shift"},
      {1, ColOffset, "0.6000"},
      {1, ColTone, "TSQ"},
      {1, ColTxTone, "100.0Hz"},
      {1, ColRxTone, "123.0Hz"},
      {2, ColTone, "Tone"},
      {2, ColTxTone, "100.0Hz"},
      {3, ColTone, "DCS"},
      {3, ColDcs, "047"},
      {4, ColDcs, "047"}}},
    {"ALaterRowReplacesAnEarlierOne",
     kHeader + "1,FIRST,146.52,,,,,,,,,,,,,\r\n1,SECOND,146.55,,,,,,,,,,,,,\r\n",
     {at(3, 1, "replaces the channel row 2 gave")},
     {{1, ColName, "SECOND"}}},
    {"TheBandOfTheVariant",
     kHeader + "1,A,147.0,,,,,,,,,,,,,\r\n",
     {at(2, 1, "Frequency \"147.0\": outside the band 144 to below 146 MHz; row skipped")},
     {},
     VariantE},
    {"CloneCodeAWidensIt",
     kHeader + "1,A,147.0,,,,,,,,,,,,,\r\n",
     {},
     {{1, ColFrequency, "147.0000"}},
     VariantE,
     true},
};

class ChirpImport : public ::testing::TestWithParam<ImportCase> {};

TEST_P(ChirpImport, StoresWhatTheRadioHoldsAndReportsTheRest) {
    const ImportCase& c = GetParam();
    Document document;
    document.setModelVariant(c.variant);
    document.setCloneCodeA(c.cloneCodeA);
    testdata::SetChannel(document, 0, {145.0, 0, 0, 8, 8, 0, 0, 0.6, 0, 0, 2, 1, 1, 0, 0}, "KEEP");
    const files::ChirpOutcome outcome = files::ImportChirpCsvData(document, c.csv);
    ASSERT_TRUE(outcome.result.ok()) << outcome.result.detail.toStdString();
    EXPECT_EQ(outcome.lines(), c.reports);
    EXPECT_EQ(document.memory().text(0, ColName), QStringLiteral("KEEP"));
    std::set<int> inUse{0}, expected{0};
    for (const auto& [channel, column, text] : c.cells) {
        expected.insert(channel);
        EXPECT_EQ(document.memory().text(channel, column), QLatin1String(text)) << channel << "/" << column;
    }
    for (int channel = 0; channel < kChannelCount; ++channel)
        if (document.memory().ChannelInUse(channel)) inUse.insert(channel);
    EXPECT_EQ(inUse, expected);
    EXPECT_EQ(document.DataChanged(), expected.size() > 1);
}

INSTANTIATE_TEST_SUITE_P(Cases, ChirpImport, ::testing::ValuesIn(kImports),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ChirpImport, AChannelInUseKeepsWhatTheLayoutCannotCarry) {
    Document document;
    testdata::SetChannel(document, 0, {145.0, 0, 0, 8, 8, 0, 0, 0.6, 0, 0, 2, 1, 1, 0, 0}, "KEEP");
    ASSERT_TRUE(files::ImportChirpCsvData(document, kHeader + "0,NEW,146.52,,,,,,,,,,,,,\r\n").result.ok());
    EXPECT_EQ(document.memory().text(0, ColName), QStringLiteral("NEW"));
    EXPECT_EQ(document.memory().text(0, ColBsv), QStringLiteral("on2"));
    EXPECT_EQ(document.memory().text(0, ColClock), QStringLiteral("On"));
    EXPECT_EQ(document.memory().text(0, ColBclo), QStringLiteral("On"));
}

TEST(ChirpImport, WithoutAHeaderNothingChanges) {
    for (const QByteArray& csv :
         {QByteArray(), QByteArray("1,146.52\r\n"), QByteArray("Location,Name\r\n1,A\r\n")}) {
        Document document;
        const Contents before = document.contents();
        const files::ChirpOutcome outcome = files::ImportChirpCsvData(document, csv);
        EXPECT_EQ(outcome.result.outcome, Outcome::DataError);
        EXPECT_EQ(outcome.result.detail, QStringLiteral("no header with the columns Location and Frequency"));
        EXPECT_TRUE(document.contents() == before);
        EXPECT_FALSE(document.DataChanged());
    }
    Document document;
    EXPECT_EQ(files::ImportChirpCsv(document, QStringLiteral("/no/such/file.csv")).result.outcome,
              Outcome::FileOpenError);
}

TEST(CsvRecords, QuotesLineEndsAndRowNumbers) {
    const QList<files::CsvRecord> records =
        files::SplitCsvRecords("a,\"b\r\nc\",\"d\"\"e\"\r\n#x,y\n  \n\"#z\",\r\n,");
    ASSERT_EQ(records.size(), 2);
    EXPECT_EQ(records[0].line, 1);
    EXPECT_EQ(records[0].fields, (QStringList{"a", "b\nc", "d\"e"}));
    EXPECT_EQ(records[1].line, 5);
    EXPECT_EQ(records[1].fields, (QStringList{"#z", ""}));
    EXPECT_EQ(files::QuoteCsvField(QStringLiteral("a\"b")), QStringLiteral("\"a\"\"b\""));
    EXPECT_EQ(files::QuoteCsvField(QStringLiteral("ab")), QStringLiteral("ab"));
}

} // namespace
