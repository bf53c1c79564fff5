#include "recoverykeeper.h"

#include "files/clonefile.h"
#include "messageboxes.h"
#include "model/document.h"
#include "model/tables.h"
#include "stringtable.h"

#include <QDir>

namespace zq::ui {

using model::Outcome;
using model::Result;

RecoveryKeeper::RecoveryKeeper(model::Document& document, MessageBoxes& boxes, const StringTable& strings,
                               QObject* parent)
    : QObject(parent), document_(document), boxes_(boxes), strings_(strings) {
    // Saved, or replaced after the unsaved-changes prompt: the recovered data need no keeping.
    connect(&document_, &model::Document::dataChangedFlagChanged, this, [this](bool changed) {
        if (!changed) forgetCurrent();
    });
}

QString RecoveryKeeper::text(int id) const {
    return strings_.text(id).value_or(QString());
}

files::RecoveryFile RecoveryKeeper::keep(const QString& reason) {
    if (givenUp_ || !document_.DataChanged()) return {};
    files::RecoveryFile kept = files::SaveRecoveryFile(document_, reason);
    if (kept.result.ok()) {
        forgetCurrent();
        current_ = kept.path;
    }
    return kept;
}

QString RecoveryKeeper::note(const files::RecoveryFile& kept) const {
    if (kept.result.ok() && kept.path.isEmpty()) return QString();
    if (kept.result.ok()) return text(1305).arg(QDir::toNativeSeparators(kept.path));
    return text(1306).arg(kept.result.detail);
}

void RecoveryKeeper::offer() {
    const QString path = files::NewestRecoveryFile();
    if (path.isEmpty()) return;
    MessageRequest box(text(1301).arg(QDir::toNativeSeparators(path)), text(1300),
                       MessageButtons::OpenDiscardLater, MessageIcon::Question, MessageAnswer::Open);
    box.buttonTexts = {text(1302), text(1303), text(1304)};
    switch (boxes_.show(box)) {
    case MessageAnswer::Open:
        openFile(path);
        break;
    case MessageAnswer::Discard:
        files::DeleteRecoveryFile(path);
        break;
    default:
        break;
    }
}

// As the start-up open: the header says which model the data belong to. The data then have no file
// of their own and count as unsaved, so that Save asks for a name and closing asks first.
bool RecoveryKeeper::openFile(const QString& path) {
    const files::CloneReadResult read = files::ReadCloneFile(path);
    if (!read.result.ok()) {
        ShowFailure(boxes_, read.result);
        return false;
    }
    const int variant = document_.ModelVariant();
    const bool codeA = document_.CloneCodeA();
    document_.setModelVariant(read.image.variant);
    document_.setCloneCodeA(read.image.cloneCodeA);
    if (const Result applied = files::ApplyCloneImage(document_, read.image); !applied.ok()) {
        document_.setModelVariant(variant);
        document_.setCloneCodeA(codeA);
        ShowFailure(boxes_, applied);
        return false;
    }
    document_.setCurrentFilePath(QString());
    document_.setDataChanged(true);
    forgetCurrent();
    current_ = path;
    givenUp_ = false;
    return true;
}

void RecoveryKeeper::giveUp() {
    givenUp_ = true;
    forgetCurrent();
}

void RecoveryKeeper::forgetCurrent() {
    if (current_.isEmpty()) return;
    files::DeleteRecoveryFile(current_);
    current_.clear();
}

} // namespace zq::ui
