#!/usr/bin/env bash
# The soak: the simulator's demo device under a seeded random mix of every command,
# status change, event, shadow value and application request, with an init/fini of the
# module every 3000 steps, for SECONDS (default 60, the CI run). Builds special-soak
# first (preset "host", build dir build/).
#   scripts/soak.sh [SECONDS]     SOAK_SEED (default 1), SOAK_STEPS (steps per cycle,
#                                 default 3000), SOAK_RSS_BOUND_KIB (default 2048)
# A long run, at low priority:  nice -n 15 scripts/soak.sh 1800
# Its last line: "soak: N steps, N commands answered, 0 lost, RSS start X KiB end Y KiB,
# threads start A end B". Exits non-zero on a lost answer, an unexpected level-1 log
# line, RSS growth beyond the bound after the first cycles, or a thread left behind.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."

seconds=${1:-60}
bash scripts/install-deps.sh suite
cmake --preset host >/dev/null
cmake --build --preset host --target special-soak
exec build/tools/special-sim/special-soak "$seconds" examples/demo.scn "${SOAK_SEED:-1}" "${SOAK_STEPS:-3000}" \
    "${SOAK_RSS_BOUND_KIB:-2048}"
