#!/bin/bash
# check-translations.sh SOURCE LUPDATE: whether the catalogs of panelhost's window have exactly the texts of the sources.
set -u
source=$1 lupdate=$2
copies=$(mktemp -d)
trap 'rm -rf "$copies"' EXIT
cp "$source"/host/translations/*.ts "$copies"
(cd "$source/host" && translations/update "$lupdate" "$copies"/*.ts) || exit 1
status=0
for catalog in "$copies"/*.ts; do
    diff -u "$source/host/translations/${catalog##*/}" "$catalog" || status=1
    if grep -n 'type="unfinished"' "$catalog"; then status=1; fi
done
[ $status = 0 ] || echo "Run ninja update_translations in the build folder, and translate the new texts."
exit $status
