#!/bin/bash
# What the plug-in scanner of Debian's package qtractor makes of the module.
# usage: tests/scanners/qtractor.sh MODULE
set -euo pipefail
module=$(realpath "$1")
scanner=$(dpkg -L qtractor | sed -n '\,/qtractor_plugin_scan$,p')
[ -x "$scanner" ] || {
    echo "The package qtractor is not installed: its scanner is part of the tests" >&2
    exit 1
}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder XDG_CACHE_HOME=$folder XDG_CONFIG_HOME=$folder XDG_RUNTIME_DIR=$folder

said=$(printf 'VST:%s\n' "$module" | timeout 60 "$scanner")
echo "$said"
# VST|NAME|audio in:out|MIDI in:out|control in:out|flags|path|index|unique id
IFS='|' read -r kind name audio midi controls flags path _ < <(grep '^VST|' <<<"$said")
failed=0
expect() {
    if [ "$2" != "$3" ]; then
        echo "$1: expected \"$3\", the scanner said \"$2\""
        failed=1
    fi
}
expect kind "$kind" VST
expect name "$name" "ThudForge 1.8.3 FREE"
expect "audio inputs:outputs" "$audio" 0:2
expect "MIDI inputs:outputs" "${midi%%:*}" 1
expect parameters "$controls" 159:0
expect path "$path" "$module"
# EXT: keeps its state itself, RT: can be automated.
case ,$flags, in *,RT,*) ;; *) expect flags "$flags" RT ;; esac
expect "number of plug-ins in the module" "$(grep -c '^VST|' <<<"$said")" 1
exit "$failed"
