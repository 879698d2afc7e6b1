#!/usr/bin/env bash
# Builds the reference of the installed headers with Doxygen (docs/Doxyfile); any
# warning, an undocumented public declaration included, fails the run.
#   DOCS_BUILD_DIR   output directory (default build-docs); the HTML lands in its html/
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."
# shellcheck source=scripts/lib.sh
source scripts/lib.sh
apt_install_missing doxygen

out=${DOCS_BUILD_DIR:-build-docs}
rm -rf "$out"
mkdir -p "$out/include"
# The generated header as the 32-bit target's build makes it: the project's version and
# 4-byte time_t and pointers.
version=$(sed -n 's/^project(noltDevSDK_special VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
IFS=. read -r major minor patch <<<"$version"
sed -e "s/@PROJECT_VERSION_MAJOR@/$major/" -e "s/@PROJECT_VERSION_MINOR@/$minor/" \
    -e "s/@PROJECT_VERSION_PATCH@/$patch/" -e "s/@PROJECT_VERSION@/$version/" \
    -e "s/@NOLTDEV_SIZEOF_TIME_T@/4/" -e "s/@CMAKE_SIZEOF_VOID_P@/4/" \
    cmake/noltDevSDK_special_build.h.in >"$out/include/noltDevSDK_special_build.h"

start=$SECONDS
rc=0
NOLTDEV_DOCS_OUT=$out NOLTDEV_DOCS_VERSION=$version doxygen docs/Doxyfile || rc=$?
warnings=$(grep -c . "$out/warnings.log" || true)
echo "doxygen: $warnings warning line(s), $(elapsed_since "$start") s, reference in $out/html/index.html"
if [ "$rc" -ne 0 ] || [ "$warnings" -ne 0 ]; then
    cat "$out/warnings.log" >&2
    exit 1
fi
