#!/usr/bin/env bash
# check-includes.sh DIR: a folder of host/ includes only headers of itself and of the folders above it in the table
# "panelhost" of docs/architecture.md, so there is no cycle. Every folder of host/ is in that table. No source reaches a
# header of another library by a path with "..".
set -euo pipefail
cd "$1"
status=0

# The folders in the order of the table, such as "diagnostics". A subfolder has the rank of its folder.
declare -A rank
count=0
while read -r folder; do
    count=$((count + 1))
    rank[$folder]=${rank[$folder]:-$count}
done < <(sed -nE 's/^\| `([a-z]+)(\/[a-z]+)?\/`.*/\1/p' <(sed -n '/^## panelhost/,/^## /p' docs/architecture.md))

includes=0
while IFS=: read -r file line text; do
    from=${file#host/}
    from=${from%%/*}
    header=${text#*\"}
    header=${header%%\"*}
    to=${header%%/*}
    [[ $file == host/*/* && $header == */* && -e host/$header && $from != "$to" ]] || continue
    includes=$((includes + 1))
    if ((${rank[$to]:-0} == 0 || ${rank[$to]:-0} >= ${rank[$from]:-0})); then
        echo "$file:$line: host/$from includes $header, expected a header of a folder above \"$from\" in docs/architecture.md"
        status=1
    fi
done < <(grep -rnE '^#include "' host --include='*.h' --include='*.cpp')

while IFS=: read -r file line text; do
    echo "$file:$line: $text, expected a path that the include directories of the library lead to"
    status=1
done < <(grep -rnE '^ *# *include "[^"]*\.\./' host pages framework sdk --include='*.h' --include='*.cpp')

for folder in host/*/; do
    if [ -z "${rank[$(basename "$folder")]:-}" ]; then
        echo "docs/architecture.md: the table of the folders of host/ lacks $folder"
        status=1
    fi
done

((count > 10 && includes > 50)) || { echo "found only $count folders and $includes includes"; exit 1; }
exit "$status"
