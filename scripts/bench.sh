#!/usr/bin/env bash
# Builds optimised in build-bench/ and prints one line per benchmark: NAME MEDIAN_MS.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/deps.sh"
sparkwright_install_missing

build="$root/build-bench"
sparkwright_build "$root" "$build" -DCMAKE_BUILD_TYPE=Release \
    -DSPARKWRIGHT_TESTS=OFF -DSPARKWRIGHT_BENCH=ON >/dev/null

cd "$build"
for bench in bench/bench_*; do
    if [ -f "$bench" ] && [ -x "$bench" ] && [ "$bench" != bench/bench_startup ]; then
        QT_QPA_PLATFORM=offscreen "$bench"
    fi
done
# The start-up is measured to the window's exposure on a (virtual) X server: the offscreen
# platform would leave out the windowing system's share of every start.
QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x800x24" bench/bench_startup
