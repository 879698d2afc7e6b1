#!/usr/bin/env bash
# Installs the 32-bit ARM cross toolchain, the armhf builds of the libraries and qemu-user
# when they are missing (Debian 12, root). Never installs g++-multilib: Debian makes it
# conflict with the cross compiler.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"

if ! dpkg --print-foreign-architectures | grep -qx armhf; then
    if [ "$(id -u)" -ne 0 ]; then
        echo "the armhf architecture is not enabled (run as root)" >&2
        exit 1
    fi
    dpkg --add-architecture armhf
    # the new architecture's lists are fetched by the next apt-get update
    apt_update
fi

apt_install_missing \
    cmake make pkg-config binutils-arm-linux-gnueabihf g++-arm-linux-gnueabihf qemu-user \
    libcjson-dev:armhf libpugixml-dev:armhf libgtest-dev:armhf abigail-tools
