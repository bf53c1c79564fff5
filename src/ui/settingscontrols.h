#pragma once
// Small builders shared by the two settings pages: controls named as the window's tests and the
// string table expect, and the editable combo boxes that hold a list index.
#include <QString>
#include <QStringList>

#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QObject;
class QWidget;

namespace zq::ui::settings {

QCheckBox* makeCheck(QWidget* parent, const QString& name, const QString& caption);
// An editable combo box without completion, listing `entries` as they are (leading blanks kept).
QComboBox* makeCombo(QWidget* parent, const QString& name, const QStringList& entries);
QLabel* makeLabel(QWidget* parent, const QString& caption, const QString& name = QString());
// Gives a member of a control array its name "<name>_<index>" and its "index" property.
void nameArrayMember(QWidget* widget, const QString& name, int index);

// Shows list entry `index`, or a blank box when the index lies outside the list.
void showComboIndex(QComboBox* box, int index);
// The list entry whose text matches a typed text (leading and trailing blanks ignored), or -1.
int comboIndexOfText(const QComboBox* box, const QString& text);

// Wires a list box the way the settings pages use it: the user choosing list entry `index` calls
// `chosen(index)`; the user typing into the box calls `typed(index)` with the entry the typed text
// names, or -1. Changes made by the program call neither.
void onComboEdits(QObject* context, QComboBox* box, std::function<void(int)> chosen,
                  std::function<void(int)> typed);

} // namespace zq::ui::settings
