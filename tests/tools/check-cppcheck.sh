#!/usr/bin/env bash
# check-cppcheck.sh SOURCE: cppcheck finds nothing in the component, the SDK, the pages and panelhost, but finds the
# mistake in a file that has one. Status 77: it is missing.
set -euo pipefail
cd "$1"
command -v cppcheck >/dev/null || { echo "skipped, cppcheck is missing (tools/setup installs it)"; exit 77; }

check() {
    cppcheck --quiet --std=c++17 --library=qt --enable=warning,performance,portability --inline-suppr \
        --suppress=missingInclude --error-exitcode=1 -j "$(nproc)" -I sdk/include -I host \
        -I framework/src/libs/lcdfactorymodeimpl "$@"
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
echo 'int last() { int a[2] = {1, 2}; return a[2]; }' >"$scratch/outside.cpp"
! check "$scratch/outside.cpp" 2>/dev/null || { echo "cppcheck doesn't find an access outside an array"; exit 1; }
check framework sdk pages host
