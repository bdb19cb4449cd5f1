#!/usr/bin/env bash
# check-lint.sh SOURCE WORK: in the directory WORK, tools/lint finds nothing in a clean file and something in each of two
# others: nullptr is clang-tidy's affair, the missing assignment operator clazy's.
set -euo pipefail
source=$1 work=$2
rm -rf "$work"
mkdir -p "$work"
cp "$source/.clang-tidy" "$work"
echo 'int clean() { return 1; }' >"$work/clean.cpp"
echo 'int *zero() { return 0; }' >"$work/clang-tidy.cpp"
cat >"$work/clazy-standalone.cpp" <<'END'
struct Copied { Copied(); Copied(const Copied &); };
void assign(Copied &to, const Copied &from) { to = from; }
END
for file in clean clang-tidy clazy-standalone; do
    printf '{"directory": "%s", "command": "c++ -std=c++17 -c %s.cpp", "file": "%s.cpp"},\n' "$work" "$file" "$file"
done | sed '1s/^/[/; $s/,$/]/' >"$work/compile_commands.json"

"$source/tools/lint" "$work" "$work/clean.cpp"
expect() {
    local status=0 output
    output=$("$source/tools/lint" "$work" "$work/$1.cpp") || status=$?
    [ "$status" -eq 1 ] && grep -q "$2" <<<"$output" || { echo "$1: status $status; $output"; exit 1; }
}
expect clang-tidy 'modernize-use-nullptr'
expect clazy-standalone 'Wclazy-rule-of-two-soft'
