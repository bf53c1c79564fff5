#pragma once
// Menus built from a table, one row per menu, entry or separator in order, so that a new entry is
// one more row. A row's design-time caption is its string id, which the string table replaces.
#include <functional>
#include <initializer_list>

class QMenuBar;

namespace zq::ui {

struct MenuRow {
    enum class Kind { Menu, Entry, Toggle, Separator };
    Kind kind;
    const char* parent; // object name of the menu it belongs to; nullptr for the menu bar
    const char* name;   // its object name (a menu's action carries it too)
    int id = 0;         // its string id
    // What a click runs; an entry without one does nothing. A toggle starts ticked and is told
    // its new tick.
    std::function<void(bool checked)> run = {};
};

void BuildMenus(QMenuBar* bar, std::initializer_list<MenuRow> rows);

} // namespace zq::ui
