#!/usr/bin/env bash
# A device build against the SDK's own interface headers (-DNOLTDEV_SDK_HEADERS=DIR):
# with a set laid out differently from the project's copies (other directories; from
# tests/sdk_headers_alt, other private members in the XML class and other padding in
# the records the module passes through), the configure-time probe passes and the module
# builds; with the same set missing one member the module uses, configure fails and
# names it.
#   scripts/sdk_headers.sh
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."
bash scripts/install-deps.sh

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
device=(-DNOLTDEV_BUILD_HOST_SDK=OFF -DNOLTDEV_BUILD_TESTS=OFF -DNOLTDEV_WERROR=ON)

# tests/sdk_headers_alt holds the headers that differ; the others are the project's,
# put at that set's places.
headers=$work/headers
cp -r tests/sdk_headers_alt "$headers"
cp microkernel/inc/base_typedef.h microkernel/inc/noltdev_sdk_kernel_error.h \
    microkernel/inc/noltDevSDK_Common_Module_Def.h "$headers/kernel/inc/"
mkdir -p "$headers/services/status"
cp subcore/noltDevSDK_report_status.h "$headers/services/status/"
cp userpace/src/comm/log/log_ctrl.h "$headers/common/"

echo "== the module against tests/sdk_headers_alt"
cmake -S . -B "$work/alt" "${device[@]}" -DNOLTDEV_SDK_HEADERS="$headers" >"$work/alt.log" 2>&1 || {
    cat "$work/alt.log"
    exit 1
}
grep 'SDK headers from' "$work/alt.log"
cmake --build "$work/alt" -j2 >"$work/alt-build.log" 2>&1 || {
    cat "$work/alt-build.log"
    exit 1
}
echo "built: $(ls "$work"/alt/libnoltDevSDK_special.so.*.*.*)"

echo "== the same set without noltDevSDK_Shadow_Service_S::usResetReportAll"
cp -r "$headers" "$work/missing"
sed -i '/usResetReportAll;/d' "$work/missing/services/shadow/noltDevSDK_shadow.h"
if cmake -S . -B "$work/missing-build" "${device[@]}" -DNOLTDEV_SDK_HEADERS="$work/missing" >"$work/missing.log" 2>&1; then
    echo "configure accepted a header set that lacks a member the module uses" >&2
    exit 1
fi
if ! grep -q 'noltDevSDK_Shadow_Service_S::usResetReportAll' "$work/missing.log"; then
    cat "$work/missing.log" >&2
    echo "configure failed without naming the missing member" >&2
    exit 1
fi
grep -A5 '^CMake Error' "$work/missing.log"
echo "sdk headers: passed"
