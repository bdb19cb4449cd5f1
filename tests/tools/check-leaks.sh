#!/usr/bin/env bash
# check-leaks.sh BUILD: runs the tests of the component in BUILD, a build without sanitizers, with the leak detector
# preloaded, and checks that the detector finds a leak that is planted in a copy of the component.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "$1")

detector=$("${CXX:-c++}" -print-file-name=liblsan.so)
[ -e "$detector" ] || { echo "check-leaks: skipped, the compiler has no liblsan.so"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export QT_QPA_PLATFORM=offscreen
# What Qt, fontconfig and the tests' own process keep until its end.
export LSAN_OPTIONS="suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0:exitcode=23:fast_unwind_on_malloc=0"

# has_leaks TEST [LIBRARY]: runs a test. Returns 0 if memory is leaked.
has_leaks() {
    local status=0
    (cd "$scratch" && LD_PRELOAD="$detector${2:+ $2}" "$build/tests/$1" >"$scratch/log" 2>&1) || status=$?
    [ "$status" -eq 0 ] || [ "$status" -eq 23 ] || { cat "$scratch/log"; echo "check-leaks: $1 failed" >&2; exit 1; }
    [ "$status" -eq 23 ]
}

tests=(tst_agetestbiz tst_agetestlinks tst_agetestwidget tst_buttonfunctionbiz tst_callbackguard
    tst_completemachinebuttons tst_completemachinelinks tst_completemachinetbar tst_completemachinetestwidget
    tst_completemachinethreads tst_lateevents tst_loading tst_netporttestbiz tst_tbartestbiz tst_usbporttestbiz)
for test in "${tests[@]}"; do
    if has_leaks "$test"; then
        cat "$scratch/log"
        echo "check-leaks: $test leaks memory" >&2
        exit 1
    fi
done

tools/mutate "$build" --plant tbartestbiz.cpp "delete d;" "" --library "$scratch/liblcdfactorymodeimpl.so"
if ! has_leaks tst_tbartestbiz "$scratch/liblcdfactorymodeimpl.so"; then
    echo "check-leaks: a planted leak isn't found" >&2
    exit 1
fi
echo "${#tests[@]} tests without leaks; a planted leak is found"
