#!/usr/bin/env bash
# Builds the Debian packages of each target named from one release build (CPack, the
# components of cmake/NoltdevPackage.cmake) into build-package-TARGET/packages/, then runs
# lintian on each: any error fails. Compiler flags are Debian's (dpkg-buildflags, hardening
# on).
#   scripts/package.sh TARGET...   amd64 (the PC), armhf, armel, mipsel, arm64; all: the five
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/.." && pwd)
cd "$root"
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"

usage() {
    echo "usage: $0 amd64|armhf|armel|mipsel|arm64|all..." >&2
    exit 2
}

# Builds target "$1"'s packages and lints them.
package_target() {
    local target=$1 toolchain build start deb rc=0
    case "$target" in
    amd64)
        bash scripts/install-deps.sh sim
        toolchain=()
        ;;
    armhf | armel | mipsel | arm64)
        bash scripts/install-cross.sh "$target"
        # dpkg-shlibdeps finds the target's run-time libraries in its multiarch packages
        apt_install_missing "libatomic1:$target" "libstdc++6:$target"
        toolchain=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchains/$target.cmake")
        ;;
    *) usage ;;
    esac

    build=$root/build-package-$target
    # Debian's flags for that architecture; no debugging information, the packages carry
    # stripped binaries
    CFLAGS="$(DEB_HOST_ARCH=$target dpkg-buildflags --get CFLAGS) $(DEB_HOST_ARCH=$target dpkg-buildflags --get CPPFLAGS)"
    CXXFLAGS="$(DEB_HOST_ARCH=$target dpkg-buildflags --get CXXFLAGS) $(DEB_HOST_ARCH=$target dpkg-buildflags --get CPPFLAGS)"
    LDFLAGS=$(DEB_HOST_ARCH=$target dpkg-buildflags --get LDFLAGS)

    start=$SECONDS
    rm -rf "$build/packages"
    CFLAGS=$CFLAGS CXXFLAGS=$CXXFLAGS LDFLAGS=$LDFLAGS cmake -S . -B "$build" "${toolchain[@]}" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr -DNOLTDEV_PACKAGE=ON -DNOLTDEV_BUILD_TESTS=OFF >/dev/null
    cmake --build "$build" -j2 >/dev/null
    (cd "$build" && cpack >/dev/null)
    echo "packages for $target built in $(elapsed_since "$start") s:"

    for deb in "$build"/packages/*.deb; do
        echo "== $(basename "$deb")"
        dpkg-deb -f "$deb" Package Version Architecture Multi-Arch Depends | sed 's/^/   /'
    done
    echo "== lintian"
    lintian --fail-on error --tag-display-limit 0 "$build"/packages/*.deb >"$build/lintian.txt" 2>&1 || rc=1
    grep -v '^running with root privileges' "$build/lintian.txt" || true
    if [ "$rc" -ne 0 ]; then
        echo "lintian reported errors for $target (above)" >&2
        return 1
    fi
    echo "lintian: no error for $target"
}

[ $# -gt 0 ] || usage
[ "$*" != all ] || set -- amd64 armhf armel mipsel arm64
apt_install_missing lintian help2man dpkg-dev file xz-utils
export DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CFLAGS_MAINT_STRIP=-g DEB_CXXFLAGS_MAINT_STRIP=-g
for target in "$@"; do
    package_target "$target"
done
