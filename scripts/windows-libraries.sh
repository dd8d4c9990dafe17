#!/bin/bash
# Cross-builds for Windows the libraries that Debian has no Windows packages of, from Debian's source archives, into
# a folder outside the tree that all clones share. Does nothing when they are there already. Prints the folder.
# usage: scripts/windows-libraries.sh
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/folders.sh
. "$here/folders.sh"

toolchain=$here/../cmake/mingw-w64.cmake
prefix=$THUDFORGE_CACHE/windows
work=$THUDFORGE_CACHE/windows-build
mkdir -p "$THUDFORGE_CACHE"
exec 9>"$THUDFORGE_CACHE/windows.lock"
flock 9

# What the result depends on: this script, the toolchain file, the compiler and the versions of the sources, which
# are those of the native packages that the Linux build links with.
wanted=$(
    cat "${BASH_SOURCE[0]}" "$toolchain"
    x86_64-w64-mingw32-g++-posix --version
    dpkg-query -W -f='${source:Package} ${source:Version}\n' libsndfile1 libpng16-16 libz-mingw-w64-dev
)
if [ "$(cat "$prefix/made-from" 2>/dev/null)" = "$wanted" ]; then
    echo "$prefix"
    exit 0
fi

# apt with the mirror that this machine is set up for, asked for sources; the system's own settings stay as they are.
apt=$work/apt
rm -rf "$work" "$prefix"
mkdir -p "$apt/sources.list.d" "$apt/lists/partial"
: >"$apt/sources.list"
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
    [ -f "$list" ] || continue
    case $list in
    *.sources) sed 's/^Types:.*/Types: deb-src/' "$list" ;;
    *) sed -n 's/^deb[[:space:]]/deb-src /p' "$list" ;;
    esac >"$apt/sources.list.d/${list##*/}"
done
apt_get() {
    apt-get -q -o Dir::Etc::SourceList="$apt/sources.list" -o Dir::Etc::SourceParts="$apt/sources.list.d" \
        -o Dir::State::Lists="$apt/lists" -o APT::Sandbox::User="$(id -un)" "$@" </dev/null
}

# fetch_source PACKAGE: unpacks the upstream source of a Debian source package, with Debian's patches where the
# mirror has them, into $work/PACKAGE.
fetch_source() {
    local package=$1 orig debian patch
    mkdir -p "$work/archives-$package" "$work/$package"
    cd "$work/archives-$package"
    apt_get source --download-only "$package" || apt_get source --download-only --tar-only "$package"
    orig=$(echo "$package"_*.orig.tar.*)
    tar -xf "${orig%% *}" -C "$work/$package" --strip-components=1
    debian=$(find . -name "${package}_*.debian.tar.*")
    if [ -n "$debian" ]; then
        tar -xf "$debian" -C "$work/$package"
        while read -r patch; do
            patch -d "$work/$package" -p1 -s <"$work/$package/debian/patches/$patch"
        done < <(sed 's/[[:space:]]*#.*//; /^$/d' "$work/$package/debian/patches/series" 2>/dev/null)
    fi
}

# build_with_cmake PACKAGE OPTION...: builds and installs $work/PACKAGE into the shared folder.
build_with_cmake() {
    local package=$1
    shift
    cmake -G Ninja -S "$work/$package" -B "$work/$package/build" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix.new" -DBUILD_SHARED_LIBS=OFF "$@"
    cmake --build "$work/$package/build"
    cmake --install "$work/$package/build"
}

log=$THUDFORGE_CACHE/windows-libraries.log
rm -rf "$prefix.new"
echo "Building libsndfile and libpng for Windows from Debian's source archives (once, for all clones)" >&2
# (Not as a condition: there the shell would go on behind a command that failed.)
set +e
(
    set -e
    apt_get update
    fetch_source libsndfile
    build_with_cmake libsndfile -DENABLE_EXTERNAL_LIBS=OFF -DENABLE_MPEG=OFF -DENABLE_CPACK=OFF \
        -DBUILD_PROGRAMS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_TESTING=OFF
    # zlib comes from Debian's mingw-w64 package.
    fetch_source libpng1.6
    build_with_cmake libpng1.6 -DPNG_SHARED=OFF -DPNG_STATIC=ON -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF
) >"$log" 2>&1
failed=$?
set -e
if [ "$failed" -ne 0 ]; then
    tail -n 30 "$log" >&2
    echo "The Windows libraries could not be built; the whole log is $log" >&2
    exit 1
fi
printf '%s\n' "$wanted" >"$prefix.new/made-from"
mv "$prefix.new" "$prefix"
rm -rf "$work"
echo "$prefix"
