#!/usr/bin/env bash
# check-headers.sh BUILD: each public header, those of the SDK and those of the component's single tests, compiles on its
# own with the options of BUILD. These options keep out what Qt had deprecated before 5.14.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "$1")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The command that compiles a source of the component, without its input and output, and without a precompiled header,
# which would include what a header forgets.
source=$PWD/framework/src/libs/lcdfactorymodeimpl/mirelcomp.cpp
command=$(awk -v source="$source" '
    /^ *"command": / { command = $0; gsub(/^ *"command": "|",?$/, "", command) }
    /^ *"file": / { gsub(/^ *"file": "|",?$/, ""); if ($0 == source) { sub(/ -o .*/, "", command); print command; exit } }
' "$build/compile_commands.json" | sed -E 's/ -Winvalid-pch -include [^ ]*cmake_pch\.hxx| -Xclang -include-pch -Xclang [^ ]*| -Xclang -include -Xclang [^ ]*cmake_pch\.hxx//g')
[ -n "$command" ] || { echo "check-headers: $build has no command for $source" >&2; exit 2; }

# compiles SOURCE: checks a source and writes nothing but messages.
compiles() {
    (cd "$build" && eval "$command -I$build/framework/src/libs/lcdfactorymodeimpl/include -fsyntax-only $1" 2>"$1.log")
}
export -f compiles
export build command

{
    find sdk/include -name '*.h' -printf '%P\n'
    find "$build/framework/src/libs/lcdfactorymodeimpl/include" -name '*.h' -printf '%P\n'
} | sort >"$scratch/headers"
while read -r header; do
    printf '#include "%s"\n' "$header" >"$scratch/${header//\//-}.cpp"
done <"$scratch/headers"
status=0
# shellcheck disable=SC2016 # for the inner shell
find "$scratch" -name '*.cpp' -print0 | sort -z |
    xargs -0 -n 1 -P "$(nproc)" bash -c 'compiles "$0" || { cat "$0" "$0.log"; exit 1; }' || status=1

# What must be found.
echo 'inline QString text() { return {}; }' >"$scratch/incomplete.cpp"
printf '#include <QtCore/QString>\nbool empty(const QString &text) { return text == QString::null; }\n' >"$scratch/deprecated.cpp"
sed 's/QString::null/QString()/' "$scratch/deprecated.cpp" >"$scratch/current.cpp"
for wrong in incomplete deprecated; do
    if compiles "$scratch/$wrong.cpp"; then
        echo "check-headers: $wrong code isn't found" >&2
        status=1
    fi
done
compiles "$scratch/current.cpp" || { cat "$scratch/current.cpp.log"; status=1; }
[ "$status" -ne 0 ] || echo "$(wc -l <"$scratch/headers") headers compile on their own"
exit "$status"
