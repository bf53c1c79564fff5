#pragma once
// Applies the string table to a window: captions of labels, menus, tabs and other controls come
// from their tags, tooltips from the ids they hold at design time.
#include "stringtable.h"

class QWidget;

namespace zq::ui {

// Each step that finds no string leaves the design-time text in place and the next step runs.
// Text boxes (QLineEdit, QTextEdit, QPlainTextEdit) are left wholly untouched.
// A tab's tag is its tab data in the tab bar; other controls carry theirs in the "tag" property.
void LocaliseForm(QWidget* window, const StringTable& strings);

} // namespace zq::ui
