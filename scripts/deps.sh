#!/usr/bin/env bash
# Installs the Debian 12 packages the project needs, only those that are missing.
# Sourced by run.sh, test.sh and bench.sh; safe to run again. Also holds their common build step.
set -euo pipefail

sparkwright_packages=(
    cmake ninja-build g++ pkg-config ccache
    qtbase5-dev qtbase5-dev-tools qttools5-dev qttools5-dev-tools
    libqt5serialport5-dev libqt5svg5
    fonts-dejavu-core poppler-utils qttranslations5-l10n python3 xvfb xauth
    desktop-file-utils appstream libexpected-dev util-linux groff-base
)

sparkwright_install_missing() {
    local missing=()
    local package
    for package in "${sparkwright_packages[@]}" "$@"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
            missing+=("$package")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    echo "Installing: ${missing[*]}"
    local sudo=""
    if [ "$(id -u)" -ne 0 ]; then
        sudo="sudo"
    fi
    export DEBIAN_FRONTEND=noninteractive
    $sudo apt-get update -qq
    $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# Configures the build folder on first use (with the given CMake options) and builds it.
# Compiled objects are kept by ccache for every clone and work tree of the project alike, so a
# fresh clone (as CI makes one) does not compile again what another clone already compiled.
sparkwright_build() {
    local root="$1" build="$2"
    shift 2
    export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
    if [ ! -f "$build/CMakeCache.txt" ]; then
        local launcher=()
        if command -v ccache >/dev/null; then
            launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
        fi
        cmake -S "$root" -B "$build" -G Ninja "${launcher[@]}" "$@"
    fi
    cmake --build "$build" --parallel "$(nproc)"
}
