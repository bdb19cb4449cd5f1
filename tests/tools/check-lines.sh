#!/usr/bin/env bash
# check-lines.sh FILE N: fails when FILE has N lines or more.
set -eu
lines=$(wc -l <"$1")
[ "$lines" -lt "$2" ] || { echo "$1 has $lines lines; fewer than $2 were promised"; exit 1; }
