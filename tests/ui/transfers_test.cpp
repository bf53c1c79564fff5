// The window's transfer buttons, menus and port dialog against a virtual radio on a pseudo-terminal.
#include "link/seriallink.h"
#include "model/tables.h"
#include "radio/virtualradio.h"
#include "ui/transfercontroller.h"
#include "windowfixture.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QProgressBar>
#include <QTabWidget>

namespace zq::ui::test {
namespace {

class WindowTransfers : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(load().ok());
        ASSERT_TRUE(radio.open().ok());
        controller = std::make_unique<TransferController>(doc(), link, boxes, window->transferControls(),
                                                          window.get());
        ConnectTransfers(*window, *controller);
        controller->setDeviceOverride(radio.devicePath());
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
        auto* tabs = find<QTabWidget>("TabStrip1");
        for (int i = 0; i < tabs->count(); ++i)
            if (tabs->widget(i)->isAncestorOf(button)) tabs->setCurrentIndex(i);
        button->click();
    }

    radio::VirtualRadio radio;
    link::SerialLink link;
    std::unique_ptr<TransferController> controller;
};

TEST_F(WindowTransfers, AutoSelectAndReadSettingsFillTheWindowThatStaysOpenMeanwhile) {
    window->show();
    bool closedDuring = false;
    QObject::connect(&radio, &radio::VirtualRadio::commandReceived, window.get(),
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

    auto* tabs = find<QTabWidget>("TabStrip1");
    tabs->setCurrentIndex(2);
    Q_EMIT window->transferRequested(TransferCommand::MenuReadSettings); // from the memory page
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_TRUE(boxes.shown.isEmpty());
    EXPECT_FALSE(closedDuring);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(WindowTransfers, FailuresShowTheirBox) {
    controller->setDeviceOverride(temp.filePath(QStringLiteral("no-such-device")));
    for (const char* button : {"cmbRxData", "cmbRxData1", "cmdAuto", "cmbTxData1", "cmbTxData"}) {
        boxes.shown.clear();
        click(button);
        EXPECT_EQ(boxes.shown, QVector<MessageRequest>{ErrorBox(QStringLiteral("COM Port Error"))}) << button;
    }
    // Write Memory has no handler of its own: its two buttons stay disabled.
    EXPECT_TRUE(explicitlyDisabled("cmbRxData"));
    EXPECT_TRUE(explicitlyDisabled("cmbTxData"));
    EXPECT_FALSE(explicitlyDisabled("cmdAuto"));

    controller->setDeviceOverride(radio.devicePath());
    radio.addFault(radio::ParseFault(QStringLiteral("timeout@model")).value());
    boxes.shown.clear();
    click("cmbTxData1");
    EXPECT_EQ(boxes.shown, QVector<MessageRequest>{ErrorBox(QStringLiteral("Communication Error"))});
    expectIdle();
}

TEST_F(WindowTransfers, PortSetupStoresTheChosenNumber) {
    controller->setPortChooser(
        [](int current) { return current == 1 ? 14 : 0; }); // 14 only if offered port 1
    link.setPortName(radio.devicePath());
    ASSERT_TRUE(link.open().ok());
    Q_EMIT window->transferRequested(TransferCommand::PortSetup);
    EXPECT_FALSE(link.isOpen()); // closed so that the next transfer opens the new port
    EXPECT_EQ(window->portNumber(), 14);
}

} // namespace
} // namespace zq::ui::test
