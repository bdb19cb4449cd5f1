#!/usr/bin/env bash
# check-packages.sh DIR: packages.txt lists each package once, scripts and documents ask for purposes that it has, and
# ./run asks for nothing that only tests, benchmarks or checks of the sources need.
set -euo pipefail
cd "$1"

fail() {
    echo "$*"
    exit 1
}

purposes=$(sed -n 's/^\[\(.*\)\]$/\1/p' packages.txt)
for purpose in $purposes; do
    [ -n "$(tools/setup --list "$purpose")" ] || fail "[$purpose] lists no package"
done
repeated=$(tools/setup --list $purposes | sort | uniq -d)
[ -z "$repeated" ] || fail "listed for two purposes: $repeated"

# What scripts and documents type. Purposes in variables stand in a list of their own.
used=$(grep -hoE 'tools/setup( +[a-z0-9]+)+|purposes\+?=\([a-z0-9 ]+\)' run test bench .ci/run docs/*.md README.md |
    sed -E 's,^tools/setup,,; s,^purposes[^(]*\((.*)\)$,\1,')
for purpose in $used; do
    tools/setup --list "$purpose" >/dev/null || fail "nobody knows the purpose $purpose"
done
for purpose in $purposes; do
    grep -qw "$purpose" <<<"$used" || fail "nothing asks for [$purpose]"
done

asked=$(sed -nE 's,^tools/setup (.*)$,\1,p' run)
[ -n "$asked" ] || fail "./run doesn't set up what it needs"
for tool in ccache clang-format clang clang-tidy clazy gcovr libbenchmark-dev libxml2-utils lintian doxygen postgresql umockdev x11-utils \
    xdotool xvfb; do
    ! tools/setup --list $asked | grep -qx "$tool" || fail "./run asks for $tool"
done

# A package that is known for two architectures is there.
programs=$(mktemp -d)
trap 'rm -rf "$programs"' EXIT
printf '#!/bin/sh\nprintf "installed\\ninstalled\\n"\n' >"$programs/dpkg-query"
printf '#!/bin/sh\nexit 1\n' >"$programs/apt-get"
chmod +x "$programs"/*
PATH=$programs:$PATH tools/setup run || fail "tools/setup installs what is there"

# A purpose that isn't there, or none at all, is refused in one sentence.
for arguments in dance ''; do
    status=0
    message=$(tools/setup --list $arguments 2>&1) || status=$?
    [ "$status" -eq 2 ] && [[ $message == setup:*run\ test* ]] || fail "tools/setup --list $arguments: $status $message"
done
