#!/usr/bin/env bash
# Installs the Debian 12 packages the project needs, only those that are missing: Qt 6, which
# the program is built with, and Qt 5.15, on which the suite runs too. Sourced by run.sh,
# test.sh, bench.sh, package.sh and fuzz.sh; safe to run again. Also holds their common build step.
set -euo pipefail

sparkwright_packages=(
    cmake ninja-build g++ pkg-config ccache
    qt6-base-dev qt6-serialport-dev qt6-svg-dev qt6-tools-dev qt6-l10n-tools qt6-translations-l10n
    qtbase5-dev qtbase5-dev-tools qttools5-dev qttools5-dev-tools
    libqt5serialport5-dev libqt5svg5 libqt5svg5-dev qttranslations5-l10n
    fonts-dejavu-core poppler-utils python3 xvfb xauth
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

# Forgets the build folder's configuration when one of the given -DNAME=VALUE options was
# configured with another value (another Qt, say), so that the next step configures it anew.
sparkwright_forget_other_configuration() {
    local build="$1" option name value
    shift
    [ -f "$build/CMakeCache.txt" ] || return 0
    for option in "$@"; do
        [[ "$option" == -D*=* ]] || continue
        option="${option#-D}"
        name="${option%%=*}"
        value="${option#*=}"
        if [ "$(sed -n "s/^$name:[A-Z]*=//p" "$build/CMakeCache.txt")" != "$value" ]; then
            rm -f "$build/CMakeCache.txt"
            return 0
        fi
    done
}

# Configures the build folder on first use (with the given CMake options) and builds it.
# Compiled objects are kept by ccache for every clone and work tree of the project alike, so a
# fresh clone (as CI makes one) does not compile again what another clone already compiled.
sparkwright_build() {
    local root="$1" build="$2"
    shift 2
    export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
    sparkwright_forget_other_configuration "$build" "$@"
    if [ ! -f "$build/CMakeCache.txt" ]; then
        local launcher=()
        if command -v ccache >/dev/null; then
            launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
        fi
        cmake -S "$root" -B "$build" -G Ninja "${launcher[@]}" "$@"
    fi
    cmake --build "$build" --parallel "$(nproc)"
}
