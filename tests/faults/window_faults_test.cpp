// The fault table through the window: each transfer started by its page button, and the "All" menus,
// against a virtual radio spoiling one exchange. The link's reply time-out is cut short so that the
// silent rows do not each wait two seconds.
#include "../ui/windowfixture.h"
#include "faultmatrix.h"
#include "model/tables.h"
#include "radio/virtualradio.h"
#include "ui/pagestrip.h"

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProgressBar>
#include <algorithm>

namespace faultmatrix {
namespace {

using namespace zq::ui;
using zq::model::Outcome;

constexpr int kReplyTimeoutMs = 400;

// The window's title for an outcome: a port that cannot be opened by a transfer without a trap shows
// "COM Port Error" as well.
QString BoxText(Outcome outcome) {
    if (outcome == Outcome::Fatal) return QStringLiteral("COM Port Error");
    return zq::model::Result::fail(outcome).message();
}

class WindowFaults : public test::WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(radio.open().ok());
        program->link().setReplyTimeoutMs(kReplyTimeoutMs);
    }
    // A button on a tab that is not in front is disabled with its frame, not by itself.
    bool disabled(const char* name) {
        return find<QAbstractButton>(name)->testAttribute(Qt::WA_ForceDisabled);
    }
    void click(const char* name) {
        auto* button = find<QAbstractButton>(name);
        for (int i = 0; i < window->pages().count(); ++i)
            if (window->pages().widget(i)->isAncestorOf(button)) window->pages().setCurrentIndex(i);
        button->click();
    }
    // Loads what the transfer starts from: a write sends the example file to a blank radio, a read
    // takes the example from the radio into the start-up data.
    void prepare(const Row& row) {
        if (IsWrite(row.transfer)) {
            ASSERT_TRUE(load(ExampleFile()).ok());
        } else {
            ASSERT_TRUE(load().ok());
            LoadExample(radio);
            radio.setModelCode(zq::radio::kModelCodeT);
        }
        if (row.transfer == Transfer::AutoSelect) doc().setModelVariant(zq::model::VariantA); // so it shows
        before.replaceContents(doc().contents());
        Inject(row, radio);
        device = PortFor(row, radio, temp.path());
        program->ports().setDeviceOverride(device);
    }
    // The box a failed row shows: the message, and under it the link's detail naming the device.
    MessageRequest failureBox(const Row& row) const {
        return ErrorBox(BoxText(row.outcome), ExpectedDetail(row, device, kReplyTimeoutMs));
    }
    // The buttons and the progress after the transfer: all enabled and hidden, except that Write Memory
    // has no trap for a port that will not open, which leaves its two buttons disabled.
    void expectButtons(const Row& row) {
        const bool stuck = row.outcome == Outcome::Fatal;
        for (const char* name : {"cmbRxData1", "cmbTxData1", "cmbRxData2", "cmbTxData2", "cmdAuto"})
            EXPECT_FALSE(disabled(name)) << name;
        EXPECT_EQ(disabled("cmbRxData"), stuck);
        EXPECT_EQ(disabled("cmbTxData"), stuck);
        EXPECT_EQ(!window->progressBar()->isHidden(), stuck);
        if (!stuck) {
            EXPECT_EQ(window->progressBar()->value(), 0);
        }
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr); // the hourglass is gone
    }
    void expectStores(const Row& row) {
        if (IsWrite(row.transfer)) {
            EXPECT_EQ(WrittenImageProblems(row, doc(), radio).join(QStringLiteral("; ")).toStdString(), "");
            EXPECT_TRUE(doc().memory() == before.memory()); // a write changes nothing in the program
            EXPECT_TRUE(doc().special() == before.special());
        } else if (row.transfer == Transfer::AutoSelect) {
            // Once the identity is read the variant stands, whatever comes after; a garbled code is
            // another variant's.
            const bool identified = row.step == Step::EndCommand || row.outcome == Outcome::Done;
            const bool garbled = row.fault == Fault::Garble && row.step == Step::FirstBlock;
            const int variant = garbled ? zq::model::VariantE : zq::model::VariantT;
            EXPECT_EQ(doc().ModelVariant(), identified ? variant : zq::model::VariantA);
        } else {
            EXPECT_EQ(ReadStoreProblems(row, doc(), before, radio).join(QStringLiteral("; ")).toStdString(),
                      "");
        }
    }

    zq::radio::VirtualRadio radio;
    zq::model::Document before;
    QString device;
};

const char* ButtonOf(Transfer transfer) {
    switch (transfer) {
    case Transfer::AutoSelect:
        return "cmdAuto";
    case Transfer::ReadMemory:
        return "cmbRxData";
    case Transfer::WriteMemory:
        return "cmbTxData";
    case Transfer::ReadSettings:
        return "cmbRxData1";
    case Transfer::WriteSettings:
        return "cmbTxData1";
    case Transfer::Dump:
        break;
    }
    return "";
}

class ButtonFaults : public WindowFaults, public ::testing::WithParamInterface<Row> {};

