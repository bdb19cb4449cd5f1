#!/usr/bin/env bash
# check-other-sdk.sh SOURCE BUILD: builds the component against an SDK made by somebody else, in BUILD/tests/othersdk,
# and lets the minimal host of BUILD load it.
set -euo pipefail
source=$1 build=$2
out="$build/tests/othersdk"
cmake -S "$source" -B "$out" -G Ninja -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS_DEBUG=-O0" \
    -DLCD_SDK_DIR="$source/tests/tools/othersdk" \
    >"$out.log" 2>&1 || { cat "$out.log"; exit 1; }
cmake --build "$out" >"$out.log" 2>&1 || { tail -n 60 "$out.log"; exit 1; }
"$build/tests/minimalhost" "$out/lib/liblcdfactorymodeimpl.so" --once
