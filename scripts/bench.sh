#!/usr/bin/env bash
# Builds optimised in build-bench/ and prints one line per benchmark: NAME MEDIAN_MS.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/deps.sh"
sparkwright_install_missing

build="$root/build-bench"
sparkwright_build "$root" "$build" -DCMAKE_BUILD_TYPE=Release \
    -DSPARKWRIGHT_TESTS=OFF -DSPARKWRIGHT_BENCH=ON >/dev/null

export QT_QPA_PLATFORM=offscreen
cd "$build"
for bench in bench/bench_*; do
    if [ -f "$bench" ] && [ -x "$bench" ]; then
        "$bench"
    fi
done
