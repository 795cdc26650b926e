#!/usr/bin/env bash
# Builds the fuzz targets with clang's libFuzzer (AddressSanitizer and UBSan on) in build-fuzz/
# and runs each for SECONDS (default 60), starting from the seed corpus in tests/fuzz/corpus.
# New corpus entries are kept in build-fuzz/corpus/TARGET, crash, leak and hang inputs in
# build-fuzz/findings/TARGET. Prints one line per target: TARGET EXECUTIONS RESULT.
# Only this script needs clang; the normal build and CI replay the corpus with the usual compiler.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
seconds="${1:-60}"
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(profilefile library hints json deviceanswer)

source "$root/scripts/deps.sh"
sparkwright_install_missing clang libclang-rt-14-dev

build="$root/build-fuzz"
options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DSPARKWRIGHT_QT_MAJOR=6 -DSPARKWRIGHT_FUZZ=ON -DSPARKWRIGHT_TESTS=OFF)
sparkwright_forget_other_configuration "$build" "${options[@]}"
if [ ! -f "$build/CMakeCache.txt" ]; then
    CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja "${options[@]}"
fi
cmake --build "$build" --parallel "$(nproc)" --target "${targets[@]/#/fuzz_}"

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

failed=0
summary=()
for target in "${targets[@]}"; do
    corpus="$build/corpus/$target"
    findings="$build/findings/$target"
    log="$build/findings/$target.log"
    mkdir -p "$corpus" "$findings"
    status=0
    # New entries go into the first folder; the seeds are only read.
    "$build/fuzz/fuzz_$target" "$corpus" "$root/tests/fuzz/corpus/$target" \
        -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$findings/" >"$log" 2>&1 || status=$?
    executions="$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)"
    if [ "$status" -eq 0 ]; then
        result="ok"
    else
        result="FAILED (exit $status, see $log)"
        failed=1
    fi
    summary+=("$target ${executions:-?} $result")
    echo "$target ${executions:-?} $result"
done

echo
printf '%s\n' "${summary[@]}"
exit "$failed"
