#!/usr/bin/env bash
# Makes the pictures of the guides in docs/pictures anew: plays the guided tour in all three languages and takes from its
# pictures what the guides show, with as few colours as do. Needs ImageMagick; Debian's package is imagemagick.
set -euo pipefail
exec </dev/null
cd "$(dirname "$(readlink -f "$0")")/.."

# Name in the guides, name in the tour, and the part to show where it is not the whole.
pictures='
main-window renamed-files
player      playing              428x140+576+497
one-file    typed-fields         576x150+0+495
auto-convert auto-convert
ticked-files ticked-files        1008x440+0+0
final-list  final-list
converted   final-list-converted
edit-file   single-edit
fif-type    shape-of-names
genre-type  genre-entry
copy-folder destination-folder
replace     overwrite
trash       trash'

if ! command -v convert >/dev/null; then
    echo "$0: there is no ImageMagick here" >&2
    exit 1
fi

scripts/build.sh release
tour=$(mktemp -d)
trap 'rm -rf "$tour"' EXIT
QT_QPA_PLATFORM=offscreen build/release/tour/quilmo-tour "$tour"

for chapter in english: korean:ko german:de; do
    folder=docs/pictures/${chapter#*:}
    mkdir -p "$folder"
    while read -r name step part; do
        [[ -n $name ]] || continue
        convert "$tour/${chapter%:*}"/*-"$step".png ${part:+-crop "$part" +repage} +dither -colors 200 -strip \
            -define png:compression-level=9 "PNG8:$folder/$name.png"
    done <<<"$pictures"
done
du -sh docs/pictures
