#include "settingscontrols.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QVariant>

namespace zq::ui::settings {

QCheckBox* makeCheck(QWidget* parent, const QString& name, const QString& caption) {
    auto* box = new QCheckBox(caption, parent);
    box->setObjectName(name);
    return box;
}

QComboBox* makeCombo(QWidget* parent, const QString& name, const QStringList& entries) {
    auto* box = new QComboBox(parent);
    box->setObjectName(name);
    box->setEditable(true);
    // A typed text never becomes a new list entry, and nothing completes behind the user's back.
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr);
    box->addItems(entries);
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return box;
}

QLabel* makeLabel(QWidget* parent, const QString& caption, const QString& name) {
    auto* label = new QLabel(caption, parent);
    if (!name.isEmpty()) label->setObjectName(name);
    return label;
}

void nameArrayMember(QWidget* widget, const QString& name, int index) {
    widget->setObjectName(name + QLatin1Char('_') + QString::number(index));
    widget->setProperty("index", index);
}

void showComboIndex(QComboBox* box, int index) {
    if (index >= 0 && index < box->count()) {
        box->setCurrentIndex(index);
        box->setEditText(box->itemText(index));
    } else {
        box->setCurrentIndex(-1);
        box->setEditText(QString());
    }
}

int comboIndexOfText(const QComboBox* box, const QString& text) {
    const QString typed = text.trimmed();
    if (typed.isEmpty()) return -1;
    for (int i = 0; i < box->count(); ++i) {
        if (box->itemText(i).trimmed() == typed) return i;
    }
    return -1;
}

void onComboEdits(QObject* context, QComboBox* box, std::function<void(int)> chosen,
                  std::function<void(int)> typed) {
    QObject::connect(box, &QComboBox::activated, context, [box, chosen = std::move(chosen)](int index) {
        if (index >= 0 && index < box->count()) chosen(index);
    });
    // textEdited, unlike editTextChanged, fires only for the user's typing, never when a chosen
    // entry or a reload puts its text into the box.
    QObject::connect(
        box->lineEdit(), &QLineEdit::textEdited, context,
        [box, typed = std::move(typed)](const QString& text) { typed(comboIndexOfText(box, text)); });
}

} // namespace zq::ui::settings
