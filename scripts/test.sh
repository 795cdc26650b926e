#!/usr/bin/env bash
# Builds the project with AddressSanitizer, UBSan and warnings as errors in build-test/,
# then runs the whole suite through ctest on the offscreen platform.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/deps.sh"
sparkwright_install_missing

build="$root/build-test"
sparkwright_build "$root" "$build" -DCMAKE_BUILD_TYPE=Debug \
    -DSPARKWRIGHT_SANITIZE=ON -DSPARKWRIGHT_WERROR=ON -DSPARKWRIGHT_TESTS=ON

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
cd "$build"
ctest --output-on-failure --parallel "$(nproc)"
