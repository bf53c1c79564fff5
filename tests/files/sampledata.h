#pragma once
// A plausible 2 m data set for tests and the demonstration clone file, and file helpers for tests.
#include "model/document.h"

namespace zq::testdata {

// The numbers of a channel's cells in column order (the blank and name cells are ignored), and its name.
struct ChannelValues {
    std::array<double, 15> numbers;
    const char* name;
};

// Sets `channel` in use from the values, with the texts the decoder would show for it.
void SetChannel(model::Document& document, int channel, const ChannelValues& values);
// Channels, VFO/CALL, dial memories and settings of the demonstration file.
void FillDemoData(model::Document& document);
// Every channel 0..199 in use, with varied values.
void FillAllChannels(model::Document& document);

QByteArray ReadFile(const QString& path); // empty when unreadable
bool WriteFile(const QString& path, const QByteArray& bytes);

} // namespace zq::testdata
