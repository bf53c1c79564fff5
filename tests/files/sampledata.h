#pragma once
// Data sets and file helpers for the file and command-line tests.
#include "model/document.h"

#include <map>

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

// Files a user may name by mistake. Huge: `valid` followed by zeros up to 100 MB (sparse, quick to
// make), which the readers would take whole if they did not look at the size; BadUtf8: 419 lines of 32
// bytes that are no UTF-8; Unreadable: `valid` with no permissions; Missing: nothing at all.
enum class Hostile { Empty, Folder, Fifo, LinkToFifo, Huge, Garbage, BadUtf8, Missing, Unreadable };
bool MakeHostile(Hostile kind, const QString& path, const QByteArray& valid);

// What a folder holds, walked through its subfolders: for each entry (by path relative to the
// folder) the SHA-256 of a regular file, or what else it is ("folder", "fifo", "device", "link to X").
std::map<QString, QString> Snapshot(const QString& folder);

} // namespace zq::testdata
