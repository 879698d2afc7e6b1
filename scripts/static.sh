#!/usr/bin/env bash
# The module as a static library for a device build (no host SDK, no pugixml): it must
# build from the options alone and show the application's link only the seven public
# functions (its internal names are made local in one prelinked object).
#   STATIC_BUILD_DIR   build directory (default build-static)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."
bash scripts/install-deps.sh module

build=${STATIC_BUILD_DIR:-build-static}
cmake -S . -B "$build" -DNOLTDEV_WERROR=ON -DCMAKE_BUILD_TYPE=MinSizeRel -DNOLTDEV_BUILD_HOST_SDK=OFF \
    -DNOLTDEV_MODULE_STATIC=ON >/dev/null
cmake --build "$build" -j2
sh tests/check_exports.sh nm "$build/libnoltDevSDK_special.a" userpace/inc/noltDevSDK_special_def.h
