#pragma once
// What each way the line can go wrong does to each step of each transfer: one table, run through the
// window and through zq318 alike. A row names the fault, where the virtual radio injects it and what
// must follow: the outcome with its detail, the last command the radio saw, whether the session's end
// command went out, how many exchanges waited out their time and whether a spoilt write still landed.
#include "model/outcome.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <iosfwd>
#include <string>
#include <vector>

namespace zq::radio {
class VirtualRadio;
}
namespace zq::model {
class Document;
}

namespace faultmatrix {

enum class Transfer { AutoSelect, ReadMemory, WriteMemory, ReadSettings, WriteSettings, Dump };
// Each step runs code of its own: opening the port, the model query, the first, a middle and the last
// block, the end command.
enum class Step { Open, ModelQuery, FirstBlock, MiddleBlock, LastBlock, EndCommand };
enum class Fault { Timeout, Short, Garble, Ng, Hangup, Drop, SilentEnd, UnknownModel, PortGone };

struct Row {
    Transfer transfer;
    Step step;
    Fault fault;
    QString option;             // the virtual radio's fault ("timeout@0200"); empty when set up otherwise
    zq::model::Outcome outcome; // as the core reports it
    QString detail;             // PORT stands for the device, MS for the reply time-out
    QString stop;               // the last command the radio received; empty: none reached it
    bool endSent = false;       // the session's end command went out
    int replyWaits = 0;         // exchanges that waited out the reply time-out
    int serviceWaits = 0;       // dump exchanges that collected for their full time
    bool blockStored = false;   // a write's spoilt block reached the radio's memory all the same
    int readBefore = 0;         // blocks a read took in before the faulty one, in its own order
    std::string name() const;   // "ReadMemory_LastBlock_Timeout"
};

// gtest names a failing row by this.
void PrintTo(const Row& row, std::ostream* out);

const char* TransferName(Transfer transfer);
const char* StepName(Step step);
const char* FaultName(Fault fault);

// Every applicable fault at every step of every transfer.
const std::vector<Row>& Rows();
// The rows of one transfer, optionally of some steps only.
std::vector<Row> RowsOf(Transfer transfer, std::initializer_list<Step> steps = {});

// The block address the step's fault targets ("0200"), "model" or "end"; empty for Open.
QString StepTarget(Transfer transfer, Step step);
inline bool IsWrite(Transfer transfer) {
    return transfer == Transfer::WriteMemory || transfer == Transfer::WriteSettings;
}

// The row's detail with the device and the time-out filled in.
QString ExpectedDetail(const Row& row, const QString& device, int replyTimeoutMs);

// Makes the radio spoil what the row says: a fault or an unknown model code.
void Inject(const Row& row, zq::radio::VirtualRadio& radio);
// The device a front end is to open: a link in `folder` to the radio's. A port that has gone has its link
// removed with the radio hung up before the transfer; one that hangs up loses its link once the transfer
// has it open. (The radio's own name would not do: a test running beside this one may be given the same
// pseudo-terminal once this radio has let it go.)
QString PortFor(const Row& row, zq::radio::VirtualRadio& radio, const QString& folder);

// A radio or a document holding the example clone file, variant T, clone code 0.
QString ExampleFile();
void LoadExample(zq::radio::VirtualRadio& radio);
// How the radio's memory should look after a write of `document` that the row spoilt, as a list of
// "ADDR: what differs"; empty when it looks right.
QStringList WrittenImageProblems(const Row& row, zq::model::Document& document,
                                 const zq::radio::VirtualRadio& radio);
// The same for a read into `document`, which held `before`: blocks read before the fault are decoded
// into the stores, the rest keep what they held.
QStringList ReadStoreProblems(const Row& row, const zq::model::Document& document,
                              const zq::model::Document& before, const zq::radio::VirtualRadio& radio);

// How many times the radio received the end command.
int EndCommands(const zq::radio::VirtualRadio& radio);
// An upper bound on a run's time: every command's pause and exchange with a wide margin, each waited-out
// exchange in full, and `startMs` for getting going.
qint64 TimeBoundMs(const Row& row, qsizetype commands, int replyTimeoutMs, int startMs);

} // namespace faultmatrix
