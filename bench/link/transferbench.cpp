// Times Read/Write Memory and Read/Write Settings against the virtual radio, run as a process of its
// own, and compares each with its floor: the pauses the command sequence requires plus, when the
// radio paces its line, ten bit times for every character it sends.
#include "link/seriallink.h"
#include "link/transfers.h"
#include "model/document.h"
#include "radioprocess.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <functional>
#include <sys/resource.h>

using zq::link::SerialLink;
using zq::model::Document;
using zq::model::Result;

namespace {

struct Transfer {
    const char* name;
    std::function<Result(SerialLink&, Document&)> run;
    int pausesMs;   // the Wait calls of the sequence
    int radioChars; // echoes and answers, end command included
};

// Read Memory: 400 reads each followed by 10 ms, 10 ms before the end command and 10 after it.
// Write Memory: model check, 10 ms, 400 writes each after 10 ms, 10 ms, end command, 10 ms.
// Read Settings: 15 reads with 14 pauses between them, 10 ms, end command, 10 ms.
// Write Settings: model check, 10 ms, 17 writes (three of the pauses before them are 100 ms), end.
const Transfer kTransfers[] = {
    {"Read Memory", [](SerialLink& l, Document& d) { return zq::link::ReadMemory(l, d); }, 400 * 10 + 20,
     400 * 44 + 9},
    {"Write Memory", [](SerialLink& l, Document& d) { return zq::link::WriteMemory(l, d); },
     10 + 400 * 10 + 20, 10 + 400 * 46 + 9},
    {"Read Settings", [](SerialLink& l, Document& d) { return zq::link::ReadSettings(l, d); }, 14 * 10 + 20,
     15 * 44 + 9},
    {"Write Settings", [](SerialLink& l, Document& d) { return zq::link::WriteSettings(l, d); },
     14 * 10 + 3 * 100 + 20, 10 + 17 * 46 + 9},
};

double CpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

bool Bench(int baud, bool& goalsMet) {
    QProcess radio;
    const QString device = StartRadio(radio, QStringLiteral(ZQ318_RADIO_PATH), baud);
    if (device.isEmpty()) {
        std::fprintf(stderr, "transferbench: the virtual radio did not start\n");
        return false;
    }
    SerialLink link;
    link.setPortName(device);
    if (const Result opened = link.open(); !opened.ok()) {
        std::fprintf(stderr, "transferbench: %s\n", qPrintable(opened.detail));
        return false;
    }
    // Where the time beyond the floor goes: the overshoot of one pause and one exchange on its own.
    {
        constexpr int kRounds = 200;
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < kRounds; ++i)
            link.Wait(10);
        const double waitOvershootUs = (double(clock.nsecsElapsed()) / kRounds - 10e6) / 1e3;
        clock.restart();
        for (int i = 0; i < kRounds; ++i)
            link.SendCommand(QStringLiteral("KV~F0200R"));
        const double exchangeUs =
            double(clock.nsecsElapsed()) / kRounds / 1e3 - (baud > 0 ? 44 * 10.0 * 1e6 / baud : 0.0);
        std::printf(
            "(%s: a 10 ms pause overshoots by %.0f us; an exchange takes %.0f us beyond its characters)\n",
            baud > 0 ? qPrintable(QString::number(baud)) : "instant", waitOvershootUs, exchangeUs);
    }
    const double ratioGoal = baud > 0 ? 1.01 : 1.02;
    for (const Transfer& transfer : kTransfers) {
        Document document;
        const double cpuBefore = CpuSeconds();
        QElapsedTimer clock;
        clock.start();
        const Result result = transfer.run(link, document);
        const double wallMs = double(clock.nsecsElapsed()) / 1e6;
        const double cpuMs = (CpuSeconds() - cpuBefore) * 1000.0;
        const double floorMs =
            transfer.pausesMs + (baud > 0 ? transfer.radioChars * 10.0 * 1000.0 / baud : 0.0);
        const double ratio = wallMs / floorMs;
        const double cpuShare = 100.0 * cpuMs / wallMs;
        const bool met = result.ok() && ratio <= ratioGoal && cpuShare <= 2.0;
        goalsMet = goalsMet && met;
        std::printf("%-15s %-9s %9.1f %9.1f %7.4f %7.2f%%  %s\n", transfer.name,
                    baud > 0 ? qPrintable(QString::number(baud)) : "instant", wallMs, floorMs, ratio,
                    cpuShare, result.ok() ? (met ? "ok" : "MISSED") : qPrintable(result.message()));
        std::fflush(stdout);
    }
    link.close();
    radio.terminate();
    radio.waitForFinished(5000);
    return true;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    std::printf("%-15s %-9s %9s %9s %7s %8s\n", "transfer", "line", "wall ms", "floor ms", "ratio", "cpu");
    bool goalsMet = true;
    for (int baud : {0, 9600})
        if (!Bench(baud, goalsMet)) return 2;
    std::printf("goals: ratio <= 1.02 instant, <= 1.01 at 9600 baud; client CPU <= 2%% of wall: %s\n",
                goalsMet ? "met" : "missed");
    return goalsMet ? 0 : 1;
}
