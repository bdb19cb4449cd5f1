#!/usr/bin/env bash
# check-races.sh BUILD: in BUILD, a build with the thread sanitizer, tst_stress finds no race, and it finds one that is
# planted in a copy of the component: a report stores the links of the net ports without the lock.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "$1")
unset LD_PRELOAD # for the compiler
export QT_QPA_PLATFORM=offscreen QT_LOGGING_TO_CONSOLE=1 TSAN_OPTIONS="halt_on_error=1:suppressions=$PWD/tests/support/tsan.supp"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# stress [LIBRARY]: runs the test with Qt's locks made visible.
stress() {
    LD_PRELOAD="$build/tests/qtsynchronization.so${1:+ $1}" "$build/tests/tst_stress" >"$scratch/log" 2>&1
}

if ! stress; then
    cat "$scratch/log"
    echo "check-races: tst_stress failed" >&2
    exit 1
fi
grep -E 'LCD_PROOF_SEED|actions' "$scratch/log"

locker='        const QMutexLocker locker(&linkMutex);
'
swap='        return TakenLinks{links, std::exchange(portLinks, links)};'
tools/mutate "$build" --plant netporttestbiz.cpp "$locker$swap" "$swap" --library "$scratch/liblcdfactorymodeimpl.so"
if LCD_PROOF_LENGTH=short stress "$scratch/liblcdfactorymodeimpl.so" || ! grep -q 'ThreadSanitizer: data race' "$scratch/log" ||
    ! grep -q 'NetPortTestBiz::Impl::takeLinks' "$scratch/log"; then
    cat "$scratch/log"
    echo "check-races: the planted race isn't found" >&2
    exit 1
fi
echo "no race; a planted race is found"
