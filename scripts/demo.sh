#!/usr/bin/env bash
# Runs the module inside the host SDK: the simulator special-sim on the demo scenario.
# Installs only the packages the simulator needs when they are missing (no test, analysis
# or cross tools), and builds it alone, tests off, in build-demo/.
#   scripts/demo.sh [scenario]     default examples/demo.scn
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."

scenario=${1:-examples/demo.scn}
bash scripts/install-deps.sh sim
build="build-demo"
cmake --preset host -B "$build" -DNOLTDEV_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j2 --target special-sim
exec "$build/tools/special-sim/special-sim" "$scenario"
