#!/usr/bin/env bash
# check-package-install.sh BUILD SOURCE: makes the Debian packages of BUILD and checks them. Then installs them into a
# root that has nothing but the packages that they depend on, plays a shipped scenario there, and removes them again.
# Status 77: not root, or a program is missing.
set -euo pipefail
build=$1 source=$2
[ "$(id -u)" -eq 0 ] || { echo "skipped, chroot needs root"; exit 77; }
for program in lintian desktop-file-validate appstreamcli unshare; do
    command -v "$program" >/dev/null || { echo "skipped, $program is missing (tools/setup test installs it)"; exit 77; }
done

fail() {
    echo "$*"
    exit 1
}

# The packages.
out="$build/tests/packages"
rm -rf "$out"
mkdir -p "$out"
(cd "$build" && cpack -G DEB -B "$out" -D "CPACK_OUTPUT_FILE_PREFIX=$out") >"$out.log" 2>&1 ||
    { tail -n 40 "$out.log"; exit 1; }
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")-1
architecture=$(dpkg --print-architecture)
packages=()
for name in liblcdfactorymode1 liblcdsdk1 liblcdsdk-dev panelhost; do
    packages+=("$out/${name}_${version}_$architecture.deb")
    [ "$name" = liblcdsdk-dev ] || packages+=("$out/$name-dbgsym_${version}_$architecture.ddeb")
done
for package in "${packages[@]}"; do
    [ -e "$package" ] || fail "cpack didn't write $package"
done
[ "$(find "$out" -maxdepth 1 -name '*deb' | wc -l)" -eq "${#packages[@]}" ] || fail "cpack wrote other packages too: $(ls "$out")"
lintian --allow-root --fail-on error --suppress-tags initial-upload-closes-no-bugs "${packages[@]}"

mapfile -t installed < <(printf '%s\n' "${packages[@]}" | grep '\.deb$')
size=0
for package in "${installed[@]}"; do
    size=$((size + $(dpkg-deb --field "$package" Installed-Size)))
done
echo "Installed size: $size KiB"
[ "$size" -lt 12288 ] || fail "the packages take $size KiB when they are installed; 12 MiB is the limit"

# What the packages depend on, and what every system has. liblcdsdk-dev isn't installed: the others must not need it.
mapfile -t installed < <(printf '%s\n' "${installed[@]}" | grep -v -- -dev_)
wanted() {
    for package in "${installed[@]}"; do
        dpkg-deb --field "$package" Depends
    done | tr ',' '\n' | sed -E 's/[|(].*//; s/ //g' | grep -vE '^(liblcd|panelhost)'
    dpkg-query -W -f '${Essential} ${Package}\n' | sed -n 's/^yes //p'
}
mapfile -t seeds < <(wanted | sort -u)
mapfile -t dependencies < <(apt-cache depends --recurse --installed --no-recommends --no-suggests --no-conflicts \
    --no-breaks --no-replaces --no-enhances "${seeds[@]}" | grep -E '^[a-z0-9][^:]*$' | sort -u |
    xargs dpkg-query -W -f '${db:Status-Status} ${Architecture} ${binary:Package}\n' 2>/dev/null |
    sed -nE "s/^installed ($architecture|all) //p")
[ ${#dependencies[@]} -gt 50 ] || fail "found only ${#dependencies[@]} dependencies"

# A root with their files.
root="$out/root"
mkdir -p "$root"/{dev,proc,tmp,usr/{bin,sbin,lib,lib64},var/lib/dpkg/{info,updates,triggers}}
for name in bin sbin lib lib64; do
    ln -s "usr/$name" "$root/$name"
done
dpkg-query -L "${dependencies[@]}" | grep -vE '^/(bin|sbin|lib|lib64|\.)$|^/usr/share/(doc|man|locale)/' | sort -u |
    { while IFS= read -r path; do [ ! -e "$path" ] || printf '%s\n' "$path"; done; } >"$out/files"
tar -C / --no-recursion -cf - -T <(sed 's,^/,,' "$out/files") | tar -C "$root" --keep-directory-symlink -xf -
dpkg-query -s "${dependencies[@]}" >"$root/var/lib/dpkg/status"
for name in "${dependencies[@]}"; do
    cp "/var/lib/dpkg/info/$name.list" "$root/var/lib/dpkg/info/"
done
cp "$root/usr/share/base-passwd/passwd.master" "$root/etc/passwd"
cp "$root/usr/share/base-passwd/group.master" "$root/etc/group"
ldconfig -r "$root"
mkdir "$root/packages"
cp "${installed[@]}" "$root/packages"

# Runs a command in the root, with nothing mounted there afterwards.
in_root() {
    unshare --mount --pid --fork bash -c 'mount -t proc proc "$0/proc" && mount --rbind /dev "$0/dev" && exec chroot "$0" "$@"' \
        "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/tmp LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}
# Lists what packages could have left behind. Programs of root write the cache of fonts.
list() {
    (cd "$root" && find . -path ./proc -prune -o -path ./dev -prune -o -path ./tmp -prune -o -path ./var/lib/dpkg -prune \
        -o -path ./run -prune -o -path ./var/cache/fontconfig -prune -o -path ./var/log -prune -o ! -name '*-' ! -name '.pwd.lock' -print | LC_ALL=C sort)
    cat "$root/etc/passwd" "$root/etc/group"
}

list >"$out/before"
in_root sh -c 'dpkg --install /packages/*.deb' >"$out.log" 2>&1 || { cat "$out.log"; exit 1; }
for file in usr/share/man/man1/panelhost.1.gz usr/share/man/man1/panelhost-play.1.gz usr/share/applications/panelhost.desktop \
    usr/share/bash-completion/completions/panelhost usr/share/zsh/vendor-completions/_panelhost \
    usr/share/icons/hicolor/scalable/apps/panelhost.svg usr/share/metainfo/panelhost.metainfo.xml \
    usr/share/lcdfactorymode/scenario.schema.json usr/share/lcdfactorymode/factorymenu.xsd \
    usr/lib/systemd/system/panelhost.service usr/lib/udev/rules.d/60-panelhost.rules; do
    [ -s "$root/$file" ] || fail "/$file isn't installed"
done
desktop-file-validate "$root/usr/share/applications/panelhost.desktop"
appstreamcli validate --no-net "$root/usr/share/metainfo/panelhost.metainfo.xml"
grep -q '^panelhost:' "$root/etc/group" || fail "there is no group panelhost for the udev rules"

[ "$(in_root panelhost --version)" = "panelhost ${version%-*}" ] || fail "panelhost --version doesn't print the version"
in_root panelhost info >"$out/info"
grep -qF /usr/lib/lcdfactorymode/lib/liblcdfactorymodeimpl.so "$out/info" || { cat "$out/info"; fail "another component"; }
in_root panelhost check --strict
in_root env PANELHOST_RECORDS=none panelhost play /usr/share/panelhost/scenarios/machine-pass.yaml \
    --journal /tmp/journal.jsonl --report /tmp/report
cmp "$root/tmp/journal.jsonl" "$source/tests/e2e/journals/machine-pass.jsonl"
[ -s "$root/tmp/report/report.html" ] || fail "play --report wrote no report"

in_root dpkg --purge panelhost liblcdfactorymode1 liblcdsdk1 >"$out.log" 2>&1 || { cat "$out.log"; exit 1; }
list >"$out/after"
diff "$out/before" "$out/after" || fail "the packages leave this behind"
rm -rf "$root"
