# shellcheck shell=bash
# Shared by demo.sh and test.sh: installs Debian packages that are missing. To be sourced by bash.

# True if every package named is installed.
packages_installed() {
    local installed
    installed=$(dpkg-query -W -f='${db:Status-Abbrev} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^ii *//p' | sort -u)
    [ "$(printf '%s\n' "$@" | sort -u)" = "$installed" ]
}

# Names those of the packages that are not installed, one a line.
packages_missing() {
    local package
    for package in "$@"; do
        packages_installed "$package" || printf '%s\n' "$package"
    done
}

# Runs apt-get without questions, as root or through sudo.
run_apt_get() {
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Installing packages needs root: run this as root once, or install sudo." >&2
            return 1
        fi
        as_root=(sudo)
    fi
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y \
        -o Dpkg::Options::=--force-confold -o DPkg::Lock::Timeout=300 "$@" </dev/null
}

# install_packages WHY PACKAGE...: installs what is missing, tells what and why, does nothing when all is there.
install_packages() {
    local why=$1 missing log
    shift
    packages_installed "$@" && return 0
    if ! command -v apt-get >/dev/null; then
        echo "This needs Debian 12 or a system made from it: there is no apt-get here." >&2
        return 1
    fi
    mapfile -t missing < <(packages_missing "$@")
    echo "Installing Debian packages that are needed $why:"
    printf '    %s\n' "${missing[*]}" | fold -s -w 100
    log=$(mktemp)
    # The package lists are fetched only where they do not lead to the packages.
    if ! run_apt_get install --no-install-recommends "${missing[@]}" >"$log" 2>&1; then
        echo "    (fetching fresh package lists first)"
        if ! { run_apt_get update && run_apt_get install --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
            tail -n 20 "$log" >&2
            rm -f "$log"
            echo "The packages could not be installed." >&2
            return 1
        fi
    fi
    rm -f "$log"
    if ! packages_installed "$@"; then
        echo "Still missing after the installation: $(packages_missing "$@" | tr '\n' ' ')" >&2
        return 1
    fi
}

# What a build of the instrument and its command line host needs.
packages_for_demo=(g++ cmake ninja-build libsndfile1-dev libcli11-dev
    libpng-dev zlib1g-dev libfreetype-dev libbrotli-dev libxcb1-dev libxcb-shm0-dev)

# What everything under test needs on top: linters, sanitizers, the Windows build and Debian's own hosts.
# shellcheck disable=SC2034 # for those who source this
packages_for_tests=("${packages_for_demo[@]}"
    binutils ca-certificates dpkg-dev file git patch python3 tar xz-utils
    ccache clang clang-format clang-tidy libclang-rt-dev shellcheck
    libgtest-dev googletest libbenchmark-dev
    g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 libz-mingw-w64-dev wine wine64
    xvfb xauth xdotool x11-utils
    qtractor ardour)
