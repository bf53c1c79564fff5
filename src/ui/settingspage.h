#pragma once
// What both settings pages share: the document whose working copy of the settings they show and
// store every edit into, the bindings of their check boxes and lists, and their "Read Settings" and
// "Write Settings" buttons.
#include "model/settingscodec.h"

#include <QWidget>
#include <functional>

class QCheckBox;
class QComboBox;
class QPushButton;

namespace zq::model {
class Document;
}

namespace zq::ui {

class SettingsPage : public QWidget {
    Q_OBJECT
public:
    // Sets every control from the document; never marks the data as changed.
    virtual void reload() = 0;
    // A transfer disables the page's buttons; the closings enable them again.
    void setTransferButtonsEnabled(bool enabled);

Q_SIGNALS:
    void readSettingsRequested();
    void writeSettingsRequested();

protected:
    SettingsPage(model::Document& document, const QString& objectName, QWidget* parent);

    // Creates the page's buttons cmbRxData<number> and cmbTxData<number> (where they come in the
    // page's focus order).
    void makeTransferButtons(int number);

    // Runs `step` while the page and the document are brought in step: controls set from the
    // document do not store back, and the document's announcement of a stored change does not
    // reload the page (it is up to date already; the announcement is for the other views).
    void inStep(const std::function<void()>& step);
    // Stores a change of the user's; `edit` says whether it marks the data as changed.
    void store(const std::function<void(model::RadioSettings&)>& change, bool edit);
    // A click stores the tick; `marks` says whether it counts as an edit.
    void bindCheck(QCheckBox* box, bool model::RadioSettings::*value, bool marks = true);
    // Choosing a list entry stores it but is no edit; typing a text stores the entry it names (none
    // leaves the value) and is an edit.
    void bindList(QComboBox* box, int model::RadioSettings::*value);
    // Calls `reload` whenever the document announces `signal`, unless the page itself stored the change.
    template <typename Signal> void followDocument(Signal signal, const std::function<void()>& reload) {
        connect(&document_, signal, this, [this, reload] {
            if (!inStep_) reload();
        });
    }

    model::Document& document_;
    QPushButton* readButton_ = nullptr;
    QPushButton* writeButton_ = nullptr;

private:
    bool inStep_ = false;
};

} // namespace zq::ui
