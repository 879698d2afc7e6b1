#!/usr/bin/env bash
# Builds the module and the host SDK, installs them into the build's stage/ prefix, then
# builds the C sample application against the installed package twice, once through the
# CMake package and once through pkg-config, and runs both.
#   scripts/sample.sh            for the PC (preset "host")
#   scripts/sample.sh armhf      for 32-bit ARM, run under qemu-arm
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/.." && pwd)
cd "$root"

target=${1:-host}
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"
select_app_target "$target"

stage=$build/stage
out=$build/sample_app

cmake --preset "$target" >/dev/null
cmake --build --preset "$target"
rm -rf "$stage" "$out"
cmake --install "$build" --prefix "$stage" >/dev/null

echo "== sample_app through the CMake package ($target)"
cmake -S examples/sample_app -B "$out" -DCMAKE_PREFIX_PATH="$stage" "${cmake_args[@]}" >/dev/null
cmake --build "$out" -j2
"${run[@]}" "$out/sample_app"

if [ "$target" = armhf ]; then
    # the installed headers carry the module's layout: the other time_t is refused
    echo "== sample_app with 64-bit time_t against the installed headers ($target): refused"
    if log=$("${cc[@]}" -std=c99 -fsyntax-only -D_TIME_BITS=64 -D_FILE_OFFSET_BITS=64 -I"$stage/include" \
        -I"$stage/include/noltdev" examples/sample_app/app.c 2>&1); then
        echo "the layout guard let a 64-bit time_t application through" >&2
        exit 1
    fi
    echo "$log" | grep -m1 "time_t_differs_from_the_module_build"
fi

echo "== sample_app through pkg-config ($target)"
pc_path=$stage/lib/pkgconfig
if [ -n "$pc_libdir" ]; then
    flags=$(PKG_CONFIG_PATH='' PKG_CONFIG_LIBDIR="$pc_path:$pc_libdir" pkg-config --cflags --libs noltdev_host)
else
    flags=$(PKG_CONFIG_PATH="$pc_path" pkg-config --cflags --libs noltdev_host)
fi
# shellcheck disable=SC2086
"${cc[@]}" -std=c99 -Wall -Wextra -Werror examples/sample_app/main.c examples/sample_app/app.c $flags -pthread \
    -Wl,-rpath,"$stage/lib" -o "$out/sample_app_pc"
"${run[@]}" "$out/sample_app_pc"
