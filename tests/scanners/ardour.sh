#!/bin/bash
# What the plug-in scanner of Debian's package ardour makes of the module.
# usage: tests/scanners/ardour.sh MODULE
set -euo pipefail
module=$(realpath "$1")
scanner=$(dpkg -L ardour | sed -n '\,/ardour-vst-scanner$,p')
[ -x "$scanner" ] || {
    echo "The package ardour is not installed: its scanner is part of the tests" >&2
    exit 1
}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder XDG_CACHE_HOME=$folder XDG_CONFIG_HOME=$folder
# As the host's own start script does.
export LD_LIBRARY_PATH=${scanner%/*}

said=$(timeout 60 "$scanner" -f -v "$module" 2>&1) || {
    echo "$said"
    echo "The scanner ended with an error"
    exit 1
}
echo "$said"
failed=0
expect() {
    if ! grep -qF -- "$1" <<<"$said"; then
        echo "The scanner did not say: $1"
        failed=1
    fi
}
expect 'name="ThudForge 1.8.3 FREE"'
expect 'category="Instrument"'
expect 'n_inputs="0"'
expect 'n_outputs="2"'
expect 'n_midi_inputs="1"'
expect 'is_instrument="1"'
expect 'can_process_replace="1"'
expect "binary=\"$module\""
exit "$failed"
