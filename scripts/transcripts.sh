#!/usr/bin/env bash
# Records the simulator's transcript of every examples/*.scn at log level 4, as text and
# as JSON Lines, with each run's exit status, into OUTDIR. Two recordings of the same
# behaviour are byte-identical, so `diff -r before after` shows any change on the wire or
# in the log. Builds the simulator (preset "host") when SIM is not given.
#   scripts/transcripts.sh OUTDIR
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."

if [ $# -ne 1 ]; then
    echo "usage: $0 OUTDIR" >&2
    exit 2
fi
out=$1
sim=${SIM:-build/tools/special-sim/special-sim}
if [ -z "${SIM:-}" ]; then
    [ -f build/CMakeCache.txt ] || cmake --preset host >/dev/null
    cmake --build build -j2 --target special-sim >/dev/null
fi

mkdir -p "$out"
scenarios=(examples/*.scn)
for scn in "${scenarios[@]}"; do
    name=$(basename "$scn")
    rc=0
    "$sim" --log-level 4 "$scn" >"$out/$name.txt" 2>&1 || rc=$?
    echo "exit $rc" >>"$out/$name.txt"
    rc=0
    "$sim" --json --log-level 4 "$scn" >"$out/$name.json" 2>&1 || rc=$?
    echo "exit $rc" >>"$out/$name.json"
done
echo "transcripts of ${#scenarios[@]} scenarios in $out"
