#!/usr/bin/env bash
# check-format.sh DIR: fails when clang-format would change a source file of DIR. Without clang-format the test is
# skipped.
set -euo pipefail
cd "$1"
command -v clang-format >/dev/null || { echo "Skipped: clang-format isn't installed (tools/setup lint)."; exit 77; }
find framework sdk pages host tests benchmarks docs \( -name "*.cpp" -o -name "*.h" \) -print0 | xargs -0 clang-format --dry-run -Werror
