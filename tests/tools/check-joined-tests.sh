#!/usr/bin/env bash
# check-joined-tests.sh SOURCE BUILD: each source tst_NAME.cpp in SOURCE/tests is a test of BUILD. A program with several
# tests says which they are if it isn't run by one of their names, and each of them is a link to the program.
set -euo pipefail
tests=$(realpath "$1")/tests
cd "$2"
status=0

ctest -N | sed -nE 's/^ *Test +#[0-9]+: (tst_[a-z0-9]+)$/\1/p' | sort >joined-tests.known
while read -r name; do
    grep -qx "$name" joined-tests.known || { echo "$name.cpp is no test"; status=1; }
done < <(find "$tests" -name 'tst_*.cpp' -printf '%f\n' | sed 's/\.cpp$//' | sort)
rm joined-tests.known

count=0
for program in tests/*_tests; do
    code=0
    names=$("$program" 2>&1 >/dev/null) || code=$?
    [ "$code" -eq 2 ] || { echo "$program ends with status $code when it is run by its own name"; status=1; }
    while read -r name; do
        count=$((count + 1))
        link=$(find tests -name "$name" -type f -samefile "$program")
        if [ -z "$link" ]; then
            echo "tests/$name is no link to $program"
            status=1
        fi
    done < <(sed -nE 's/^  (tst_[a-z0-9]+)$/\1/p' <<<"$names")
done
[ "$count" -gt 50 ] || { echo "only $count tests share a program"; status=1; }
exit "$status"
