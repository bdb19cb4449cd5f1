#!/usr/bin/env bash
# check-binary.sh CHECK LIBRARY DIRECTORY: compares what the component's library promises to hosts with what
# DIRECTORY (framework/abi) describes. CHECK is one of
#   libraries    the libraries that it needs
#   hardening    how it is linked
#   load         that what it needs at load isn't more than limits.txt says
#   symbols      the functions and classes that it exports
#   qt-symbols   the functions of Qt that it imports, each with the version of Qt that introduced it, at most 5.14
#   description  the layout of its classes and the signatures of its functions (libabigail)
# With UPDATE=1 the lists are written instead of compared.
set -euo pipefail
check=$1 library=$2 directory=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() {
    echo "$*"
    exit 1
}

# compare NAME: compares standard input with the list DIRECTORY/NAME.
compare() {
    LC_ALL=C sort -u >"$scratch/now"
    [ -s "$scratch/now" ] || fail "$library: nothing found to compare with $1"
    if [ "${UPDATE:-}" = 1 ]; then
        cp "$scratch/now" "$directory/$1"
        return
    fi
    diff -u "$directory/$1" "$scratch/now" >"$scratch/difference" ||
        fail "$library differs from framework/abi/$1:
$(cat "$scratch/difference")
If hosts can live with this difference, run 'tools/update-abi' and commit the result."
}

check_libraries() {
    readelf -dW "$library" | sed -nE 's/.*\(NEEDED\).*\[(.*)\]/\1/p' | compare libraries.txt
}

check_hardening() {
    local dynamic segments
    dynamic=$(readelf -dW "$library")
    segments=$(readelf -lW "$library")
    ! grep -q TEXTREL <<<"$dynamic" || fail "$library has text relocations"
    grep -qE 'BIND_NOW|FLAGS_1.*NOW' <<<"$dynamic" || fail "$library isn't linked with -z now"
    grep -q 'FLAGS_1.*NODELETE' <<<"$dynamic" || fail "$library isn't linked with -z nodelete"
    grep -q GNU_RELRO <<<"$segments" || fail "$library isn't linked with -z relro"
    grep -qE 'GNU_STACK .* RW +0x' <<<"$segments" || fail "$library asks for an executable stack"
    ! grep -qE 'LOAD .* RWE ' <<<"$segments" || fail "$library has a segment that is writable and executable"
}

# Each relocation costs time at load, one that looks up a symbol many times as much as another. The size is that of code
# and data in memory.
check_load() {
    local name limit value
    readelf -rW "$library" | grep -oE '\bR_[A-Z0-9_]+' >"$scratch/relocations" || fail "$library has no relocations"
    printf '%s %d\n' relocations "$(wc -l <"$scratch/relocations")" \
        lookups "$(grep -vc _RELATIVE "$scratch/relocations")" \
        bytes "$(size "$library" | awk 'NR == 2 { print $4 }')" >"$scratch/values"
    while read -r name limit; do
        value=$(awk -v name="$name" '$1 == name { print $2 }' "$scratch/values")
        [ -n "$value" ] || fail "$directory/limits.txt: expected relocations, lookups or bytes instead of '$name'"
        ((value <= limit)) || fail "$library has $value $name, the limit is $limit ($directory/limits.txt)"
    done <"$directory/limits.txt"
}

# Inline functions and instances of templates depend on the compiler; the private parts of classes are no promise.
check_symbols() {
    nm -D -C --defined-only "$library" | sed -nE 's/^[0-9a-f]* ([TDBRV]) (.*)$/\2/p' |
        grep -E '^(vtable for |typeinfo for |non-virtual thunk to )?LCD::|^mirel::|^plug(info|init)' |
        grep -vE '::Impl\b|^typeinfo for .*std::' | compare symbols.txt
}

# Debian's packages list each symbol of Qt with the first version that has it.
check_qt_symbols() {
    local known=(/var/lib/dpkg/info/libqt5{core5a,gui5,widgets5,xml5}*.symbols)
    [ -r "${known[0]}" ] || { echo "the lists of Qt's symbols aren't installed"; exit 77; }
    sed -nE 's/^ ([^ ]+@Qt_5) ([0-9.]+).*/\1 \2/p' "${known[@]}" | LC_ALL=C sort -u >"$scratch/known"
    nm -D --undefined-only --with-symbol-versions "$library" | grep -oE '[^ ]+@Qt_5[^ ]*' |
        grep -v '^qt_version_tag@' | LC_ALL=C sort -u >"$scratch/used" # the tag is of the Qt that is installed here
    LC_ALL=C join -v1 "$scratch/used" "$scratch/known" >"$scratch/unknown"
    [ ! -s "$scratch/unknown" ] || fail "$library imports symbols that aren't in Qt 5.14: $(paste -sd ' ' "$scratch/unknown")"
    LC_ALL=C join "$scratch/used" "$scratch/known" >"$scratch/versions"
    awk '{ split($2, v, "."); if (v[1] > 5 || v[2] > 14) print }' "$scratch/versions" >"$scratch/newer"
    [ ! -s "$scratch/newer" ] || fail "$library imports symbols that are newer than Qt 5.14: $(cat "$scratch/newer")"
    # Another compiler inlines other functions of Qt, so the list is not compared, only written for readers.
    if [ "${UPDATE:-}" = 1 ]; then
        sed 's/@Qt_5//' "$scratch/versions" | compare qt-symbols.txt
    fi
}

check_description() {
    command -v abidw >/dev/null || { echo "abigail-tools isn't installed"; exit 77; }
    local described=$directory/lcdfactorymodeimpl.abi now=$scratch/now.abi status=0
    abidw --suppressions "$directory/ours.abignore" --drop-private-types --no-corpus-path --no-comp-dir-path \
        --no-show-locs --no-elf-needed --no-parameter-names --out-file "$now" "$library"
    grep -q '<class-decl' "$now" || fail "$library has no debug information about its classes"
    if [ "${UPDATE:-}" = 1 ]; then
        cp "$now" "$described"
        return
    fi
    # Any result but 0 counts: 4 is a change, 8 an incompatible one, 1 and 2 are errors.
    abidiff --no-show-locs "$described" "$now" >"$scratch/difference" 2>&1 || status=$?
    [ "$status" -eq 0 ] || fail "$library differs from framework/abi, abidiff ended with $status:
$(cat "$scratch/difference")
If hosts can live with this difference, run 'tools/update-abi' and commit the result."
}

case $check in
    libraries) check_libraries ;;
    hardening) check_hardening ;;
    load) check_load ;;
    symbols) check_symbols ;;
    qt-symbols) check_qt_symbols ;;
    description) check_description ;;
    *) fail "no check '$check'" ;;
esac
