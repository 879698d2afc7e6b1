#!/usr/bin/env bash
# Builds the test suite with clang under ThreadSanitizer and runs it, every test in a
# process of its own; any data race that tsan.supp does not name fails the run.
#   TSAN_BUILD_DIR   build directory (default build-tsan)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."
bash scripts/install-deps.sh suite clang

build=${TSAN_BUILD_DIR:-build-tsan}
CC=clang-14 CXX=clang++-14 cmake -S . -B "$build" -DNOLTDEV_WERROR=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DNOLTDEV_SANITIZE=thread -DNOLTDEV_BUILD_TOOLS=OFF -DNOLTDEV_BUILD_BENCH=OFF -DNOLTDEV_BUILD_FUZZ=OFF >/dev/null
cmake --build "$build" -j2 --target special_tests

# the storms at a tenth of their counts: every thread is far slower under the sanitizer
export NOLTDEV_STORM_PERCENT=${NOLTDEV_STORM_PERCENT:-10}
export TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 history_size=4 suppressions=$PWD/scripts/tsan.supp"
# Some kernels randomise mmap beyond what clang 14's ThreadSanitizer maps; without
# address randomisation its shadow layout always fits.
run=()
if "$build/tests/special_tests" --gtest_list_tests 2>&1 | grep -q "unexpected memory mapping"; then
    run=(setarch "$(uname -m)" -R)
fi
"${run[@]}" ctest --test-dir "$build" -j2 --output-on-failure --no-tests=error
