#pragma once
// A radio without hardware: answers the clone protocol on a pseudo-terminal, keeps an 8 KiB memory
// map and can be told to get one exchange wrong.
#include "model/outcome.h"
#include "radiofault.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QString>
#include <QStringList>
#include <vector>

class QSocketNotifier;

namespace zq::radio {

inline constexpr int kMemorySize = 0x2000;
inline constexpr int kBlockSize = 16;
// Block 0000 carries the identity: byte 2 the clone code, byte 3 the model code.
inline constexpr int kCloneCodeByte = 2;
inline constexpr int kModelCodeByte = 3;
inline constexpr quint8 kCloneCodeA = 0xAA;
inline constexpr quint8 kModelCodeT = 0xAA;
inline constexpr quint8 kModelCodeE = 0x55;
inline constexpr quint8 kModelCodeTfh = 0x33;

class VirtualRadio : public QObject {
    Q_OBJECT
public:
    explicit VirtualRadio(QObject* parent = nullptr);
    ~VirtualRadio() override;

    // Opens the pseudo-terminal; devicePath() is then the far end a program opens as its port.
    zq::model::Result open();
    bool isOpen() const { return master_ >= 0; }
    QString devicePath() const { return devicePath_; }
    // Closes the pseudo-terminal, as if the cable were pulled.
    void hangUp();

    // 0 answers at once; otherwise every character sent takes ten bits at this rate.
    void setLineRate(int baud) { lineRate_ = baud; }
    void addFault(const Fault& fault) { faults_.push_back(fault); }
    // One line per command received: milliseconds since start, TAB, the command without CR.
    zq::model::Result setLogFile(const QString& path);

    // Commands received so far, without their CR.
    const QStringList& commands() const { return commands_; }
    qint64 charactersSent() const { return charactersSent_; }

    QByteArray& memory() { return memory_; }
    const QByteArray& memory() const { return memory_; }
    // The 32 upper-case digits of the block at `address`.
    QString blockHex(int address) const;
    // Stores 32 hex digits (either case) at a block address; false if either is unusable.
    bool setBlockHex(int address, const QString& digits);
    int modelCode() const { return quint8(memory_[kModelCodeByte]); }
    void setModelCode(int code) { memory_[kModelCodeByte] = char(code); }
    bool cloneCodeA() const { return quint8(memory_[kCloneCodeByte]) == kCloneCodeA; }
    void setCloneCodeA(bool codeA) { memory_[kCloneCodeByte] = char(codeA ? kCloneCodeA : 0); }

Q_SIGNALS:
    void commandReceived(const QString& command);

private:
    void readAvailable();
    void handle(const QString& command);
    QString answer(const QString& command);
    std::optional<Fault> takeFault(const QString& target);
    void send(const QByteArray& bytes);
    void writeOut(qsizetype count);
    void writePending();
    void pace();

    int master_ = -1;
    int holder_ = -1; // keeps the far end open so that the master never sees a hang-up between clients
    QString devicePath_;
    QSocketNotifier* readNotifier_ = nullptr;
    QSocketNotifier* writeNotifier_ = nullptr;
    QByteArray input_;
    QByteArray output_;
    QByteArray memory_;
    std::vector<Fault> faults_;
    QStringList commands_;
    QFile log_;
    QElapsedTimer clock_;
    int lineRate_ = 0;
    qint64 charactersSent_ = 0;
    // Pacing: the characters of a burst leave one every ten bit times from the burst's start. A
    // timer descriptor wakes the radio to the microsecond, where Qt's timers round to milliseconds.
    void armPace(qint64 atNs);
    int paceFd_ = -1;
    QSocketNotifier* paceNotifier_ = nullptr;
    bool pacing_ = false;
    qint64 burstStartNs_ = 0;
    qint64 burstSent_ = 0;
};

} // namespace zq::radio
