#pragma once
// Data sets and file helpers for the file and command-line tests.
#include "model/document.h"

namespace zq::testdata {

// Sets `channel` in use from the numbers of its cells in column order (the blank and name cells are
// ignored) and its name, with the texts the decoder would show for it.
void SetChannel(model::Document& document, int channel, const std::array<double, 15>& numbers,
                const char* name);
// The demonstration clone file under examples/, opened as at start-up.
void FillDemoData(model::Document& document);
// Every channel 0..199 in use, with varied values.
void FillAllChannels(model::Document& document);

QByteArray ReadFile(const QString& path); // empty when unreadable
bool WriteFile(const QString& path, const QByteArray& bytes);

} // namespace zq::testdata
