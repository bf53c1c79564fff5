#include "filedialogs.h"

#include <QFileDialog>

namespace zq::ui {

QString QtFileDialogs::choose(const FileRequest& request) {
    if (request.kind == FileRequest::Kind::Open)
        return QFileDialog::getOpenFileName(parent_, QString(), QString(), request.filter);
    return QFileDialog::getSaveFileName(parent_, QString(), QString(), request.filter);
}

QString CloneFileFilter() {
    return QStringLiteral("Korvex ZQ-318 Clone Files (*.318);;All Files (*.*)");
}

QString CsvFileFilter() {
    return QStringLiteral("CSV Files (*.csv);;All Files (*.*)");
}

} // namespace zq::ui
