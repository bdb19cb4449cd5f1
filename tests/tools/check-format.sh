#!/usr/bin/env bash
# check-format.sh DIR: fails when clang-format would change a source file of DIR.
set -euo pipefail
cd "$1"
find framework sdk host tests benchmarks docs -name '*.cpp' -o -name '*.h' | xargs clang-format --dry-run -Werror
