#!/usr/bin/env bash
# check-doxygen.sh SOURCE OUT: Doxygen reads the public headers of the SDK without a warning: each class and each member is
# documented, each documented parameter exists, and each command and reference is understood. Status 77: Doxygen is missing.
set -euo pipefail
source=$1 out=$2
command -v doxygen >/dev/null || { echo "skipped, doxygen is missing (tools/setup test installs it)"; exit 77; }
rm -rf "$out"
mkdir -p "$out"
cd "$source"
doxygen - <<EOF >"$out/log" 2>&1 || { cat "$out/log"; exit 1; }
$(cat docs/Doxyfile)
OUTPUT_DIRECTORY = $out
WARN_LOGFILE = $out/warnings
EOF
if [ -s "$out/warnings" ]; then
    cat "$out/warnings"
    exit 1
fi
pages=$(find "$out/html" -name '*.html' | wc -l)
[ "$pages" -gt 30 ] || { echo "Doxygen wrote only $pages pages"; exit 1; }
