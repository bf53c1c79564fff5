#include "filecommands.h"

#include "filedialogs.h"
#include "files/chirpcsv.h"
#include "files/clonefile.h"
#include "files/csvexchange.h"
#include "messageboxes.h"
#include "model/document.h"

namespace zq::ui {

using model::Outcome;
using model::Result;

FileCommands::FileCommands(model::Document& document, MessageBoxes& boxes, FileDialogs& dialogs,
                           const StringTable& strings, QObject* parent)
    : QObject(parent), document_(document), boxes_(boxes), dialogs_(dialogs), strings_(strings) {}

bool FileCommands::mayClose(bool* saveWanted) {
    if (saveWanted) *saveWanted = false;
    if (!files::NeedsSavePrompt(document_)) return true;
    switch (boxes_.show(SaveChangesBox())) {
    case MessageAnswer::Cancel:
        return false;
    case MessageAnswer::Yes:
        if (saveWanted) *saveWanted = true;
        save();
        return true;
    default:
        return true;
    }
}

void FileCommands::writeCloneFile(const QString& path) {
    ShowFailure(boxes_, files::SaveCloneFile(document_, path));
}

void FileCommands::newFile() {
    if (!mayClose()) return;
    files::NewDocument(document_);
    document_.setDataChanged(false);
}

void FileCommands::open() {
    if (!mayClose()) return;
    const QString path = dialogs_.choose({FileRequest::Kind::Open, CloneFileFilter()});
    if (path.isEmpty()) return;
    ShowFailure(boxes_, files::OpenCloneFile(document_, path));
}

void FileCommands::save() {
    QString path = document_.CurrentFilePath();
    if (path.isEmpty()) {
        path = dialogs_.choose({FileRequest::Kind::Save, CloneFileFilter()});
        if (path.isEmpty()) return;
    }
    writeCloneFile(path);
}

void FileCommands::saveAs() {
    const QString path = dialogs_.choose({FileRequest::Kind::Save, CloneFileFilter()});
    if (path.isEmpty()) return;
    writeCloneFile(path);
}

void FileCommands::importCsv() {
    const QString path = dialogs_.choose({FileRequest::Kind::Open, CsvFileFilter()});
    if (path.isEmpty()) {
        Q_EMIT fatal(Result::fail(Outcome::Fatal, QStringLiteral("Cancel was selected.")));
        return;
    }
    const Result result = files::ImportCsv(document_, path);
    // A file refused unread for its size was never part of the import's failures: it says so and
    // changes nothing.
    if (result.outcome == Outcome::DataError) {
        ShowFailure(boxes_, result);
        return;
    }
    if (!result.ok()) {
        Q_EMIT fatal(result.outcome == Outcome::Fatal ? result
                                                      : Result::fail(Outcome::Fatal, result.message()));
        return;
    }
    Q_EMIT imported();
}

void FileCommands::exportCsv() {
    const QString path = dialogs_.choose({FileRequest::Kind::Save, CsvFileFilter()});
    if (path.isEmpty()) return;
    ShowFailure(boxes_, files::ExportCsv(document_, path));
}

namespace {

// What an import or export could not carry over, in one box under `summary`; none when it carried
// everything. The lines are those zq318 prints.
void ShowChirpReports(MessageBoxes& boxes, const StringTable& strings, int title, const QString& summary,
                      const files::ChirpOutcome& outcome) {
    const QStringList lines = outcome.lines();
    if (lines.isEmpty()) return;
    boxes.show(ListBox(strings, strings.string(title), summary, lines));
}

QString CountedText(const StringTable& strings, int one, int many, int count) {
    return count == 1 ? strings.string(one) : strings.string(many).arg(count);
}

} // namespace

void FileCommands::importChirpCsv() {
    const QString path = dialogs_.choose({FileRequest::Kind::Open, strings_.string(text::kChirpFileFilter)});
    if (path.isEmpty()) return;
    const files::ChirpOutcome outcome = files::ImportChirpCsv(document_, path);
    if (!outcome.result.ok()) {
        ShowFailure(boxes_, outcome.result);
        return;
    }
    ShowChirpReports(
        boxes_, strings_, text::kChirpImportTitle,
        CountedText(strings_, text::kOneChannelImported, text::kChannelsImported, outcome.channels), outcome);
    if (outcome.channels > 0) Q_EMIT imported();
}

void FileCommands::exportChirpCsv() {
    const QString path = dialogs_.choose({FileRequest::Kind::Save, strings_.string(text::kChirpFileFilter)});
    if (path.isEmpty()) return;
    const files::ChirpOutcome outcome = files::ExportChirpCsv(document_, path);
    if (!outcome.result.ok()) {
        ShowFailure(boxes_, outcome.result);
        return;
    }
    ShowChirpReports(
        boxes_, strings_, text::kChirpExportTitle,
        CountedText(strings_, text::kOneChannelExported, text::kChannelsExported, outcome.channels), outcome);
}

} // namespace zq::ui
