// The window's Open and Import against files a user may pick by mistake: each gives its box at once and
// leaves the data as they were. Open traps every failure; the import traps none, so what it cannot read
// ends the program, with the unsaved edits kept; a file too large to be a channel list is refused unread.
#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "files/recovery.h"
#include "sampledata.h"
#include "windowfixture.h"

#include <QAction>
#include <unistd.h>

namespace zq::ui::test {
namespace {

using testdata::Hostile;

enum class Box { None, FileOpenError, DataError, Fatal };

struct HostilePick {
    const char* name;
    Hostile kind;
    Box open;
    Box import;
};

const HostilePick kPicks[] = {
    {"Empty", Hostile::Empty, Box::FileOpenError, Box::None},
    {"Folder", Hostile::Folder, Box::FileOpenError, Box::Fatal},
    {"Fifo", Hostile::Fifo, Box::FileOpenError, Box::Fatal},
    {"HundredMegabytes", Hostile::Huge, Box::DataError, Box::DataError},
    {"BinaryGarbage", Hostile::Garbage, Box::DataError, Box::None},
    {"InvalidUtf8", Hostile::BadUtf8, Box::DataError, Box::None},
    {"Vanished", Hostile::Missing, Box::FileOpenError, Box::Fatal},
    {"Unreadable", Hostile::Unreadable, Box::FileOpenError, Box::Fatal},
};

class HostilePickTest : public WindowFixture, public ::testing::WithParamInterface<HostilePick> {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        if (GetParam().kind == Hostile::Unreadable && geteuid() == 0)
            GTEST_SKIP() << "permissions do not bind root";
        ASSERT_TRUE(load(demoCopy("before.318")).ok());
        doc().setDialText(3, QStringLiteral("123"), model::Document::Mark::Edit);
    }
    QString make(const char* name, const QByteArray& valid) {
        EXPECT_TRUE(testdata::MakeHostile(GetParam().kind, path(name), valid));
        return path(name);
    }
    void trigger(const char* name) { find<QAction>(name)->trigger(); }
    void expectBox(Box box) {
        switch (box) {
        case Box::None:
            EXPECT_TRUE(boxes.shown.isEmpty());
            break;
        case Box::FileOpenError:
        case Box::DataError:
            EXPECT_EQ(boxes.shown, QVector<MessageRequest>{
                                       ErrorBox(box == Box::DataError ? QStringLiteral("Data Error")
                                                                      : QStringLiteral("File Open Error"))});
            break;
        case Box::Fatal:
            ASSERT_EQ(boxes.shown.size(), 1);
            EXPECT_TRUE(boxes.shown[0].text.startsWith(FatalErrorBox(QString()).text));
            break;
        }
        EXPECT_EQ(fatalSpy.count(), box == Box::Fatal ? 1 : 0);
    }
};

TEST_P(HostilePickTest, OpenShowsItsErrorAndChangesNothing) {
    dialogs.answers = {make("picked.318", ReadFile(path("before.318")))};
    boxes.answers = {MessageAnswer::No}; // not saved first
    const model::Contents before = doc().contents();
    trigger("mnuFileOpen");
    ASSERT_FALSE(boxes.shown.isEmpty());
    EXPECT_EQ(boxes.shown.takeFirst(), SaveChangesBox());
    expectBox(GetParam().open);
    EXPECT_EQ(doc().contents(), before);
    EXPECT_EQ(doc().CurrentFilePath(), path("before.318"));
    EXPECT_TRUE(doc().DataChanged());
}

TEST_P(HostilePickTest, ImportRefusesWhatItCannotReadAndKeepsTheEdits) {
    const HostilePick& c = GetParam();
    dialogs.answers = {make("picked.csv", files::CsvExportText(doc()))};
    const model::Contents before = doc().contents();
    trigger("mnuImport");
    expectBox(c.import);
    if (c.import == Box::None) return; // read and taken as far as it goes, as any file
    EXPECT_EQ(doc().contents(), before);
    EXPECT_EQ(doc().CurrentFilePath(), path("before.318"));
    EXPECT_TRUE(doc().DataChanged());
    // The end of the program left the edits in a recovery file, which the box names.
    const QStringList kept = files::RecoveryFiles();
    EXPECT_EQ(kept.size(), c.import == Box::Fatal ? 1 : 0);
    if (c.import == Box::Fatal && !kept.isEmpty()) {
        EXPECT_TRUE(boxes.shown[0].detail.contains(kept[0]));
    }
}

INSTANTIATE_TEST_SUITE_P(Picks, HostilePickTest, ::testing::ValuesIn(kPicks),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace zq::ui::test
