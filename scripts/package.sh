#!/usr/bin/env bash
# Builds an optimised copy in build-package/ and makes the Debian package from it with CPack:
# build-package/sparkwright_VERSION_ARCH.deb, its dependencies found by dpkg-shlibdeps.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/deps.sh"
sparkwright_install_missing dpkg-dev file

build="$root/build-package"
sparkwright_build "$root" "$build" -DCMAKE_BUILD_TYPE=Release -DSPARKWRIGHT_TESTS=OFF
cd "$build"
cpack -G DEB
ls -1 "$build"/*.deb
