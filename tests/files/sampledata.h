#pragma once
// Data sets and file helpers for the file and command-line tests.
#include "model/document.h"

namespace zq::testdata {

// The numbers of a channel's cells in column order (the blank and name cells are ignored), and its name.
struct ChannelValues {
    std::array<double, 15> numbers;
    const char* name;
};

// Sets `channel` in use from the values, with the texts the decoder would show for it.
void SetChannel(model::Document& document, int channel, const ChannelValues& values);
// The demonstration clone file under examples/, opened as at start-up.
void FillDemoData(model::Document& document);
// Every channel 0..199 in use, with varied values.
void FillAllChannels(model::Document& document);

QByteArray ReadFile(const QString& path); // empty when unreadable
bool WriteFile(const QString& path, const QByteArray& bytes);

} // namespace zq::testdata
