#pragma once
// The File menu's commands on the document: New, Open, Save, Save As, the CSV import and export,
// the channel lists in CHIRP's layout, and the unsaved-changes prompt that New, Open and closing
// the window ask first.
#include "model/outcome.h"
#include "stringtable.h"

#include <QObject>

namespace zq::model {
class Document;
}

namespace zq::ui {

class FileDialogs;
class MessageBoxes;

class FileCommands : public QObject {
    Q_OBJECT
public:
    FileCommands(model::Document& document, MessageBoxes& boxes, FileDialogs& dialogs,
                 const StringTable& strings = StringTable(), QObject* parent = nullptr);

    // The unsaved-changes prompt: false when the user cancels. Yes saves first and goes on
    // whatever the save's outcome, a cancelled file dialog included; `saveWanted` tells whether
    // Yes was the answer.
    bool mayClose(bool* saveWanted = nullptr);

public Q_SLOTS:
    void newFile();
    void open();
    void save();
    void saveAs();
    void importCsv();
    void exportCsv();
    // CHIRP's layout. A cancelled dialog does nothing; what a row or channel could not carry over
    // is listed in one box. The import is an edit (DataChanged); the export leaves the document's
    // file and flag as they are.
    void importChirpCsv();
    void exportChirpCsv();

Q_SIGNALS:
    // The CSV import has no trap: any failure, a cancelled dialog included, ends the program. A file
    // too large to be a channel list is refused unread with "Data Error" instead.
    void fatal(const zq::model::Result& result);
    // A CSV import (either layout) replaced the channels.
    void imported();

private:
    void writeCloneFile(const QString& path);

    model::Document& document_;
    MessageBoxes& boxes_;
    FileDialogs& dialogs_;
    StringTable strings_;
};

} // namespace zq::ui
