#pragma once
// What the window shows while a transfer runs: the transfer buttons of the pages it concerns
// disabled, the progress bar for the memory transfers and a comparison, and the hourglass; all
// given back when the session closes.
#include "transfercontroller.h"

#include <QObject>

class QProgressBar;

namespace zq::ui {

class DtmfSettingsPage;
class FunctionSettingsPage;
class MemoryPage;

class TransferIndicators : public QObject {
    Q_OBJECT
public:
    TransferIndicators(TransferController& transfers, FunctionSettingsPage& functionPage,
                       DtmfSettingsPage& dtmfPage, MemoryPage& memoryPage, QProgressBar& progress,
                       QObject* parent);

private:
    void started(TransferKind kind);
    void ended(TransferKind kind);
    void closed();
    void setSettingsButtonsEnabled(bool enabled);

    FunctionSettingsPage& functionPage_;
    DtmfSettingsPage& dtmfPage_;
    MemoryPage& memoryPage_;
    QProgressBar& progress_;
};

} // namespace zq::ui
