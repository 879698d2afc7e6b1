#!/usr/bin/env bash
# Builds the Debian packages of one target from one release build (CPack, the components
# of cmake/NoltdevPackage.cmake) into build-package-TARGET/packages/, then runs lintian on
# each: any error fails. Compiler flags are Debian's (dpkg-buildflags, hardening on).
#   scripts/package.sh TARGET      amd64 (the PC), armhf, armel, mipsel or arm64
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/.." && pwd)
cd "$root"
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"

target=${1:-}
case "$target" in
amd64)
    bash scripts/install-deps.sh
    toolchain=()
    ;;
armhf | armel | mipsel | arm64)
    bash scripts/install-cross.sh "$target"
    # dpkg-shlibdeps finds the target's run-time libraries in its multiarch packages
    apt_install_missing "libatomic1:$target" "libstdc++6:$target"
    toolchain=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchains/$target.cmake")
    ;;
*)
    echo "usage: $0 amd64|armhf|armel|mipsel|arm64" >&2
    exit 2
    ;;
esac
apt_install_missing lintian help2man dpkg-dev file xz-utils

build=$root/build-package-$target
export DEB_HOST_ARCH=$target DEB_BUILD_MAINT_OPTIONS=hardening=+all
# no debugging information: the packages carry stripped binaries
export DEB_CFLAGS_MAINT_STRIP=-g DEB_CXXFLAGS_MAINT_STRIP=-g
CFLAGS="$(dpkg-buildflags --get CFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
LDFLAGS=$(dpkg-buildflags --get LDFLAGS)
export CFLAGS CXXFLAGS LDFLAGS

start=$SECONDS
rm -rf "$build/packages"
cmake -S . -B "$build" "${toolchain[@]}" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DNOLTDEV_PACKAGE=ON -DNOLTDEV_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j2 >/dev/null
(cd "$build" && cpack >/dev/null)
echo "packages for $target built in $(elapsed_since "$start") s:"

rc=0
for deb in "$build"/packages/*.deb; do
    echo "== $(basename "$deb")"
    dpkg-deb -f "$deb" Package Version Architecture Multi-Arch Depends | sed 's/^/   /'
    lintian --fail-on error --tag-display-limit 0 "$deb" || rc=1
done
if [ "$rc" -ne 0 ]; then
    echo "lintian reported errors (above)" >&2
    exit 1
fi
echo "lintian: no error for $target"
