#!/usr/bin/env bash
# Builds the suite with gcc and gcov instrumentation of the module, runs it, and prints
# the line and branch coverage of the module's own sources.
#   COVERAGE_BUILD_DIR   build directory (default build-coverage)
#   COVERAGE_MIN_LINES   fail below this line percentage (default 95; 0 disables)
#   COVERAGE_MIN_BRANCHES  fail below this branch percentage (default 90; 0 disables)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."
bash scripts/install-deps.sh suite coverage

build=${COVERAGE_BUILD_DIR:-build-coverage}
CC=gcc CXX=g++ cmake -S . -B "$build" -DNOLTDEV_WERROR=ON -DCMAKE_BUILD_TYPE=Debug -DNOLTDEV_COVERAGE=ON -DNOLTDEV_SANITIZE= \
    -DNOLTDEV_BUILD_TOOLS=OFF -DNOLTDEV_BUILD_BENCH=OFF -DNOLTDEV_BUILD_FUZZ=OFF >/dev/null
cmake --build "$build" -j2 --target special_tests
find "$build" -name '*.gcda' -delete
ctest --test-dir "$build" -j2 --output-on-failure --no-tests=error

common=(--root . --object-directory "$build" --filter 'userpace/src/domain/special/'
    --exclude-throw-branches --exclude-unreachable-branches)
gcovr "${common[@]}" --txt
gcovr "${common[@]}" --branches --txt
gcovr "${common[@]}" --print-summary --fail-under-line "${COVERAGE_MIN_LINES:-95}" \
    --fail-under-branch "${COVERAGE_MIN_BRANCHES:-90}" --output /dev/null
