#pragma once
// The service panel: an address box, an output box and the buttons that read one raw block, clear
// the output and dump the first 4096 bytes. Its reads check nothing; the raw text is the answer.
#include <QWidget>

class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace zq::ui {

class TransferController;

class ServicePanel : public QWidget {
    Q_OBJECT
public:
    explicit ServicePanel(TransferController& transfers, QWidget* parent = nullptr);

public Q_SLOTS:
    void readBlock();   // Command1: "KV~F" + the address as typed + "R"
    void clearOutput(); // Command2
    void dumpBlocks();  // Command6: blocks 0000..0FF0

private:
    TransferController& transfers_;
    QLineEdit* address_ = nullptr;     // Text1
    QPlainTextEdit* output_ = nullptr; // Text2
    QPushButton* readButton_ = nullptr;
    QPushButton* dumpButton_ = nullptr;
};

} // namespace zq::ui
