#!/bin/sh
# Builds Release with the benchmarks on, runs every scenario (three repetitions, medians)
# and prints each scenario's ratio to its floor, with heap allocations per operation.
#   bench/run.sh [benchmark options...]     e.g. bench/run.sh --benchmark_filter=poll
# BUILD_DIR (default build-bench) is the build tree.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build-bench}
bash "$root/scripts/install-deps.sh" sim bench
cmake -S "$root" -B "$build" -DNOLTDEV_WERROR=ON -DCMAKE_BUILD_TYPE=Release -DNOLTDEV_BUILD_BENCH=ON -DNOLTDEV_BUILD_TESTS=OFF \
    -DNOLTDEV_BUILD_TOOLS=OFF >/dev/null
cmake --build "$build" -j2 --target special_bench special_callgrind >/dev/null
exec "$build/bench/special_bench" --benchmark_repetitions=3 --benchmark_report_aggregates_only=true "$@"
