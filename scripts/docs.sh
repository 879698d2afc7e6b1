#!/usr/bin/env bash
# Builds the reference of the installed headers with Doxygen (docs/Doxyfile); any
# warning, an undocumented public declaration included, fails the run.
#   DOCS_BUILD_DIR   output directory (default build-docs); the HTML lands in its html/
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."
# shellcheck source=scripts/lib.sh
source scripts/lib.sh
bash scripts/install-deps.sh module docs

out=${DOCS_BUILD_DIR:-build-docs}
rm -rf "$out"
# The generated header as CMake makes it (version and layout of this machine's build):
# a configure of the module alone, nothing built.
cmake -S . -B "$out" -DNOLTDEV_BUILD_HOST_SDK=OFF -DNOLTDEV_BUILD_TESTS=OFF -DNOLTDEV_BUILD_TOOLS=OFF >/dev/null
version=$(sed -n 's/^#define NOLTDEVSDK_SPECIAL_VERSION_STRING "\(.*\)"/\1/p' "$out/include/noltDevSDK_special_build.h")

start=$SECONDS
rc=0
NOLTDEV_DOCS_OUT=$out NOLTDEV_DOCS_VERSION=$version doxygen docs/Doxyfile || rc=$?
warnings=$(grep -c . "$out/warnings.log" || true)
echo "doxygen: $warnings warning line(s), $(elapsed_since "$start") s, reference in $out/html/index.html"
if [ "$rc" -ne 0 ] || [ "$warnings" -ne 0 ]; then
    cat "$out/warnings.log" >&2
    exit 1
fi
