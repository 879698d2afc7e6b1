#!/usr/bin/env bash
# From a device's log to a replay: the sample application is driven through
# examples/demo.scn with the module's own log at level 4 on standard error, and that log
# must convert (special-sim --from-log) and replay against the same application with
# every answer and report alike; the same log behind a kernel timestamp, behind a syslog
# head, with Windows line ends and with other lines between the module's must give the
# same scenario byte for byte; a level-1 log of the run must list what it cannot replay
# and exit 2; a replay against the sample with one answer changed must show where it
# departs, with both bodies.
#   scripts/fromlog.sh            for the PC (preset "host")
#   scripts/fromlog.sh armhf      the simulator and the applications for 32-bit ARM, under qemu-arm
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/.." && pwd)
cd "$root"

target=${1:-host}
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"
select_app_target "$target"

cmake --preset "$target" >/dev/null
cmake --build --preset "$target" --target special-sim sim_sample_app sim_changed_app
out=$build/fromlog
rm -rf "$out"
mkdir -p "$out"
sim=("${run[@]}" "$build/tools/special-sim/special-sim")
sample=$build/tools/special-sim/libsim_sample_app.so
changed=$build/tools/special-sim/libsim_changed_app.so
fail() {
    echo "fromlog: $*" >&2
    exit 1
}

echo "== the module's own log of the demo, at level 4 and at level 1"
NOLTDEV_LOG_LEVEL=4 "${sim[@]}" --app "$sample" examples/demo.scn >/dev/null 2>"$out/device.log"
NOLTDEV_LOG_LEVEL=1 "${sim[@]}" --app "$sample" examples/demo.scn >/dev/null 2>"$out/level1.log"
grep -c 'xml: ' "$out/device.log" >/dev/null || fail "the level-4 log holds no request document"

echo "== converted, and the same scenario from every form of the log"
# each form in a directory of its own under the same name, so that the scenarios' first
# comment (which names the log) is the same too
convert() { # DIR: converts DIR/device.log to DIR/device.scn and DIR/device.expect
    (cd "$1" && "${sim[@]}" --from-log device.log --out device) || fail "$1/device.log did not convert"
}
mkdir -p "$out/plain" "$out/kernel" "$out/syslog" "$out/crlf" "$out/mixed"
cp "$out/device.log" "$out/plain/device.log"
awk '{ printf "[%5d.%06d] %s\n", 100 + NR / 1000, (NR * 997) % 1000000, $0 }' "$out/device.log" >"$out/kernel/device.log"
sed 's/^/Nov 24 10:00:01 cam app[123]: /' "$out/device.log" >"$out/syslog/device.log"
sed 's/$/\r/' "$out/device.log" >"$out/crlf/device.log"
# another module's lines before each of the module's log calls (a call's own lines stay together)
awk '/^\[(ERROR|WARNING|DEBUG|INFO)\]/ { print "[WARNING] [net] link up, rssi -50" } { print }' \
    "$out/device.log" >"$out/mixed/device.log"
for form in plain kernel syslog crlf mixed; do
    convert "$out/$form"
    [ "$form" = plain ] || cmp "$out/plain/device.scn" "$out/$form/device.scn" ||
        fail "the $form form of the log gave another scenario"
    echo "same scenario: $form"
done
head -n 12 "$out/plain/device.scn"

echo "== replayed against the same application: every answer and report alike"
"${sim[@]}" --from-log "$out/device.log" --app "$sample" >"$out/replay.txt" ||
    { tail -n 20 "$out/replay.txt"; fail "the replay departed from the log"; }
tail -n 1 "$out/replay.txt"
"${sim[@]}" --app "$sample" --json --expect "$out/plain/device.expect" "$out/plain/device.scn" >/dev/null ||
    fail "the converted scenario does not meet its expectations"

echo "== a level-1 log: the commands it cannot replay, exit 2"
rc=0
(cd "$out" && "${sim[@]}" --from-log level1.log --out level1) 2>"$out/level1.err" || rc=$?
head -n 3 "$out/level1.err"
[ "$rc" -eq 2 ] || fail "the level-1 log exited $rc, not 2"
grep -q 'level1.log:[0-9]*: kCenPlt2Pu.*not in the log' "$out/level1.err" || fail "no command listed with its line"
grep -q 'nothing in level1.log can be replayed' "$out/level1.err" || fail "no word that nothing can be replayed"

echo "== replayed against the application with one answer changed: the departure"
rc=0
"${sim[@]}" --from-log "$out/device.log" --app "$changed" >"$out/changed.txt" || rc=$?
sed -n '/^departure:/,$p' "$out/changed.txt"
[ "$rc" -eq 1 ] || fail "the changed application's replay exited $rc, not 1"
[ "$(sed -n '/^departure:/,$p' "$out/changed.txt" | grep -c '<Result>')" -eq 2 ] ||
    fail "the departure does not show both bodies"
echo "fromlog: all checks passed ($target)"
