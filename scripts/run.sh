#!/usr/bin/env bash
# Builds the program into build/ and starts it from there, where default.cds, hints.cdh
# and lang_de.qm stand beside it.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/deps.sh"
sparkwright_install_missing

build="$root/build"
sparkwright_build "$root" "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DSPARKWRIGHT_QT_MAJOR=6 \
    -DSPARKWRIGHT_TESTS=OFF

cd "$build"
exec ./sparkwright "$@"
