#!/bin/sh
# Makes Editor.ttf and Editor-Bold.ttf anew from the Debian package fonts-roboto-unhinted with pyftsubset of the
# package fonttools: Latin-1 and the signs that texts and displays use.
set -eu
cd "$(dirname "$0")"
source=/usr/share/fonts/truetype/roboto/unhinted
signs='U+0020-007E,U+00A0-00FF,U+0131,U+0152-0153,U+2013-2014,U+2018-201A,U+201C-201E,U+2022,U+2026,U+20AC,U+2122'
signs="$signs,U+2212,U+221E,U+2248,U+2264,U+2265"
subset() {
    pyftsubset "$source/$1" --unicodes="$signs" --layout-features=kern --no-hinting --desubroutinize \
        --name-IDs='*' --notdef-outline --no-recalc-timestamp --output-file="$2"
}
subset RobotoCondensed-Regular.ttf Editor.ttf
subset RobotoCondensed-Bold.ttf Editor-Bold.ttf
