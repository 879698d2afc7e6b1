#!/usr/bin/env bash
# Runs the module inside the host SDK: the simulator on the demo scenario when it is part
# of the tree, otherwise the test suite's end-to-end cases. Installs what is missing and
# builds first (preset "host", build dir build/).
#   scripts/demo.sh [scenario]     default examples/demo.scn
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."

scenario=${1:-examples/demo.scn}
bash scripts/install-deps.sh
cmake --preset host >/dev/null

if [ -f tools/special-sim/CMakeLists.txt ] && [ -f "$scenario" ]; then
    cmake --build --preset host --target special-sim
    exec build/tools/special-sim/special-sim "$scenario"
fi

echo "special-sim is not part of this tree; running the end-to-end tests instead"
cmake --build --preset host
# the platform commands injected through the kernel, answered and checked end to end
e2e='/Command\.|[Ee]nd[Tt]o[Ee]nd'
if ctest --test-dir build -N -R "$e2e" | grep -q 'Total Tests: [1-9]'; then
    exec ctest --test-dir build -R "$e2e" --output-on-failure -V
fi
echo "no end-to-end tests found; running the whole suite"
exec ctest --preset host
