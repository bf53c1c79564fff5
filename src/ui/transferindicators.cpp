#include "transferindicators.h"

#include "dtmfsettingspage.h"
#include "functionsettingspage.h"
#include "memorypage.h"

#include <QGuiApplication>
#include <QProgressBar>

namespace zq::ui {

TransferIndicators::TransferIndicators(TransferController& transfers, FunctionSettingsPage& functionPage,
                                       DtmfSettingsPage& dtmfPage, MemoryPage& memoryPage,
                                       QProgressBar& progress, QObject* parent)
    : QObject(parent), functionPage_(functionPage), dtmfPage_(dtmfPage), memoryPage_(memoryPage),
      progress_(progress) {
    connect(&transfers, &TransferController::started, this, &TransferIndicators::started);
    connect(&transfers, &TransferController::ended, this, &TransferIndicators::ended);
    connect(&transfers, &TransferController::progressed, &progress_, &QProgressBar::setValue);
    connect(&transfers, &TransferController::closed, this, &TransferIndicators::closed);
}

void TransferIndicators::setSettingsButtonsEnabled(bool enabled) {
    functionPage_.setTransferButtonsEnabled(enabled);
    dtmfPage_.setTransferButtonsEnabled(enabled);
}

void TransferIndicators::started(TransferKind kind) {
    switch (kind) {
    case TransferKind::ReadMemory:
    case TransferKind::WriteMemory:
        memoryPage_.setTransferButtonsEnabled(false);
        progress_.setValue(0);
        progress_.show();
        break;
    case TransferKind::ReadSettings:
    case TransferKind::WriteSettings:
        setSettingsButtonsEnabled(false);
        break;
    case TransferKind::AutoSelect:
        functionPage_.setAutoSelectEnabled(false);
        break;
    case TransferKind::Verify:
        // A comparison reads the whole radio: no other transfer may start until it is over.
        memoryPage_.setTransferButtonsEnabled(false);
        setSettingsButtonsEnabled(false);
        functionPage_.setAutoSelectEnabled(false);
        progress_.setValue(0);
        progress_.show();
        break;
    case TransferKind::Service:
        return; // the service reads show no hourglass
    }
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

void TransferIndicators::ended(TransferKind kind) {
    if (kind != TransferKind::Service) QGuiApplication::restoreOverrideCursor();
}

void TransferIndicators::closed() {
    setSettingsButtonsEnabled(true);
    memoryPage_.setTransferButtonsEnabled(true);
    functionPage_.setAutoSelectEnabled(true);
    progress_.hide();
    progress_.setValue(0);
}

} // namespace zq::ui
