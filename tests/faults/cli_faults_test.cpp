// The fault table through zq318: the tool runs as a process against a virtual radio answering in this
// one, which spoils one exchange. The tool's reply time-out is the radio's usual two seconds.
#include "faultmatrix.h"
#include "files/clonefile.h"
#include "model/document.h"
#include "model/tables.h"
#include "radio/radioimage.h"
#include "radio/virtualradio.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

namespace faultmatrix {
namespace {

using zq::model::Outcome;

constexpr int kReplyTimeoutMs = 2000;
const QByteArray kPrevious = "previous contents\n";

struct ToolRun {
    int status = -1;
    QByteArray out;
    QString errors;
};

// Lets the radio answer while the tool runs; one still running after two minutes is killed on return.
ToolRun RunTool(const QStringList& arguments, const QString& dataHome) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), dataHome);
    process.setProcessEnvironment(environment);
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(120000, &loop, &QEventLoop::quit);
    process.start(QStringLiteral(ZQ318_PATH), arguments);
    loop.exec();
    if (process.state() != QProcess::NotRunning || process.exitStatus() != QProcess::NormalExit) return {};
    return {process.exitCode(), process.readAllStandardOutput(),
            QString::fromUtf8(process.readAllStandardError())};
}

// The verb and options that run the row's transfer. Writes skip the model check of their own with
// --force, so that the row's fault meets the write's own model query; reads cannot skip theirs.
QStringList Arguments(Transfer transfer, const QString& device, const QString& output) {
    const QStringList port{QStringLiteral("--port"), device, QStringLiteral("--quiet")};
    switch (transfer) {
    case Transfer::AutoSelect:
        return port + QStringList{"detect"};
    case Transfer::ReadMemory:
        return port + QStringList{"read", "--memory", "-o", output};
    case Transfer::ReadSettings:
        return port + QStringList{"read", "--settings", "-o", output};
    case Transfer::WriteMemory:
        return port + QStringList{"write", "--memory", "--force", ExampleFile()};
    case Transfer::WriteSettings:
        return port + QStringList{"write", "--settings", "--force", ExampleFile()};
    case Transfer::Dump:
        return port + QStringList{"dump"};
    }
    return {};
}

int ExitStatus(Outcome outcome) {
    switch (outcome) {
    case Outcome::Done:
        return 0;
    case Outcome::CommunicationError:
        return 3;
    default: // the tool opens the port itself before any transfer, so no port failure is a run-time error
        return 4;
    }
}

bool IsRead(Transfer transfer) {
    return transfer == Transfer::ReadMemory || transfer == Transfer::ReadSettings;
}

class CliFaults : public ::testing::TestWithParam<Row> {};

TEST_P(CliFaults, ReportsStopsAndKeepsFiles) {
    const Row& row = GetParam();
    zq::radio::VirtualRadio radio;
    ASSERT_TRUE(radio.open().ok());
    QTemporaryDir dir;
    const QString output = dir.filePath(QStringLiteral("out.318"));
    {
        QFile existing(output);
        ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
        existing.write(kPrevious);
    }
    if (!IsWrite(row.transfer)) LoadExample(radio);
    const QString device = PortFor(row, radio, dir.path());

    // A read detects the radio first, a session of its own: the fault waits for the read's first command.
    const int prelude = IsRead(row.transfer) && row.fault != Fault::PortGone ? 3 : 0;
    if (prelude == 0)
        Inject(row, radio);
    else
        QObject::connect(&radio, &zq::radio::VirtualRadio::commandReceived, &radio, [&] {
            if (radio.commands().size() == prelude + 1) Inject(row, radio);
        });

    QElapsedTimer clock;
    clock.start();
    const ToolRun run = RunTool(Arguments(row.transfer, device, output), dir.path());
    const qint64 elapsed = clock.elapsed();

    EXPECT_EQ(run.status, ExitStatus(row.outcome)) << run.errors.toStdString();
    if (row.outcome == Outcome::Done) {
        EXPECT_EQ(run.errors.toStdString(), "");
    } else {
        Row reported = row;
        if (reported.outcome == Outcome::Fatal) reported.outcome = Outcome::ComPortError;
        EXPECT_EQ(run.errors.section(QLatin1Char('\n'), 0, 0).toStdString(),
                  (zq::model::Result::fail(reported.outcome).message() + QStringLiteral(": ") +
                   ExpectedDetail(reported, device, kReplyTimeoutMs))
                      .toStdString());
    }
    const QStringList& commands = radio.commands();
    const QString last = commands.isEmpty() ? QString() : commands.last();
    EXPECT_EQ(last.left(row.stop.size()).toStdString(), row.stop.toStdString());
    EXPECT_EQ(EndCommands(radio), (row.endSent ? 1 : 0) + (prelude ? 1 : 0));

    QFile written(output);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray file = written.readAll();
    if (IsRead(row.transfer)) { // the file is written only when the whole read succeeded
        if (row.outcome == Outcome::Done)
            EXPECT_TRUE(file.startsWith("Korvex ZQ-318T Clone 0 FileStart\r\n"))
                << file.left(40).toStdString();
        else
            EXPECT_EQ(file, kPrevious);
    } else if (IsWrite(row.transfer)) {
        zq::model::Document sent;
        ASSERT_TRUE(zq::files::LoadCloneFile(sent, ExampleFile()).ok());
        sent.buildSettingsBlock();
        EXPECT_EQ(WrittenImageProblems(row, sent, radio).join(QStringLiteral("; ")).toStdString(), "");
    } else if (row.transfer == Transfer::AutoSelect) {
        const bool garbled = row.fault == Fault::Garble && row.step == Step::FirstBlock;
        const char* shown = garbled ? "ZQ-318 E, clone code 0\n" : "ZQ-318 T, clone code 0\n";
        EXPECT_EQ(run.out, row.outcome == Outcome::Done ? QByteArray(shown) : QByteArray());
    } else if (row.transfer == Transfer::Dump) {
        // Nothing is printed from a dump that stopped; a spoilt answer shows on its line.
        if (row.outcome != Outcome::Done) {
            EXPECT_EQ(run.out, QByteArray());
        } else {
            const QList<QByteArray> lines = run.out.split('\n');
            ASSERT_EQ(lines.size(), 257);
            for (int block = 0; block < 256; ++block) {
                const QByteArray truth = QByteArray::number(block, 16).rightJustified(2, '0').toUpper() +
                                         '\t' + radio.blockHex(block * 16).toLatin1() + '\r';
                EXPECT_EQ(lines[block] == truth, block != row.readBefore) << block;
            }
        }
    }
    EXPECT_LE(elapsed, TimeBoundMs(row, commands.size(), kReplyTimeoutMs, 5000));
}

INSTANTIATE_TEST_SUITE_P(Cli, CliFaults, ::testing::ValuesIn(Rows()),
                         [](const auto& info) { return info.param.name(); });

} // namespace
} // namespace faultmatrix

// The radio answers through this process's event loop.
int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
