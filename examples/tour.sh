#!/bin/sh
# A short tour of the zelvor tool: one command per family. Usage: tour.sh path/to/zelvor
set -e
zelvor=${1:-zelvor}

run() {
    printf '\n$ zelvor %s\n' "$*"
    "$zelvor" "$@"
}

echo "== The zelvor tool =="
run --tz Europe/Berlin schedule next --weekdays mon-fri --hour 9 --start 2024-03-28 --count 3
run --tz America/New_York resolve --kind this-quarter --business-day --day -1 --at 2024-03-14T15:30:45
run --tz America/New_York resolve --kind this-month --month-offset 1 --week 3 --weekday mon --at 2024-03-14T15:30:45
run decimal 1 / 7 --scale 20
run decimal 19.99 x 3 --locale de_DE
run date add 2024-01-05T10:00 --days 1
run date convert --text 2024-03-05T07:08:09.012
run --json decimal 0.1 + 0.2
echo
