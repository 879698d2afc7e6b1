#!/usr/bin/env bash
# Installs what is missing, builds and runs the whole test suite for one preset:
#   scripts/test.sh                the PC build with gcc (preset "host", build dir build/)
#   scripts/test.sh asan           clang with AddressSanitizer and UndefinedBehaviorSanitizer
#   scripts/test.sh armhf          32-bit ARM hard float, the suite under qemu-arm
#   scripts/test.sh armhf-time64   the same with a 64-bit time_t and file offsets
#   scripts/test.sh armel          32-bit ARM soft float (armv5te), under qemu-arm
#   scripts/test.sh mipsel         32-bit little-endian MIPS, under qemu-mipsel
#   scripts/test.sh s390x          big-endian s390x (64-bit), under qemu-s390x
#   scripts/test.sh arm64          64-bit ARM (aarch64), under qemu-aarch64
# The device builds (presets <target>-release) are scripts/footprint.sh's.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."

preset=${1:-host}
case "$preset" in
host) bash scripts/install-deps.sh suite ;;
asan) bash scripts/install-deps.sh suite clang ;;
armhf | armhf-time64) bash scripts/install-cross.sh armhf ;;
armel | mipsel | s390x | arm64) bash scripts/install-cross.sh "$preset" ;;
*)
    echo "usage: $0 [host|asan|armhf|armhf-time64|armel|mipsel|s390x|arm64]" >&2
    exit 2
    ;;
esac

cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset"
