#!/usr/bin/env bash
# Qualifies applications under ThreadSanitizer, which finds the data races between an
# application's callbacks that the concurrency rows provoke: the simulator is built with
# it (preset "sim-tsan"), the applications with -fsanitize=thread.
#   scripts/qualify-tsan.sh              (CI) examples/racy_app must fail with a race
#                                        between recv_msg and get_runtime_info, the sample
#                                        application must pass every concurrency row with
#                                        none, and the applications written outside the
#                                        project get their verdicts (camera_subtle's race
#                                        is shown when its callbacks overlapped)
#   scripts/qualify-tsan.sh APP.so ...   qualifies your own applications (built with
#                                        -fsanitize=thread -g); exit 0 when every row passed
# TSAN_SIM_BUILD_DIR: the simulator's build directory (default build-sim-tsan).
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."
bash scripts/install-deps.sh suite clang

build=${TSAN_SIM_BUILD_DIR:-build-sim-tsan}
cmake --preset sim-tsan -B "$build" >/dev/null
cmake --build "$build" -j2 --target special-sim sim_sample_app sim_racy_app >/dev/null
sim=$build/tools/special-sim/special-sim
# reports go to each row's own file, which the qualification reads; the module's own
# accepted races (tsan.supp) are not the application's
export TSAN_OPTIONS="history_size=4 suppressions=$PWD/scripts/tsan.supp ${TSAN_OPTIONS:-}"
# Some kernels randomise mmap beyond what clang 14's ThreadSanitizer maps; without
# address randomisation its shadow layout always fits.
run=()
if "$sim" --version 2>&1 | grep -q "unexpected memory mapping"; then
    run=(setarch "$(uname -m)" -R)
fi

if [ $# -gt 0 ]; then
    rc=0
    for app in "$@"; do
        "${run[@]}" "$sim" --qualify --app "$app" || rc=1
    done
    exit "$rc"
fi

out=$build/qualify-tsan
rm -rf "$out" && mkdir -p "$out"
fail() {
    echo "qualify-tsan: $*" >&2
    exit 1
}

echo "== the sample application: every concurrency row passes, no race"
"${run[@]}" "$sim" --qualify --app "$build/tools/special-sim/libsim_sample_app.so" --row concurrency \
    >"$out/sample.txt" || { cat "$out/sample.txt"; fail "the sample application did not qualify"; }
cat "$out/sample.txt"
grep -q '^passed  *concurrency command$' "$out/sample.txt" || fail "the concurrency rows did not run"
if grep -E '^    (race|race outside)' "$out/sample.txt"; then
    fail "a race was reported for the sample application"
fi

echo "== examples/racy_app: the race between recv_msg and get_runtime_info is found"
rc=0
"${run[@]}" "$sim" --qualify --app "$build/tools/special-sim/libsim_racy_app.so" --row concurrency \
    >"$out/racy.txt" || rc=$?
cat "$out/racy.txt"
[ "$rc" -eq 1 ] || fail "the racy application's qualification exited $rc, not 1"
grep -E '^    race: .*(recv_msg.*get_runtime_info|get_runtime_info.*recv_msg)' "$out/racy.txt" ||
    fail "no race between recv_msg and get_runtime_info"

echo "== applications written outside the project, under ThreadSanitizer"
SPECIAL_SIM="$PWD/$sim" SPECIAL_SIM_RUN="${run[*]}" RACES=1 \
    APPS_CMAKE_ARGS="-DNOLTDEV_TREE=$PWD/$build -DCMAKE_C_COMPILER=clang-14 -DCMAKE_C_FLAGS=-fsanitize=thread" \
    bash tests/independent_apps/run.sh --check "$build" "$out/independent" ||
    fail "an independent application's verdict is not the one its README asks for"
echo "qualify-tsan: all checks passed"
