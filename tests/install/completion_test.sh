#!/usr/bin/env bash
# Completes zq318 command lines with the installed completion and checks what is offered.
# Usage: completion_test.sh COMPLETION_FILE
set -u
source "$1" || exit 1
cd "$(mktemp -d)" || exit 1
trap 'rm -rf "$PWD"' EXIT
touch radio.318 OLD.318 channels.csv notes.txt
mkdir backups

failures=0
# expect "WORDS..." "OFFERED..." : the offer, sorted, must be exactly the list given
expect() {
    local line=$1 want=$2
    read -r -a COMP_WORDS <<<"$line"
    [[ $line == *" " ]] && COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _zq318
    local got
    got=$(printf '%s\n' "${COMPREPLY[@]}" | sort | tr '\n' ' ')
    got=${got% }
    if [[ $got != "$want" ]]; then
        echo "FAIL: '$line' offered '$got', wanted '$want'"
        failures=$((failures + 1))
    fi
}

expect "zq318 " "backups check detect diff dump export import ports read show verify write"
expect "zq318 --p" "--port"
expect "zq318 --t" "--trace"
expect "zq318 --trace t.txt ve" "verify"
expect "zq318 -q d" "detect diff dump"
expect "zq318 --port 3 wr" "write"
expect "zq318 check " "OLD.318 backups radio.318"
expect "zq318 diff radio.318 " "OLD.318 backups radio.318"
expect "zq318 import " "backups channels.csv"
expect "zq318 import channels.csv --base " "OLD.318 backups radio.318"
expect "zq318 read -o " "OLD.318 backups radio.318"
expect "zq318 export radio.318 -o " "backups channels.csv"
expect "zq318 read --" "--base --help --memory --settings"
expect "zq318 write radio.318 --" "--force --help --memory --settings --verify"
expect "zq318 verify " "OLD.318 backups radio.318"
expect "zq318 verify radio.318 --" "--help --memory --settings"
expect "zq318 check radio.318 --" "--help --strict"
expect "zq318 export radio.318 --format " "chirp zq318"
expect "zq318 import channels.csv --format c" "chirp"
expect "zq318 import -" "--base --format --help -o"
expect "zq318 ports " ""
expect "zq318 backups " ""

# --port offers serial devices only: nothing from the current folder, every offer a device or link.
read -r -a COMP_WORDS <<<"zq318 --port"
COMP_WORDS+=("")
COMP_CWORD=2
_zq318
for offer in "${COMPREPLY[@]}"; do
    if [[ $offer != /dev/* || ! -e $offer ]]; then
        echo "FAIL: --port offered '$offer'"
        failures=$((failures + 1))
    fi
done

[[ $failures -eq 0 ]] && echo "all completions as expected"
exit "$failures"
