#!/usr/bin/env bash
# check-scripts.sh SOURCE: shellcheck accepts all shell scripts, yamllint all scenarios and other YAML files that are
# shipped (.yamllint). Status 77: a program is missing.
set -euo pipefail
cd "$1"
for program in shellcheck yamllint; do
    command -v "$program" >/dev/null || { echo "skipped, $program is missing (tools/setup installs it)"; exit 77; }
done
mapfile -t scripts < <(find run test bench .ci/run tools tests docs share packaging -type f -size -64k \
    -exec grep -lIm 1 -E '^#!.*\b(ba)?sh$' {} + | sort)
[ ${#scripts[@]} -ge 10 ] || { echo "found only ${#scripts[@]} scripts"; exit 1; }
shellcheck --severity=warning "${scripts[@]}"
yamllint --strict scenarios share
