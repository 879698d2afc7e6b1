#!/usr/bin/env bash
# Builds the fuzz harnesses with clang, ASan and UBSan, and runs each for a bounded time
# (SECONDS_PER_FUZZER, default 60) from seeds made out of the test bodies.
set -euo pipefail
cd "$(dirname "$0")/.."
secs=${SECONDS_PER_FUZZER:-60}
build=${FUZZ_BUILD_DIR:-build-fuzz}
CC=clang-14 CXX=clang++-14 cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DNOLTDEV_BUILD_FUZZ=ON \
  -DNOLTDEV_SANITIZE=address,undefined -DNOLTDEV_BUILD_TESTS=OFF -DNOLTDEV_BUILD_TOOLS=OFF >/dev/null
cmake --build "$build" -j2 --target fuzz_router fuzz_answers fuzz_shadow fuzz_status
python3 fuzz/make_seeds.py "$build/seeds"
export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
for name in router answers shadow status; do
  mkdir -p "$build/corpus/$name"
  echo "== fuzz_$name for ${secs}s"
  "$build/fuzz/fuzz_$name" -max_total_time="$secs" -dict=fuzz/special.dict -max_len=65536 -print_final_stats=1 \
    -artifact_prefix="$build/fuzz-$name-" "$build/corpus/$name" "$build/seeds/$name" >"$build/fuzz-$name.log" 2>&1 ||
    true
  grep -E '^stat::(number_of_executed_units|average_exec_per_sec|peak_rss_mb)' "$build/fuzz-$name.log" || true
  if ls "$build"/fuzz-$name-* >/dev/null 2>&1; then
    tail -n 60 "$build/fuzz-$name.log"
    echo "fuzz_$name found a fault: $(ls "$build"/fuzz-$name-*)"
    exit 1
  fi
done
