#!/usr/bin/env bash
# Builds optimised against Qt 6 in build-bench/ and prints one line per benchmark: NAME MEDIAN_MS.
# With --qt5 the same against Qt 5.15, in build-bench-qt5/.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/deps.sh"
sparkwright_install_missing

case "${1:-}" in
    "") qt=6 build="$root/build-bench" ;;
    --qt5) qt=5 build="$root/build-bench-qt5" ;;
    *) echo "usage: $0 [--qt5]" >&2; exit 2 ;;
esac
# The build's progress would mix with the results; its output is shown only when it fails.
mkdir -p "$build"
if ! sparkwright_build "$root" "$build" -DCMAKE_BUILD_TYPE=Release -DSPARKWRIGHT_QT_MAJOR="$qt" \
    -DSPARKWRIGHT_TESTS=OFF -DSPARKWRIGHT_BENCH=ON >"$build/build.log" 2>&1; then
    cat "$build/build.log" >&2
    exit 1
fi

cd "$build"
for bench in bench/bench_*; do
    if [ -f "$bench" ] && [ -x "$bench" ] && [ "$bench" != bench/bench_startup ]; then
        QT_QPA_PLATFORM=offscreen "$bench"
    fi
done
# The start-up is measured to the window's exposure on a (virtual) X server: the offscreen
# platform would leave out the windowing system's share of every start. The server is set to
# 96 dpi, as a desktop at 100 % is: from Xvfb's own 100 dpi the program would scale everything
# by 1.04 and pay for drawing at that factor.
QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1280x800x24 -dpi 96" bench/bench_startup
