#!/usr/bin/env bash
# Installs the host build, test and analysis packages that are missing (Debian 12, root).
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"

apt_install_missing \
    cmake make g++ clang-14 libclang-rt-14-dev clang-format-14 \
    libcjson-dev libpugixml-dev libgtest-dev libgmock-dev libbenchmark-dev \
    valgrind gcovr pkg-config binutils file abigail-tools
