#!/usr/bin/env bash
# Builds the applications of this directory against a built tree of the project and runs
# special-sim --qualify on each, keeping what it said:
#   tests/independent_apps/run.sh [--check] [BUILD_DIR] [OUT_DIR]
# BUILD_DIR (default build/) holds libnoltDevSDK_special.so, include/ and
# tools/special-sim/special-sim; OUT_DIR (default BUILD_DIR/independent_apps) gets, per
# app, APP.out, APP.err, APP.xml (JUnit) and APP.status, and the apps' own build.
# The qualifier's verdicts are reported; without --check they never become this script's
# status (it fails only when the apps cannot be built or the simulator is missing). With
# --check (CI) it exits 1 when the verdict is not the one the README asks for: the correct
# application not passing clean, a planted fault not found, a crash or hang not ending the
# run with exit 1 and a JUnit file within a minute. The data race is never a failed check:
# without ThreadSanitizer nothing sees unlocked shared data, and with it (RACES=1: the
# simulator and the applications built with it, scripts/qualify-tsan.sh) it shows only in
# a run where the two callbacks happen to overlap.
# QUALIFY_TIMEOUT (seconds, default 120) bounds each run; a qualifier that hangs is killed.
# For another target or an installed package: SPECIAL_SIM (the simulator), SPECIAL_SIM_RUN
# (what starts it, e.g. qemu-arm and its options), APPS_CMAKE_ARGS (the apps' CMake options
# in place of the built tree: a prefix, a toolchain file) and SKIP_CLASSES (fault classes
# that cannot exist there: calendar with a 32-bit time_t).
set -uo pipefail
check=0
if [ "${1:-}" = --check ]; then
    check=1
    shift
fi
problems=0
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$(cd "${1:-build}" && pwd) || {
    echo "no build directory ${1:-build}" >&2
    exit 2
}
out=${2:-$build/independent_apps}
mkdir -p "$out" && out=$(cd "$out" && pwd)
sim=${SPECIAL_SIM:-$build/tools/special-sim/special-sim}
limit=${QUALIFY_TIMEOUT:-120}

if [ ! -x "$sim" ]; then
    echo "no simulator at $sim (build the special-sim target first)" >&2
    exit 2
fi
read -ra sim_run <<<"${SPECIAL_SIM_RUN:-}"
read -ra apps_cmake <<<"${APPS_CMAKE_ARGS:--DNOLTDEV_TREE=$build}"
if ! { cmake -S "$here" -B "$out/apps-build" "${apps_cmake[@]}" &&
    cmake --build "$out/apps-build" -j2; } >"$out/apps-build.log" 2>&1; then
    cat "$out/apps-build.log" >&2
    echo "the applications did not build" >&2
    exit 2
fi

trim() {
    local s=$1
    s=${s#"${s%%[![:space:]]*}"}
    printf '%s' "${s%"${s##*[![:space:]]}"}"
}

# What faults.txt says the qualifier must find in APP, looked for in its output.
check_faults() {
    local app=$1 text=$2
    grep "^$app |" "$here/faults.txt" | while IFS='|' read -r _ class callback type path _; do
        class=$(trim "$class") callback=$(trim "$callback") path=$(trim "$path")
        local name
        name=$(trim "${type%% (*}")
        local pattern
        case $class in
        crash) pattern="(signal|SIGSEGV|crash).*$name|$name.*(signal|SIGSEGV|crash)" ;;
        hang) pattern="(timeout|timed out|hang|did not return).*$name|$name.*(timeout|timed out|hang|did not return)" ;;
        concurrent) pattern="(concurrent|race).*SPEAKER_CONFIG|race: .*(recv_msg.*get_runtime_info|get_runtime_info.*recv_msg).*speaker|race: .*speaker.*(recv_msg.*get_runtime_info|get_runtime_info.*recv_msg)" ;;
        *) pattern="$class $callback $name" ;;
        esac
        if [[ " ${SKIP_CLASSES:-} " == *" $class "* ]]; then
            echo "    skipped  $class $callback $name $path (cannot exist on this target)"
            continue
        fi
        local hit
        hit=$(grep -E -m1 -- "$pattern" "$text")
        if [ -n "$hit" ]; then
            echo "    found    $class $callback $name $path"
            echo "             said: $(echo "$hit" | sed 's/^ *//' | cut -c1-200)"
        elif [ "$class" = concurrent ] && [ "${RACES:-0}" = 1 ]; then
            echo "    unseen   $class $callback $name $path (the callbacks did not overlap in this run; not checked)"
        elif [ "$class" = concurrent ]; then
            echo "    unseen   $class $callback $name $path (needs ThreadSanitizer, RACES=1; not checked)"
        else
            echo "    MISSING  $class $callback $name $path"
            echo x >>"$out/.problems"
        fi
    done
}

rm -f "$out/.problems"
# verdict APP STATUS SECONDS: with --check, counts what the README says must not happen.
verdict() {
    local app=$1 status=$2 took=$3 want=1
    [ "$app" = chime_partial ] && want=0
    if [ "$status" -ne "$want" ] || [ ! -s "$out/$app.xml" ] || [ "$took" -gt 60 ]; then
        echo "    WRONG    exit $status (want $want), ${took} s, JUnit $([ -s "$out/$app.xml" ] && echo written || echo missing)"
        echo x >>"$out/.problems"
    fi
}

for app in chime_partial camera_subtle doorbell_crash doorbell_hang; do
    lib="$out/apps-build/lib$app.so"
    rm -f "$out/$app.xml"
    start=$(date +%s)
    # concurrency rows of a second each keep the hanging application within its minute
    timeout -k 10 "$limit" "${sim_run[@]}" "$sim" --qualify --app "$lib" --junit "$out/$app.xml" --concurrency-s 1 \
        >"$out/$app.out" 2>"$out/$app.err"
    status=$?
    took=$(($(date +%s) - start))
    echo "$status" >"$out/$app.status"
    case $status in
    124 | 137) how=" (killed after ${limit} s: the qualifier did not end)" ;;
    12[5-9] | 1[3-9][0-9]) how=" (the qualifier died of signal $((status - 128)))" ;;
    *) how="" ;;
    esac
    echo "== $app: exit $status$how, ${took} s"
    grep -E '^(passed|FAILED|not exercised|not applicable) ' "$out/$app.out" | sed 's/^/    /'
    grep -E '^[0-9]+ passed' "$out/$app.out" | sed 's/^/    /'
    grep -E '^total ' "$out/$app.out" "$out/$app.err" -h | sed 's/^/    findings /'
    if [ -s "$out/$app.xml" ]; then
        echo "    JUnit written: $out/$app.xml"
    else
        echo "    no JUnit file"
    fi
    if grep -q "^$app |" "$here/faults.txt"; then
        check_faults "$app" "$out/$app.out"
    else
        errors=$(grep -cE '^    (error|warning) ' "$out/$app.out")
        echo "    no planted fault; error or warning findings listed: $errors"
        [ "$errors" -eq 0 ] || echo x >>"$out/.problems"
    fi
    verdict "$app" "$status" "$took"
done
[ -f "$out/.problems" ] && problems=$(wc -l <"$out/.problems")
echo "independent applications: $problems verdict(s) not as the README asks"
if [ "$check" -eq 1 ] && [ "$problems" -ne 0 ]; then
    exit 1
fi
exit 0
