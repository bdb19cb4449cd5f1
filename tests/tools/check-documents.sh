#!/usr/bin/env bash
# check-documents.sh DIR: every link of README.md, CONTRIBUTING.md and docs/*.md leads to a file and a heading that exist, and every file
# that docs/architecture.md names exists.
set -euo pipefail
cd "$1"
status=0

# Prints the anchors of the headings in file $1.
anchors() {
    sed -nE 's/^#+ +//p' "$1" | tr '[:upper:]' '[:lower:]' | sed -E "s/[^[:alnum:]_ -]//g; s/ /-/g"
}

links=0
for page in README.md CONTRIBUTING.md docs/*.md; do
    while read -r link; do
        case $link in http://* | https://*) continue ;; esac
        links=$((links + 1))
        path=${link%%#*}
        target=$page
        [ -z "$path" ] || target=$(dirname "$page")/$path
        if [ ! -e "$target" ]; then
            echo "$page: $link: there is no file $target"
            status=1
        elif [[ $link == *#* ]] && ! grep -qxF -- "${link#*#}" <(anchors "$target"); then
            echo "$page: $link: there is no such heading"
            status=1
        fi
    done < <(sed '/^```/,/^```/d' "$page" | grep -oE '\]\([^) ]+\)' | sed -E 's/^\]\(//; s/\)$//')
done

# Names without a folder are files of the component, of panelhost or of the pages.
names=0
while read -r name; do
    names=$((names + 1))
    if ! compgen -G "$name" >/dev/null && ! compgen -G "$name.*" >/dev/null && ! compgen -G "host/$name" >/dev/null &&
        ! compgen -G "host/$name.*" >/dev/null && [ -z "$(find framework host pages tests -name "$name" -print -quit)" ]; then
        echo "docs/architecture.md: there is no file $name"
        status=1
    fi
done < <(grep -oE '`[^` ]+`' docs/architecture.md | tr -d '`' | grep -E '/|\.(h|cpp|qss)$' | grep -v '^\.\.\.' | sort -u)

[ "$links" -gt 50 ] && [ "$names" -gt 50 ] || { echo "found only $links links and $names files"; exit 1; }
exit "$status"
