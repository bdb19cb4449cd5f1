#!/usr/bin/env bash
# check-board-files.sh DIR PANELHOST: systemd accepts the shipped unit, and udev the shipped rules.
set -euo pipefail
board=$1/share/board
panelhost=$(realpath "$2")

for program in systemd-analyze udevadm unshare; do
    command -v "$program" >/dev/null || { echo "skipped, $program is missing"; exit 77; }
done
[ "$(id -u)" = 0 ] || { echo "skipped, root can hide the rules and groups of this machine"; exit 77; }
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT

# The unit runs the installed panelhost; here there is only the one that was built.
sed "s,/usr/bin/panelhost,$panelhost," "$board/panelhost.service" >"$place/panelhost.service"
findings=$(systemd-analyze verify "$place/panelhost.service" 2>&1) || { echo "$findings"; exit 1; }
[ -z "$findings" ] || { echo "$findings"; exit 1; }

# With the group of docs/board.md, in a place of its own instead of /etc. A device is needed, whatever it is.
cp /etc/group "$place/group"
grep -q '^panelhost:' "$place/group" || echo 'panelhost:x:999:' >>"$place/group"
findings=$(unshare -m bash -c '
    mount --bind "$1/group" /etc/group && mkdir -p /etc/udev/rules.d && mount -t tmpfs none /etc/udev/rules.d &&
        cp "$2/60-panelhost.rules" /etc/udev/rules.d/ && udevadm test --action=add /sys/class/net/lo 2>&1
    ' - "$place" "$board" | grep '60-panelhost.rules') || { echo "udev doesn't read the rules"; exit 1; }
[ "$findings" = "Reading rules file: /etc/udev/rules.d/60-panelhost.rules" ] || { echo "$findings"; exit 1; }
