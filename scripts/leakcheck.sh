#!/usr/bin/env bash
# Runs every test of the suite in a process of its own under valgrind memcheck: any
# memory error, or any definitely or indirectly lost block, fails the run.
#   LEAK_BUILD_DIR   build directory (default build-leak)
#   LEAK_FILTER      gtest filter of the tests to check (default: all)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."
bash scripts/install-deps.sh suite valgrind

build=${LEAK_BUILD_DIR:-build-leak}
CC=gcc CXX=g++ cmake -S . -B "$build" -DNOLTDEV_WERROR=ON -DCMAKE_BUILD_TYPE=Debug -DNOLTDEV_SANITIZE= -DNOLTDEV_COVERAGE=OFF \
    -DNOLTDEV_BUILD_TOOLS=OFF -DNOLTDEV_BUILD_BENCH=OFF -DNOLTDEV_BUILD_FUZZ=OFF >/dev/null
cmake --build "$build" -j2 --target special_tests

bin=$build/tests/special_tests
logs=$build/memcheck
rm -rf "$logs"
mkdir -p "$logs"
# "Suite." lines, then "  Test" lines (a parameterised test carries a "# ..." comment)
"$bin" --gtest_list_tests --gtest_filter="${LEAK_FILTER:-*}" |
    awk '/^[^ ]/ { suite = $1; next } { print suite $1 }' >"$logs/tests.txt"
count=$(wc -l <"$logs/tests.txt")
echo "memcheck over $count tests"

# the storms at a tenth of their counts under valgrind
export NOLTDEV_STORM_PERCENT=${NOLTDEV_STORM_PERCENT:-10}
export bin logs
check_one() {
    local name=$1 log
    log=$logs/$(echo "$name" | tr '/' '_').log
    if ! valgrind --tool=memcheck --leak-check=full --errors-for-leak-kinds=definite,indirect \
        --show-leak-kinds=definite,indirect,possible --error-exitcode=1 --log-file="$log" \
        "$bin" --gtest_filter="$name" >"$log.out" 2>&1; then
        echo "FAILED $name (see $log)"
        return 1
    fi
}
export -f check_one
status=0
xargs -P 2 -I{} bash -c 'check_one "$@"' _ {} <"$logs/tests.txt" || status=1

# totals over every process: what was still allocated at exit, and what was lost, by kind
awk '{ gsub(",", "") } /in use at exit:/ { left += $(NF-4) }
     /definitely lost:/ { def += $(NF-4) } /indirectly lost:/ { ind += $(NF-4) } /possibly lost:/ { pos += $(NF-4) }
     END { printf "in use at exit: %d bytes; lost: definitely %d, indirectly %d, possibly %d bytes\n", left, def, ind, pos }' \
    "$logs"/*.log
if [ "$status" -ne 0 ]; then
    { grep -l -E 'ERROR SUMMARY: [1-9]|definitely lost: [1-9]|indirectly lost: [1-9]' "$logs"/*.log || true; } |
        while read -r f; do
            echo "==== $f"
            sed -n '/HEAP SUMMARY/,$p' "$f" | awk 'NR <= 80'
            grep -B2 -A20 -E '^==[0-9]+== (Invalid|Conditional|Use of|Syscall|Mismatched)' "$f" | head -n 60 || true
        done
    echo "memcheck: failures"
    exit 1
fi
echo "memcheck: $count tests clean"
