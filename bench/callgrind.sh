#!/bin/sh
# Instruction counts per operation of every scenario under callgrind, and each
# scenario's ratio to its floor. Counts do not depend on the machine's load.
#   bench/callgrind.sh [PATTERN]      only the scenarios whose name matches PATTERN (an awk
#                                     regular expression) and their floors
# BUILD_DIR (default build-bench) is the build tree; COUNT (default 200) the operations
# counted per scenario.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build-bench}
count=${COUNT:-200}
pattern=${1:-.}
bash "$root/scripts/install-deps.sh" sim bench valgrind
cmake -S "$root" -B "$build" -DNOLTDEV_WERROR=ON -DCMAKE_BUILD_TYPE=Release -DNOLTDEV_BUILD_BENCH=ON -DNOLTDEV_BUILD_TESTS=OFF \
    -DNOLTDEV_BUILD_TOOLS=OFF >/dev/null
cmake --build "$build" -j2 --target special_callgrind >/dev/null
driver=$build/bench/special_callgrind
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# One scenario: "name instructions_per_op allocs_per_op bytes_per_op" into the results.
measure() {
    valgrind --tool=callgrind --callgrind-out-file="$work/cg" "$driver" "$1" "$count" >"$work/out" 2>/dev/null
    ir=$(sed -n 's/^summary: //p' "$work/cg.1")
    rm -f "$work"/cg*
    awk -v n="$1" -v ir="$ir" -v c="$count" '{ printf "%s %.0f %s %s\n", n, ir / c, $2, $4 }' \
        "$work/out" >>"$work/results"
}

: >"$work/results"
"$driver" --list >"$work/list"
# The scenarios matching the pattern, and the floors they are compared with.
awk -v p="$pattern" '$1 ~ p { print $1; if ($2 != "-") print $2 }' "$work/list" | sort -u >"$work/selected"
while read -r name; do
    measure "$name"
done <"$work/selected"

awk 'FNR == NR { ir[$1] = $2; allocs[$1] = $3; bytes[$1] = $4; next }
     FNR == 1 { printf "%-30s %12s %12s %7s %5s %7s %7s\n", "scenario", "Ir/op", "floor Ir/op", "ratio",
                       "goal", "allocs", "bytes" }
     !($1 in ir) { next }
     $2 == "-" || !($2 in ir) { printf "%-30s %12d %12s %7s %5s %7.2f %7.0f\n", $1, ir[$1], "", "", "",
                                       allocs[$1], bytes[$1]; next }
     { r = ir[$1] / ir[$2];
       printf "%-30s %12d %12d %7.2f %5.1f %7.2f %7.0f%s\n", $1, ir[$1], ir[$2], r, $3, allocs[$1], bytes[$1],
              r <= $3 ? "" : "  over" }' "$work/results" "$work/list"
