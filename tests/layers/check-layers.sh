#!/bin/sh
# The libraries depend only downward: ui on files and link, files and link on model, and nothing in
# model, files or link on widgets or on its neighbour. Prints every include that breaks this.
# Usage: check-layers.sh SOURCE_DIR
src=${1:?usage: check-layers.sh SOURCE_DIR}/src
status=0
# forbid FOLDER PATTERN WHY
forbid() {
    found=$(grep -rnE "^[[:space:]]*#[[:space:]]*include[[:space:]]*[<\"]($2)" "$src/$1" 2>/dev/null)
    if [ -n "$found" ]; then
        printf '%s\n' "$found" | sed "s|^$src/||; s|\$|   ($3)|"
        status=1
    fi
}
forbid model 'link/|files/|ui/|cli/|radio/|Qt(Widgets|Gui|SerialPort)|QWidget|QSerialPort' "model sees QtCore only"
forbid files 'link/|ui/|cli/|radio/|Qt(Widgets|Gui|SerialPort)|QWidget|QSerialPort' "files sees model and QtCore only"
forbid link 'files/|ui/|cli/|Qt(Widgets|Gui)|QWidget' "link sees model, QtCore and QtSerialPort only"
forbid cli 'ui/|Qt(Widgets|Gui)|QWidget' "the command-line tool has no window"
[ "$status" -eq 0 ] && echo "every include runs downward"
exit "$status"
