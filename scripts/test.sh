#!/usr/bin/env bash
# Installs what is missing, builds and runs the whole test suite for one preset:
#   scripts/test.sh            the PC build with gcc (preset "host", build dir build/)
#   scripts/test.sh asan       clang with AddressSanitizer and UndefinedBehaviorSanitizer
#   scripts/test.sh armhf      the 32-bit ARM cross build, the suite under qemu-arm
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$here/.."

preset=${1:-host}
case "$preset" in
host | asan) bash scripts/install-deps.sh ;;
armhf) bash scripts/install-armhf.sh ;;
*)
    echo "usage: $0 [host|asan|armhf]" >&2
    exit 2
    ;;
esac

cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset"
