#!/usr/bin/env bash
# check-screenshots.sh SOURCE BUILD OUT: tools/screenshots writes each picture in docs/images, with the same size, and no
# other one; and each picture is shown by a document.
set -euo pipefail
source=$1 build=$2 out=$3
cd "$source"
rm -rf "$out"
tools/screenshots --build "$build" "$out"
status=0

# Prints the names and the sizes of the pictures in directory $1: bytes 16 to 23 of a PNG file are width and height.
list() {
    for picture in "$1"/*; do
        echo "$(basename "$picture") $(od -An -t u1 -j 16 -N 8 "$picture" | tr -s ' ')"
    done
}
diff <(list docs/images) <(list "$out") || {
    echo "docs/images isn't what tools/screenshots writes"
    status=1
}
for picture in docs/images/*; do
    grep -qF "images/$(basename "$picture")" README.md docs/*.md || {
        echo "no document shows $picture"
        status=1
    }
done
exit "$status"
