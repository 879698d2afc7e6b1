#!/usr/bin/env bash
# Installs the PC packages of the named sets that are missing (Debian 12, root). Each
# script names the sets its own job needs, in one call; no set: all of them.
#   scripts/install-deps.sh [SET...]
#     module    the module alone: CMake, gcc, pkg-config, cJSON
#     sim       module + pugixml: the host SDK and special-sim (what the demo needs)
#     suite     sim + GoogleTest and abidiff: the test suite with its ABI check
#     clang     clang 14 and its sanitizer runtimes (ASan, TSan, libFuzzer)
#     valgrind  valgrind memcheck
#     coverage  gcovr
#     bench     Google Benchmark
#     docs      Doxygen
#     gates     clang-format 14, cppcheck, pmccabe
#     python    Python 3 (the fuzzers' seeds, the JUnit check of the qualification)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"

all_sets=(module sim suite clang valgrind coverage bench docs gates python)

# Prints the packages of set "$1"; fails for an unknown name.
set_packages() {
    case "$1" in
    module) echo cmake make g++ pkg-config binutils libcjson-dev ;;
    sim) echo "$(set_packages module)" libpugixml-dev ;;
    suite) echo "$(set_packages sim)" libgtest-dev libgmock-dev abigail-tools ;;
    clang) echo clang-14 libclang-rt-14-dev ;;
    valgrind) echo valgrind ;;
    coverage) echo gcovr ;;
    bench) echo libbenchmark-dev ;;
    docs) echo doxygen ;;
    gates) echo clang-format-14 clang-tidy-14 cppcheck pmccabe python3 ;;
    python) echo python3 ;;
    *) return 1 ;;
    esac
}

[ $# -gt 0 ] || set -- "${all_sets[@]}"
packages=()
for name in "$@"; do
    list=$(set_packages "$name") || {
        echo "unknown package set: $name (sets: ${all_sets[*]})" >&2
        exit 2
    }
    read -ra set_list <<<"$list"
    packages+=("${set_list[@]}")
done
apt_install_missing "${packages[@]}"
