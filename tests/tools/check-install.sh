#!/usr/bin/env bash
# check-install.sh BUILD SOURCE: installs BUILD into a directory of its own and uses what is there.
set -euo pipefail
build=$1 source=$2
tree="$build/tests/installed"
rm -rf "$tree" "$build/tests/installed-minimalhost"
cmake --install "$build" --prefix "$tree" >/dev/null

"$tree/bin/panelhost" --version
"$tree/bin/panelhost" info
"$tree/bin/panelhost" check "$tree/share/lcdfactorymode" --strict

# A project of its own finds the SDK by its package and gives a host that runs the installed component.
[ -n "$(sed -n 's/^LCD_SANITIZE:STRING=//p' "$build/CMakeCache.txt")" ] && exit 0
cmake -S "$source/docs/examples/minimalhost" -B "$build/tests/installed-minimalhost" -G Ninja \
    -DCMAKE_PREFIX_PATH="$tree" >/dev/null
cmake --build "$build/tests/installed-minimalhost" >/dev/null
component=$(find "$tree" -name liblcdfactorymodeimpl.so)
"$build/tests/installed-minimalhost/minimalhost" "$component" --once
