#pragma once
// The port the link talks through: the number 1..14 kept in the port file and chosen in the port
// dialog, or, for this run only, a device named on the command line.
#include "link/portnumbers.h"
#include "model/outcome.h"

#include <QString>

namespace zq::ui {

class PortSettings {
public:
    // Where the number is kept; empty means the program's port file.
    void setFilePath(const QString& path) { filePath_ = path; }
    QString filePath() const;
    // Reads the port file: a missing file or a number outside 1..14 gives port 1. Fatal for a file
    // that cannot be read to its first value.
    model::Result load();
    // Writes the number back. Fatal when the file cannot be written.
    model::Result save() const;

    int number() const { return number_; }
    // A number chosen by hand replaces a device named on the command line.
    void choose(int number);
    void setDeviceOverride(const QString& device) { deviceOverride_ = device; }

    // The device a session opens: the one named for this run, else the port number's. Listing the
    // system's ports takes a while, so this is asked when a session starts.
    QString device() const;

private:
    int number_ = link::kDefaultPortNumber;
    QString deviceOverride_;
    QString filePath_;
};

} // namespace zq::ui
