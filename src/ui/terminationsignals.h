#pragma once
// SIGTERM, SIGHUP and SIGINT turned into a Qt signal of the event loop. The handler itself only
// writes the signal's number into a pipe, the one thing it may safely do; a socket notifier on the
// other end runs in whichever event loop is running, a transfer's nested one included, and the
// program ends from there with its data looked after.
#include <QObject>

#include <array>
#include <csignal>

class QSocketNotifier;

namespace zq::ui {

class TerminationSignals : public QObject {
    Q_OBJECT
public:
    // Catches the three signals from now on. While one object lives, a second one takes over until
    // it is gone.
    explicit TerminationSignals(QObject* parent = nullptr);
    // The earlier handlers come back.
    ~TerminationSignals() override;

    // False when the pipe could not be made: the signals then keep their earlier handlers.
    bool active() const { return notifier_ != nullptr; }
    static const std::array<int, 3>& Caught();
    static QString Name(int signalNumber); // "SIGTERM"

Q_SIGNALS:
    void arrived(int signalNumber);

private:
    void drain();

    int readEnd_ = -1;
    int writeEnd_ = -1;
    int previousWriteEnd_ = -1;
    QSocketNotifier* notifier_ = nullptr;
    std::array<struct sigaction, 3> previous_{};
};

} // namespace zq::ui
