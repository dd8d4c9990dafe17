#!/bin/bash
# Builds the instrument and renders the demo song through it to out/demo.wav. Installs the Debian packages that this
# needs. usage: ./demo.sh
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")"
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
# shellcheck source=scripts/steps.sh
. scripts/steps.sh

install_packages "to build the instrument and its command line host" "${packages_for_demo[@]}"
use_compiler_cache

mkdir -p build out
step "configure" build/demo-configure.log cmake --preset demo
step "build (about two minutes at the first run)" build/demo-build.log \
    cmake --build --preset demo --parallel "$(nproc)"

echo "Rendering examples/kick-pattern.mid with the program \"Frenchcore Kick\" through the module:"
build/demo/host/thudforge render examples/kick-pattern.mid --program "Frenchcore Kick" -o out/demo.wav
echo "Listen to it: $PWD/out/demo.wav"
