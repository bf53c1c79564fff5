#pragma once
// A plausible 2 m data set for tests and the demonstration clone file, and file helpers for tests.
#include "model/document.h"

namespace zq::testdata {

struct ChannelValues {
    double frequency;
    int step;     // 0 or 2
    int toneMode; // 0 None, 1 Tone, 3 TSQ, 12 DCS
    int txTone, rxTone, dcs;
    int shift; // 0 None, 1 -, 2 +
    double offset;
    int power; // 0 Low, 1 Mid, 2 High
    int batterySave;
    bool clock, lockOut;
    const char* name;
    bool skip;
};

// Sets channel `channel` in use from the values, with the texts the decoder would show for it.
void SetChannel(model::Document& document, int channel, const ChannelValues& values);
// Channels, VFO/CALL, dial memories and settings of the demonstration file.
void FillDemoData(model::Document& document);
// Every channel 0..199 in use, with varied values (a full file for round trips and timing).
void FillAllChannels(model::Document& document);

QByteArray ReadFile(const QString& path); // empty when unreadable
bool WriteFile(const QString& path, const QByteArray& bytes);

} // namespace zq::testdata