TEST_P(ButtonFaults, ReportsStopsAndRestores) {
    const Row& row = GetParam();
    ASSERT_NO_FATAL_FAILURE(prepare(row));
    QElapsedTimer clock;
    clock.start();
    click(ButtonOf(row.transfer));
    const qint64 elapsed = clock.elapsed();

    QVector<MessageRequest> boxesExpected;
    if (row.outcome != Outcome::Done) boxesExpected << failureBox(row);
    EXPECT_EQ(boxes.shown, boxesExpected);
    const QString last = radio.commands().isEmpty() ? QString() : radio.commands().last();
    EXPECT_EQ(last.left(row.stop.size()).toStdString(), row.stop.toStdString());
    EXPECT_EQ(EndCommands(radio), row.endSent ? 1 : 0);
    expectStores(row);
    expectButtons(row);
    EXPECT_LE(elapsed, TimeBoundMs(row, radio.commands().size(), kReplyTimeoutMs, 1000));
}

std::vector<Row> ButtonRows() {
    std::vector<Row> rows;
    for (const Row& row : Rows())
        if (row.transfer != Transfer::Dump) rows.push_back(row);
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Window, ButtonFaults, ::testing::ValuesIn(ButtonRows()),
                         [](const auto& info) { return info.param.name(); });

// "All" is two sessions, settings then memory, each on its page; the memory session runs even when the
// settings session failed, and fails on its own only when the port is gone.
class AllFaults : public WindowFaults, public ::testing::WithParamInterface<Row> {};

TEST_P(AllFaults, SecondSessionRunsAfterTheFirstFails) {
    const Row& row = GetParam();
    ASSERT_NO_FATAL_FAILURE(prepare(row));
    const bool write = IsWrite(row.transfer);
    window->pages().setCurrentIndex(PageStrip::Memory);
    QElapsedTimer clock;
    clock.start();
    find<QAction>(write ? "mnuWrAll" : "mnuReAll")->trigger();
    const qint64 elapsed = clock.elapsed();

    // A hang-up or a vanished port leaves no device for the second session to open.
    const bool gone = row.fault == Fault::Hangup || row.fault == Fault::PortGone;
    QVector<MessageRequest> boxesExpected;
    if (row.outcome != Outcome::Done) boxesExpected << failureBox(row);
    if (gone) { // the memory session cannot open the port any more
        const std::vector<Row> open =
            RowsOf(write ? Transfer::WriteMemory : Transfer::ReadMemory, {Step::Open});
        const auto portGone = std::find_if(open.begin(), open.end(), [](const Row& candidate) {
            return candidate.fault == Fault::PortGone;
        });
        ASSERT_NE(portGone, open.end());
        boxesExpected << failureBox(*portGone);
    }
    EXPECT_EQ(boxes.shown, boxesExpected);
    EXPECT_EQ(window->pages().currentIndex(), PageStrip::Memory);
    EXPECT_EQ(EndCommands(radio), (row.endSent ? 1 : 0) + (gone ? 0 : 1));
    if (!gone) {
        EXPECT_EQ(radio.commands().last(), QStringLiteral("KV~E"));
        if (write) {
            EXPECT_EQ(WrittenImageProblems(row, doc(), radio).join(QStringLiteral("; ")).toStdString(), "");
            Row memoryRow = row; // the memory session wrote every channel
            memoryRow.transfer = Transfer::WriteMemory;
            memoryRow.step = Step::EndCommand;
            memoryRow.outcome = Outcome::Done;
            memoryRow.fault = Fault::Short;
            EXPECT_EQ(WrittenImageProblems(memoryRow, doc(), radio).join(QStringLiteral("; ")).toStdString(),
                      "");
        } else {
            QStringList settingsProblems = ReadStoreProblems(row, doc(), before, radio);
            settingsProblems.removeAll(QStringLiteral("memory changed")); // the memory session followed
            EXPECT_EQ(settingsProblems.join(QStringLiteral("; ")).toStdString(), "");
            Row memoryRow = row;
            memoryRow.transfer = Transfer::ReadMemory;
            memoryRow.step = Step::EndCommand;
            memoryRow.outcome = Outcome::Done;
            memoryRow.fault = Fault::Short;
            const QStringList channels =
                ReadStoreProblems(memoryRow, doc(), before, radio).filter(QStringLiteral("channel"));
            EXPECT_EQ(channels.join(QStringLiteral("; ")).toStdString(), "");
        }
    }
    // Write Memory without a device leaves its buttons disabled; anything else restores them.
    Row last = row;
    last.outcome = gone && write ? Outcome::Fatal : Outcome::Done;
    expectButtons(last);
    EXPECT_LE(elapsed, TimeBoundMs(row, radio.commands().size(), kReplyTimeoutMs, 1000));
}

std::vector<Row> AllRows() {
    std::vector<Row> rows;
    for (const Transfer transfer : {Transfer::ReadSettings, Transfer::WriteSettings})
        for (const Row& row : RowsOf(transfer, {Step::Open, Step::FirstBlock})) {
            Row all = row;
            all.transfer = transfer;
            rows.push_back(all);
        }
    return rows;
}

INSTANTIATE_TEST_SUITE_P(WindowAll, AllFaults, ::testing::ValuesIn(AllRows()),
                         [](const auto& info) { return info.param.name(); });

} // namespace
} // namespace faultmatrix
