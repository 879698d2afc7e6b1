#!/usr/bin/env bash
# Installs one cross target's toolchain, that architecture's multiarch builds of the
# libraries (cJSON, pugixml, GoogleTest) and qemu-user when they are missing (Debian 12,
# root). Never installs g++-multilib: Debian makes it conflict with the cross compilers.
#   scripts/install-cross.sh ARCH      ARCH: armhf, armel, mipsel, s390x or arm64 (Debian's names)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"

arch=${1:-}
triplet=$(cross_triplet "$arch") || {
    echo "usage: $0 armhf|armel|mipsel|s390x|arm64" >&2
    exit 2
}

if ! dpkg --print-foreign-architectures | grep -qx "$arch"; then
    if [ "$(id -u)" -ne 0 ]; then
        echo "the $arch architecture is not enabled (run as root)" >&2
        exit 1
    fi
    dpkg --add-architecture "$arch"
    # the new architecture's lists are fetched by the next apt-get update
    apt_update
fi

apt_install_missing \
    cmake make pkg-config "binutils-$triplet" "g++-$triplet" qemu-user \
    "libcjson-dev:$arch" "libpugixml-dev:$arch" "libgtest-dev:$arch" abigail-tools
