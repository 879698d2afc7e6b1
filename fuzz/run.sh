#!/usr/bin/env bash
# Builds the fuzz harnesses with clang, ASan and UBSan, and runs each in turn for a bounded
# time from seeds made out of the test bodies, keeping what they find in a corpus.
#   SECONDS_PER_FUZZER  run time of each harness (default 60)
#   FUZZ_BUILD_DIR      build directory (default build-fuzz); the corpora live under it
#   FUZZERS             the harnesses to run (default: router answers shadow status fromlog)
# Exits non-zero when a harness finds a fault; its input is left as fuzz-<name>-crash-*.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh sim clang python
secs=${SECONDS_PER_FUZZER:-60}
build=${FUZZ_BUILD_DIR:-build-fuzz}
fuzzers=${FUZZERS:-router answers shadow status fromlog}
CC=clang-14 CXX=clang++-14 cmake -S . -B "$build" -DNOLTDEV_WERROR=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo -DNOLTDEV_BUILD_FUZZ=ON \
    -DNOLTDEV_SANITIZE=address,undefined -DNOLTDEV_BUILD_TESTS=OFF -DNOLTDEV_BUILD_TOOLS=ON \
    -DNOLTDEV_BUILD_BENCH=OFF >/dev/null
targets=()
for name in $fuzzers; do
    targets+=("fuzz_$name")
done
cmake --build "$build" -j2 --target "${targets[@]}"
rm -rf "$build/seeds"
python3 fuzz/make_seeds.py "$build/seeds"
export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
for name in $fuzzers; do
    mkdir -p "$build/corpus/$name"
    rm -f "$build"/fuzz-"$name"-crash-* "$build"/fuzz-"$name"-leak-* "$build"/fuzz-"$name"-timeout-*
    echo "== fuzz_$name for ${secs}s"
    # inputs that once found a fault are replayed first, on every run
    regress=()
    if [ -d "fuzz/regress/$name" ]; then
        regress=("fuzz/regress/$name")
    fi
    rc=0
    "$build/fuzz/fuzz_$name" -max_total_time="$secs" -dict=fuzz/special.dict -max_len=65536 -timeout=20 \
        -print_final_stats=1 -artifact_prefix="$build/fuzz-$name-" "$build/corpus/$name" "$build/seeds/$name" \
        "${regress[@]}" >"$build/fuzz-$name.log" 2>&1 || rc=$?
    grep -E '^stat::(number_of_executed_units|average_exec_per_sec|new_units_added|peak_rss_mb)' \
        "$build/fuzz-$name.log" || true
    if [ "$rc" -ne 0 ] || ls "$build"/fuzz-"$name"-{crash,leak,timeout}-* >/dev/null 2>&1; then
        grep -E -B2 -A40 '^==[0-9]+==ERROR|runtime error|deadly signal|ERROR: libFuzzer' "$build/fuzz-$name.log" |
            head -n 80 || tail -n 60 "$build/fuzz-$name.log"
        echo "fuzz_$name found a fault (exit $rc); the input: $build/fuzz-$name-{crash,leak,timeout}-*"
        exit 1
    fi
done
