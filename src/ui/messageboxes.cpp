#include "messageboxes.h"

#include "files/clonefile.h"
#include "model/tables.h"
#include "stringtable.h"

#include <QMessageBox>
#include <QPushButton>

namespace zq::ui {

namespace {

QMessageBox::StandardButton toStandard(MessageAnswer answer) {
    switch (answer) {
    case MessageAnswer::Ok:
        return QMessageBox::Ok;
    case MessageAnswer::Cancel:
        return QMessageBox::Cancel;
    case MessageAnswer::Yes:
        return QMessageBox::Yes;
    case MessageAnswer::No:
        return QMessageBox::No;
    case MessageAnswer::Open:
    case MessageAnswer::Discard:
    case MessageAnswer::Later:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon toIcon(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::None:
        return QMessageBox::NoIcon;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Warning:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

// Open, Discard and Later: buttons of the box's own.
MessageAnswer showOpenDiscardLater(QMessageBox& box, const MessageRequest& request) {
    const QStringList& texts = request.buttonTexts;
    QPushButton* open = box.addButton(texts.value(0, QStringLiteral("Open")), QMessageBox::AcceptRole);
    QPushButton* discard =
        box.addButton(texts.value(1, QStringLiteral("Discard")), QMessageBox::DestructiveRole);
    QPushButton* later = box.addButton(texts.value(2, QStringLiteral("Later")), QMessageBox::RejectRole);
    box.setEscapeButton(later);
    box.setDefaultButton(request.defaultButton == MessageAnswer::Open      ? open
                         : request.defaultButton == MessageAnswer::Discard ? discard
                                                                           : later);
    box.exec();
    if (box.clickedButton() == open) return MessageAnswer::Open;
    if (box.clickedButton() == discard) return MessageAnswer::Discard;
    return MessageAnswer::Later;
}

} // namespace

MessageAnswer QtMessageBoxes::show(const MessageRequest& request) {
    QMessageBox box(toIcon(request.icon), request.title, request.text, QMessageBox::NoButton, parent_);
    if (!request.detail.isEmpty()) {
        box.setInformativeText(request.detail);
        // A device path or a command can be copied from the box into a terminal.
        box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    switch (request.buttons) {
    case MessageButtons::OpenDiscardLater:
        return showOpenDiscardLater(box, request);
    case MessageButtons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case MessageButtons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case MessageButtons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    }
    box.setDefaultButton(toStandard(request.defaultButton));
    if (!request.details.isEmpty()) box.setDetailedText(request.details);
    const int pressed = box.exec();
    switch (pressed) {
    case QMessageBox::Yes:
        return MessageAnswer::Yes;
    case QMessageBox::No:
        return MessageAnswer::No;
    case QMessageBox::Cancel:
        return MessageAnswer::Cancel;
    case QMessageBox::Ok:
        return MessageAnswer::Ok;
    default:
        // Escape or the close button: the box's way out.
        return request.buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Cancel;
    }
}

MessageRequest ErrorBox(const QString& message, const QString& detail) {
    return {message, QStringLiteral("ERROR"), MessageButtons::Ok, MessageIcon::Critical, MessageAnswer::Ok,
            detail};
}

MessageRequest FatalErrorBox(const QString& detail) {
    return {QStringLiteral("Run-time error\r\n") + detail, model::AppTitle(), MessageButtons::Ok,
            MessageIcon::Critical, MessageAnswer::Ok};
}

MessageRequest ConfirmBox(const QString& title, const QString& warning, const QString& question) {
    return {warning + QStringLiteral("\r\n") + question, title, MessageButtons::OkCancel,
            MessageIcon::Warning, MessageAnswer::Cancel};
}

MessageRequest SaveChangesBox() {
    return {files::SavePromptText(), files::SavePromptTitle(), MessageButtons::YesNoCancel,
            MessageIcon::Question, MessageAnswer::Yes};
}

MessageRequest ListBox(const StringTable& strings, const QString& title, const QString& summary,
                       const QStringList& lines, MessageIcon icon) {
    const QString lineEnd = QStringLiteral("\r\n");
    QString text = summary;
    if (!lines.isEmpty()) text += lineEnd + lineEnd + lines.mid(0, kListBoxLines).join(lineEnd);
    MessageRequest request{text, title, MessageButtons::Ok, icon, MessageAnswer::Ok};
    if (lines.size() > kListBoxLines) {
        request.text += lineEnd + strings.string(text::kMoreLines).arg(lines.size() - kListBoxLines);
        request.details = lines.join(QLatin1Char('\n'));
    }
    return request;
}

void ShowFailure(MessageBoxes& boxes, const model::Result& result) {
    if (result.ok() || result.outcome == model::Outcome::Cancelled) return;
    boxes.show(ErrorBox(result.message()));
}

} // namespace zq::ui
