#pragma once
// The window asks this interface for file names, so that tests answer without a person.
#include <QString>
#include <QStringList>

class QWidget;

namespace zq::ui {

struct FileRequest {
    enum class Kind { Open, Save };
    Kind kind = Kind::Open;
    QString filter; // Qt filter string: "Korvex ZQ-318 Clone Files (*.318);;All Files (*.*)"
    bool operator==(const FileRequest&) const = default;
};

class FileDialogs {
public:
    virtual ~FileDialogs() = default;
    // The chosen path; empty when the dialog was cancelled.
    virtual QString choose(const FileRequest& request) = 0;
};

// Open dialogs need an existing file and hide the read-only box; save dialogs ask before
// replacing a file. Neither changes the process's current directory.
class QtFileDialogs : public FileDialogs {
public:
    explicit QtFileDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    void setParent(QWidget* parent) { parent_ = parent; }
    QString choose(const FileRequest& request) override;

private:
    QWidget* parent_;
};

// Records the requests and answers from a script; an exhausted script cancels.
class ScriptedFileDialogs : public FileDialogs {
public:
    QString choose(const FileRequest& request) override {
        asked.append(request);
        return answers.isEmpty() ? QString() : answers.takeFirst();
    }
    QList<FileRequest> asked;
    QStringList answers;
};

QString CloneFileFilter(); // "Korvex ZQ-318 Clone Files (*.318)" + "All Files (*.*)"
QString CsvFileFilter();   // "CSV Files (*.csv)" + "All Files (*.*)"

} // namespace zq::ui
