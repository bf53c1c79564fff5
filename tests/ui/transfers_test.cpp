// The window's transfer buttons, menus and port dialog against a virtual radio on a pseudo-terminal.
#include "model/tables.h"
#include "radio/virtualradio.h"
#include "ui/pagestrip.h"
#include "windowfixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTimer>

namespace zq::ui::test {
namespace {

class WindowTransfers : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load().ok());
        ASSERT_TRUE(radio.open().ok());
        program->ports().setDeviceOverride(radio.devicePath());
    }
    // A button on a tab that is not in front is disabled with its frame, not by itself.
    bool explicitlyDisabled(const char* name) {
        return find<QAbstractButton>(name)->testAttribute(Qt::WA_ForceDisabled);
    }
    void expectIdle() {
        for (const char* name :
             {"cmbRxData", "cmbTxData", "cmbRxData1", "cmbTxData1", "cmbRxData2", "cmbTxData2", "cmdAuto"})
            EXPECT_FALSE(explicitlyDisabled(name)) << name;
        EXPECT_FALSE(window->progressBar()->isVisible());
        EXPECT_EQ(window->progressBar()->value(), 0);
    }
    // Brings the button's tab to the front and clicks it.
    void click(const char* name) {
        auto* button = find<QAbstractButton>(name);
        for (int i = 0; i < window->pages().count(); ++i)
            if (window->pages().widget(i)->isAncestorOf(button)) window->pages().setCurrentIndex(i);
        button->click();
    }
    void trigger(const char* menuEntry) { find<QAction>(menuEntry)->trigger(); }
    // The boxes shown, each without the detail beside its message (the port setup tests read that).
    QVector<MessageRequest> shownMessages() const {
        QVector<MessageRequest> messages = boxes.shown;
        for (MessageRequest& box : messages)
            box.detail.clear();
        return messages;
    }

    radio::VirtualRadio radio;
};

TEST_F(WindowTransfers, AutoSelectAndReadSettingsFillTheWindowThatStaysOpenMeanwhile) {
    window->show();
    bool closedDuring = false;
    QObject::connect(&radio, &radio::VirtualRadio::commandReceived, window,
                     [&] { closedDuring = closedDuring || window->close(); });
    radio.setModelCode(radio::kModelCodeE);
    ASSERT_TRUE(radio.setBlockHex(0x00E0, QStringLiteral("A50000010C0C03000000000000000000")));
    ASSERT_TRUE(radio.setBlockHex(0x1F30, QStringLiteral("3132333F000000000000000000000000")));
    click("cmdAuto");
    EXPECT_EQ(doc().ModelVariant(), model::VariantE);
    expectIdle();

    click("cmbRxData2"); // the second button only calls the first one's handler
    EXPECT_EQ(doc().settings().volume, 12);
    EXPECT_EQ(find<QLineEdit>("txtDial_3")->text(), QStringLiteral("123#"));
    expectIdle();

    window->pages().setCurrentIndex(PageStrip::Memory);
    trigger("mnuReSet"); // from the memory page
    EXPECT_EQ(window->pages().currentIndex(), PageStrip::Settings1);
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_FALSE(closedDuring);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(WindowTransfers, FailuresShowTheirBox) {
    program->ports().setDeviceOverride(temp.filePath(QStringLiteral("no-such-device")));
    for (const char* button : {"cmbRxData", "cmbRxData1", "cmdAuto", "cmbTxData1", "cmbTxData"}) {
        boxes.shown.clear();
        click(button);
        EXPECT_EQ(shownMessages(), QVector<MessageRequest>{ErrorBox(QStringLiteral("COM Port Error"))})
            << button;
    }
    // Write Memory has no handler of its own: its two buttons stay disabled.
    EXPECT_TRUE(explicitlyDisabled("cmbRxData"));
    EXPECT_TRUE(explicitlyDisabled("cmbTxData"));
    EXPECT_FALSE(explicitlyDisabled("cmdAuto"));

    program->ports().setDeviceOverride(radio.devicePath());
    radio.addFault(radio::ParseFault(QStringLiteral("timeout@model")).value());
    boxes.shown.clear();
    click("cmbTxData1");
    EXPECT_EQ(shownMessages(), QVector<MessageRequest>{ErrorBox(QStringLiteral("Communication Error"))});
    expectIdle();
}

// "All" from the memory page: the settings page comes to the front for the first session, which fails;
// the memory page for the second, which runs to its end command all the same.
TEST_F(WindowTransfers, AllRunsSettingsThenMemoryEachOnItsPageEvenAfterAFailure) {
    const std::pair<const char*, const char*> menus[] = {{"mnuReAll", "ng@00E0"}, {"mnuWrAll", "ng@model"}};
    for (const auto& [entry, fault] : menus) {
        SCOPED_TRACE(entry);
        boxes.shown.clear();
        window->pages().setCurrentIndex(PageStrip::Memory);
        QSignalSpy switched(&window->pages(), &PageStrip::pageSwitched);
        const qsizetype before = radio.commands().size();
        radio.addFault(radio::ParseFault(QLatin1String(fault)).value());
        trigger(entry);
        ASSERT_EQ(switched.count(), 2);
        EXPECT_EQ(switched[0][0].toInt(), PageStrip::Settings1);
        EXPECT_EQ(switched[1][0].toInt(), PageStrip::Memory);
        EXPECT_EQ(shownMessages(), QVector<MessageRequest>{ErrorBox(QStringLiteral("Communication Error"))});
        EXPECT_GT(radio.commands().size() - before, 2 * model::kChannelCount); // every channel's two blocks
        EXPECT_EQ(radio.commands().last(), QStringLiteral("KV~E"));
        expectIdle();
    }
}

TEST_F(WindowTransfers, PortSetupClosesThePortAndTheNextTransferOpensTheChosenOne) {
    click("cmdAuto"); // the port is open now
    ASSERT_TRUE(boxes.shown.isEmpty());
    QTimer::singleShot(0, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->objectName(), QStringLiteral("dlgCOM"));
        EXPECT_TRUE(dialog->findChild<QRadioButton*>(QStringLiteral("opbCom_0"))->isChecked());
        dialog->findChild<QRadioButton*>(QStringLiteral("opbCom_13"))->click();
        dialog->findChild<QAbstractButton*>(QStringLiteral("OKButton"))->click();
    });
    trigger("mnuToolsOptions");
    EXPECT_EQ(program->ports().number(), 14);
    const qsizetype before = radio.commands().size();
    click("cmdAuto"); // whatever COM14 is here, it is not the radio
    EXPECT_EQ(boxes.shown.size(), 1);
    EXPECT_EQ(radio.commands().size(), before);
}

} // namespace
} // namespace zq::ui::test
