#pragma once
// Data sets and file helpers for the file and command-line tests.
#include "model/document.h"

namespace zq::testdata {

inline const QString kDemoFile = QStringLiteral(ZQ_EXAMPLES_DIR "/demo.318");

// Sets `channel` in use from the numbers of its cells in column order (the blank and name cells are
// ignored) and its name, with the texts the decoder would show for it.
void SetChannel(model::Document& document, int channel, const std::array<double, 15>& numbers,
                const char* name);
// Every channel 0..199 in use, with varied values.
void FillAllChannels(model::Document& document);

QByteArray ReadFile(const QString& path); // empty when unreadable
bool WriteFile(const QString& path, const QByteArray& bytes);

} // namespace zq::testdata
