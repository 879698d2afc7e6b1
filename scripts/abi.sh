#!/usr/bin/env bash
# The module's binary interface against the baseline kept in abi/<target>/: the exported
# functions (module.abi) and every public type of the header (types.abi, from the probe
# library the build makes). A change fails with abidiff's report.
#   scripts/abi.sh check BUILD_DIR      compare a build with its target's baseline
#   scripts/abi.sh update [PRESET...]   rewrite the baseline on purpose (default: host armhf arm64)
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/.." && pwd)

# The build's target name, as its CMake cache holds it.
abi_target() { sed -n 's/^NOLTDEV_ABI_TARGET:[A-Z]*=//p' "$1/CMakeCache.txt"; }

# abidw of one library, public types only, without paths.
describe() {
    abidw --no-corpus-path --no-comp-dir-path --no-show-locs --exported-interfaces-only --drop-private-types \
        --headers-dir "$root/userpace/inc" --headers-dir "$3/include" --out-file "$2" "$1"
}

check() {
    local build=$1 dir rc=0
    dir=$root/abi/$(abi_target "$build")
    abidiff "$dir/module.abi" "$build/libnoltDevSDK_special.so" || rc=1
    abidiff "$dir/types.abi" "$build/libnoltdev_abi_probe.so" || rc=1
    if [ "$rc" -ne 0 ]; then
        echo "the binary interface changed (above); if on purpose: scripts/abi.sh update" >&2
        return 1
    fi
    echo "abi ok: $(abi_target "$build")"
}

# The build directory of a preset (CMakePresets.json: "host" builds in build/).
preset_dir() { if [ "$1" = host ]; then echo "$root/build"; else echo "$root/build-$1"; fi; }

update() {
    local preset build dir
    [ $# -gt 0 ] || set -- host armhf arm64
    for preset in "$@"; do
        # a cross preset is named after its Debian architecture (armhf-time64: armhf's)
        if [ "$preset" = host ]; then bash "$here/install-deps.sh" suite; else bash "$here/install-cross.sh" "${preset%-time64}"; fi
        (cd "$root" && cmake --preset "$preset" >/dev/null &&
            cmake --build --preset "$preset" --target noltDevSDK_special noltdev_abi_probe)
        build=$(preset_dir "$preset")
        dir=$root/abi/$(abi_target "$build")
        mkdir -p "$dir"
        describe "$build/libnoltDevSDK_special.so" "$dir/module.abi" "$build"
        describe "$build/libnoltdev_abi_probe.so" "$dir/types.abi" "$build"
        echo "wrote $dir"
    done
}

case "${1:-}" in
check) check "${2:?build directory}" ;;
update) shift; update "$@" ;;
*) sed -n '2,7p' "$0" >&2; exit 2 ;;
esac
