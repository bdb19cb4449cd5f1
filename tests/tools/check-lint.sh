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
    printf '{\n  "directory": "%s",\n  "command": "c++ -std=c++17 -c %s.cpp",\n  "file": "%s/%s.cpp"\n},\n' \
        "$work" "$file" "$work" "$file"
done | sed '1s/^/[/; $s/,$/]/' >"$work/compile_commands.json"

"$source/tools/lint" "$work" "$work/clean.cpp"
expect() {
    local status=0 output
    output=$("$source/tools/lint" "$work" "$work/$1.cpp") || status=$?
    [ "$status" -eq 1 ] && grep -q "$2" <<<"$output" || { echo "$1: status $status; $output"; exit 1; }
}
expect clang-tidy 'modernize-use-nullptr'
expect clazy-standalone 'Wclazy-rule-of-two-soft'

# A source that isn't compiled on its own can't be checked.
cp "$work/clean.cpp" "$work/unlisted.cpp"
status=0
output=$("$source/tools/lint" "$work" "$work/unlisted.cpp" 2>&1) || status=$?
[ "$status" -eq 2 ] && grep -q "unlisted.cpp isn't compiled on its own in $work" <<<"$output" ||
    { echo "unlisted source: status $status; $output"; exit 1; }

# clang can't read a precompiled header of GCC.
pch=$work/pch
mkdir "$pch"
echo 'int precompiled() { return 1; }' >"$pch/a.cpp"
printf '[{\n  "directory": "%s",\n  "command": "c++ -std=c++17 %s %s/cmake_pch.hxx -c a.cpp",\n  "file": "%s/a.cpp"\n}]\n' \
    "$pch" "-Winvalid-pch -include" "$pch" "$pch" >"$pch/compile_commands.json"
cp "$source/.clang-tidy" "$pch"
"$source/tools/lint" "$pch" "$pch/a.cpp"

# Sources with the same options are checked as one unit, and findings are told at their own lines. a.cpp and
# b.cpp have a constant in common and don't go into the same unit.
joined=$work/joined
mkdir "$joined"
printf '\n\nconstexpr int Limit = 1;\nint *first() { return 0; }\n' >"$joined/a.cpp"
printf 'constexpr int Limit = 2;\nint second(const int *p) { return p ? Limit : *p; }\n' >"$joined/b.cpp"
printf '\nstruct Copied { Copied(); Copied(const Copied &); };\nvoid assign(Copied &to, const Copied &from) { to = from; }\n' \
    >"$joined/c.cpp"
for file in a b c; do
    printf '{\n  "directory": "%s",\n  "command": "c++ -std=c++17 -o %s.o -c %s",\n  "file": "%s"\n},\n' \
        "$joined" "$file" "$joined/$file.cpp" "$joined/$file.cpp"
done | sed '1s/^/[/; $s/,$/]/' >"$joined/compile_commands.json"
cp "$source/.clang-tidy" "$joined"
expect_joined() {
    local status=0 output
    output=$("$source/tools/lint" "$joined" "$joined" 2>&1) || status=$?
    [ "$status" -eq 1 ] || { echo "joined sources: status $status; $output"; exit 1; }
    for finding in "$@"; do
        grep -qE "^$joined/$finding" <<<"$output" || { echo "joined sources: no $finding in: $output"; exit 1; }
    done
}
expect_joined 'a\.cpp:4:23: .*modernize-use-nullptr' 'b\.cpp:2:.*NullDereference' 'c\.cpp:3:47: .*rule-of-two-soft'

# Joined, these two don't compile; each alone does and has no finding.
rm "$joined/c.cpp"
for file in a b; do
    printf 'int %s();\nnamespace { int helper() { return 3; } }\nint %s() { return helper(); }\n' "$file" "$file" >"$joined/$file.cpp"
done
touch "$joined/c.cpp"
"$source/tools/lint" "$joined" "$joined"
