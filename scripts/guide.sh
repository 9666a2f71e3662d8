#!/bin/bash
# Makes the guide's pages, docs/prirucka/*.md, into HTML: build/guide/*.html with its pictures beside
# them. The pages need nothing else, and can be read from a disk.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need_packages pandoc

guide=docs/prirucka
pages=(index prvni-tabulka strom editace-tabulky export-tabulky import-tabulky sheet potize klavesy
    konfigurace stavove-texty)

# The heading of a page.
title_of() {
    sed -n 's/^# //p;q' "$guide/$1.md"
}

# The list of all pages, the one that is shown marked.
navigation() {
    local page mark
    echo '<ul>'
    for page in "${pages[@]}"; do
        mark=
        [[ $page == "$1" ]] && mark=' aria-current="page"'
        printf '<li><a href="%s.html"%s>%s</a></li>\n' "$page" "$mark" "$(title_of "$page")"
    done
    echo '</ul>'
}

for page in "$guide"/*.md; do
    page=$(basename "$page" .md)
    [[ " ${pages[*]} " == *" $page "* ]] || {
        echo "scripts/guide.sh does not list the page $page." >&2
        exit 1
    }
done

rm -rf build/guide
mkdir -p build/guide
style=$(<scripts/guide/style.css)
for page in "${pages[@]}"; do
    title=$(title_of "$page")
    [[ $page == index ]] || title+=' - Dorvak'
    pandoc --from gfm --to html5 --wrap none --fail-if-warnings --template scripts/guide/page.html \
        --lua-filter scripts/guide/links.lua --variable "style=$style" \
        --variable "navigation=$(navigation "$page")" --variable "title=$title" \
        --metadata "pagetitle=$title" --output "build/guide/$page.html" "$guide/$page.md"
done
if [[ -d $guide/obrazky ]]; then
    mkdir build/guide/obrazky
    cp "$guide"/obrazky/*.png build/guide/obrazky/
fi
say "The guide is in build/guide: ${#pages[@]} pages"
