#pragma once
// The window's side of keeping unsaved changes: before the program ends with changes unsaved they
// go into a recovery file, and the next start offers to open the newest one. A recovery file opened
// (or written) in this run stays until its data are saved or knowingly given up, so that a crash
// before then loses nothing; a newer one written for the same data replaces it.
#include "files/recovery.h"

#include <QObject>
#include <QString>

namespace zq::model {
class Document;
}

namespace zq::ui {

class MessageBoxes;
class StringTable;

class RecoveryKeeper : public QObject {
    Q_OBJECT
public:
    RecoveryKeeper(model::Document& document, MessageBoxes& boxes, const StringTable& strings,
                   QObject* parent = nullptr);

    // Writes the document to a recovery file named by the time and `reason` when it holds unsaved
    // changes (and they were not given up); the result's path is empty when there was nothing to
    // keep. The run's earlier recovery file is then superseded and deleted.
    files::RecoveryFile keep(const QString& reason);
    // What a box tells under its message about what keep() did; empty when it did nothing.
    QString note(const files::RecoveryFile& kept) const;

    // The start's offer of the newest recovery file: Open, Discard or Later.
    void offer();
    // The user answered No to saving: nothing is kept from now on, and the run's recovery file has
    // served its purpose.
    void giveUp();
    // The recovery file holding this run's unsaved data (opened or written), if any.
    QString currentFile() const { return current_; }

private:
    bool openFile(const QString& path);
    void forgetCurrent();
    QString text(int id) const;

    model::Document& document_;
    MessageBoxes& boxes_;
    const StringTable& strings_;
    QString current_;
    bool givenUp_ = false;
};

} // namespace zq::ui
