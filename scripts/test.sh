#!/usr/bin/env bash
# Builds the project with Qt 6, AddressSanitizer, UBSan and warnings as errors in build-test/,
# then runs the whole suite through ctest on the offscreen platform.
#
#   scripts/test.sh          Qt 6 under the sanitizers
#   scripts/test.sh --qt5    Qt 5.15 in build-test-qt5/, a plain debug build with warnings as
#                            errors (what CI runs besides, so that neither Qt falls behind)
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/deps.sh"
sparkwright_install_missing

case "${1:-}" in
    "")
        build="$root/build-test"
        sparkwright_build "$root" "$build" -DCMAKE_BUILD_TYPE=Debug -DSPARKWRIGHT_QT_MAJOR=6 \
            -DSPARKWRIGHT_SANITIZE=ON -DSPARKWRIGHT_WERROR=ON -DSPARKWRIGHT_TESTS=ON
        ;;
    --qt5)
        build="$root/build-test-qt5"
        sparkwright_build "$root" "$build" -DCMAKE_BUILD_TYPE=Debug -DSPARKWRIGHT_QT_MAJOR=5 \
            -DSPARKWRIGHT_SANITIZE=OFF -DSPARKWRIGHT_WERROR=ON -DSPARKWRIGHT_TESTS=ON
        ;;
    *)
        echo "usage: $0 [--qt5]" >&2
        exit 2
        ;;
esac

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
cd "$build"
ctest --output-on-failure --parallel "$(nproc)"
