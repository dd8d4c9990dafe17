# shellcheck shell=sh
# Folders outside the tree that are shared by all clones. To be sourced.

# shellcheck disable=SC2034 # for those who source this
THUDFORGE_CACHE=${XDG_CACHE_HOME:-${HOME:-/tmp}/.cache}/thudforge
