#pragma once
// Every message box of the window goes through this interface, so that tests can assert each box
// and answer it without a person.
#include "model/outcome.h"

#include <QString>
#include <QStringList>
#include <QVector>

class QWidget;

namespace zq::ui {
class StringTable;
}

namespace zq::ui {

// OpenDiscardLater labels its three buttons with the request's buttonTexts; Escape and the close
// button answer Later, which changes nothing.
enum class MessageButtons { Ok, OkCancel, YesNoCancel, OpenDiscardLater };
enum class MessageIcon { None, Information, Question, Warning, Critical };
enum class MessageAnswer { Ok, Cancel, Yes, No, Open, Discard, Later };

struct MessageRequest {
    MessageRequest() = default;
    MessageRequest(QString text, QString title, MessageButtons buttons = MessageButtons::Ok,
                   MessageIcon icon = MessageIcon::None, MessageAnswer defaultButton = MessageAnswer::Ok,
                   QString detail = QString())
        : text(std::move(text)), title(std::move(title)), buttons(buttons), icon(icon),
          defaultButton(defaultButton), detail(std::move(detail)) {}

    QString text;
    QString title;
    MessageButtons buttons = MessageButtons::Ok;
    MessageIcon icon = MessageIcon::None;
    MessageAnswer defaultButton = MessageAnswer::Ok;
    // Shown under the text, which stays the program's own message: what went wrong and what to do.
    QString detail;
    QString details;           // a long list, behind the box's "Show Details..." button
    QStringList buttonTexts{}; // the buttons' labels in the user's language, where the box has its own
    bool operator==(const MessageRequest&) const = default;
};

class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    virtual MessageAnswer show(const MessageRequest& request) = 0;
};

// The real boxes, modal over `parent`.
class QtMessageBoxes : public MessageBoxes {
public:
    explicit QtMessageBoxes(QWidget* parent = nullptr) : parent_(parent) {}
    void setParent(QWidget* parent) { parent_ = parent; }
    MessageAnswer show(const MessageRequest& request) override;

private:
    QWidget* parent_;
};

// Records every box and answers from a script; with the script used up it answers the box's
// default button.
class ScriptedMessageBoxes : public MessageBoxes {
public:
    MessageAnswer show(const MessageRequest& request) override {
        shown.append(request);
        if (answers.isEmpty()) return request.defaultButton;
        return answers.takeFirst();
    }
    QVector<MessageRequest> shown;
    QVector<MessageAnswer> answers;
};

// The common boxes of the program.
// "Data Error", "File Open Error" ... title "ERROR"
MessageRequest ErrorBox(const QString& message, const QString& detail = QString());
MessageRequest FatalErrorBox(const QString& detail); // the run-time error report that ends the program
MessageRequest ConfirmBox(const QString& title, const QString& warning, const QString& question);
MessageRequest SaveChangesBox();
// A summary over a list of lines (differences, reports): the first lines in the box itself,
// every line in its details when there are more.
MessageRequest ListBox(const StringTable& strings, const QString& title, const QString& summary,
                       const QStringList& lines, MessageIcon icon = MessageIcon::Information);
inline constexpr int kListBoxLines = 10;

// The error box of a command that failed; success and a cancelled dialog show nothing.
void ShowFailure(MessageBoxes& boxes, const model::Result& result);

} // namespace zq::ui
