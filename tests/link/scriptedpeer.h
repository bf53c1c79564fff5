#pragma once
// The far end of a pseudo-terminal that answers each CR-terminated command with whatever the test
// scripted, byte for byte: replies no radio would send.
#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <deque>

class QSocketNotifier;

class ScriptedPeer : public QObject {
    Q_OBJECT
public:
    ScriptedPeer();
    ~ScriptedPeer() override;
    bool ok() const { return master_ >= 0; }
    QString devicePath() const { return devicePath_; }
    // The next command is answered with these bytes (nothing more is sent when the queue is empty).
    void script(const QByteArray& reply) { replies_.push_back(reply); }
    // Sends bytes now, unasked.
    void push(const QByteArray& bytes);
    void hangUp();
    const QStringList& commands() const { return commands_; }

private:
    void readAvailable();
    int master_ = -1;
    int holder_ = -1;
    QString devicePath_;
    QSocketNotifier* notifier_ = nullptr;
    QByteArray input_;
    std::deque<QByteArray> replies_;
    QStringList commands_;
};
