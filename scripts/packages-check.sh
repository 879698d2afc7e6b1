#!/usr/bin/env bash
# The Debian packages as a user takes them in (root, Debian 12): installs the amd64
# packages with apt-get, builds the sample application against /usr through the CMake
# package and through pkg-config, qualifies it with the installed special-sim, purges the
# packages and checks that none of their files is left. Then installs the armhf
# development packages beside the amd64 ones (dpkg --add-architecture armhf), cross-builds
# the sample against them both ways, runs it under qemu-arm and purges everything again.
# Uses the packages in build-package-{amd64,armhf}/packages (scripts/package.sh makes
# them when missing).
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/.." && pwd)
cd "$root"
# shellcheck source=scripts/lib.sh
. "$here/lib.sh"

if [ "$(id -u)" -ne 0 ]; then
    echo "$0 installs packages: run it as root" >&2
    exit 1
fi
for arch in amd64 armhf; do
    compgen -G "build-package-$arch/packages/*.deb" >/dev/null || bash scripts/package.sh "$arch"
done
apt_install_missing pkg-config cmake gcc

out=$root/build-package-check
rm -rf "$out"
mkdir -p "$out"
export DEBIAN_FRONTEND=noninteractive
apt=(apt-get -o DPkg::Lock::Timeout=600 -y -q --no-install-recommends)
dev_packages=(libnoltdevsdk-special2 libnoltdevsdk-special-dev noltdev-host-sdk noltdev-host-sdk-dev)
fail() {
    echo "packages-check: $*" >&2
    exit 1
}

# Purges packages "$@" and checks that every path they listed is gone, but for the
# directories other packages own too.
purge_and_check() {
    local pkg path left=0
    for pkg in "$@"; do dpkg -L "$pkg"; done | grep -vx '/\.' | sort -u >"$out/files.txt"
    "${apt[@]}" purge "$@" >/dev/null
    while read -r path; do
        if [ -d "$path" ] && [ ! -L "$path" ] && dpkg -S "$path" >/dev/null 2>&1; then
            continue
        fi
        if [ -e "$path" ] || [ -L "$path" ]; then
            echo "left after purge: $path" >&2
            left=1
        fi
    done <"$out/files.txt"
    [ "$left" -eq 0 ] || fail "files left after purging $*"
    echo "purged $*: none of their $(wc -l <"$out/files.txt") paths left"
}

echo "== apt-get install the amd64 packages"
"${apt[@]}" install "$root"/build-package-amd64/packages/*.deb >/dev/null
names=()
for deb in build-package-amd64/packages/*.deb; do names+=("$(dpkg-deb -f "$deb" Package)"); done
dpkg-query -W "${names[@]}"

echo "== sample_app through the installed CMake package"
cmake -S examples/sample_app -B "$out/cmake" >/dev/null
cmake --build "$out/cmake" -j2 >/dev/null
"$out/cmake/sample_app"

echo "== sample_app through pkg-config"
# shellcheck disable=SC2046
gcc -std=c99 -Wall -Wextra -Werror examples/sample_app/main.c examples/sample_app/app.c \
    $(pkg-config --cflags --libs noltdev_host) -pthread -o "$out/sample_app_pc"
"$out/sample_app_pc"

echo "== the installed special-sim qualifies the sample"
man -w special-sim >/dev/null || fail "no man page for special-sim"
special-sim --qualify --app "$out/cmake/libsample_app.so" --junit "$out/sample.xml" >"$out/qualify.txt" ||
    { cat "$out/qualify.txt"; fail "the sample did not qualify with the installed simulator"; }
if grep -E '^ +(error|warning) |^(FAILED|not exercised) ' "$out/qualify.txt"; then
    fail "the sample has findings with the installed simulator"
fi
tail -1 "$out/qualify.txt"

echo "== apt-get purge"
purge_and_check "${names[@]}"

echo "== the armhf development packages beside the amd64 ones"
bash scripts/install-cross.sh armhf >/dev/null
debs=()
for pkg in "${dev_packages[@]}"; do
    debs+=("$root/build-package-amd64/packages/${pkg}_"*.deb "$root/build-package-armhf/packages/${pkg}_"*.deb)
done
"${apt[@]}" install "${debs[@]}" >/dev/null
dpkg-query -W -f='${Package}:${Architecture} ${Version}\n' "${dev_packages[@]/%/:amd64}" "${dev_packages[@]/%/:armhf}"

echo "== sample_app cross-built for armhf against them"
triplet=$(cross_triplet armhf)
run=(qemu-arm -L "/usr/$triplet" -E "LD_LIBRARY_PATH=/usr/$triplet/lib:/usr/lib/$triplet")
cmake -S examples/sample_app -B "$out/armhf" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchains/armhf.cmake" >/dev/null
cmake --build "$out/armhf" -j2 >/dev/null
"${run[@]}" "$out/armhf/sample_app"
# shellcheck disable=SC2046
"$triplet-gcc" -std=c99 -Wall -Wextra -Werror examples/sample_app/main.c examples/sample_app/app.c \
    $(PKG_CONFIG_PATH='' PKG_CONFIG_LIBDIR="/usr/lib/$triplet/pkgconfig:/usr/share/pkgconfig" \
        pkg-config --cflags --libs noltdev_host) -pthread -o "$out/sample_app_armhf_pc"
"${run[@]}" "$out/sample_app_armhf_pc"

echo "== apt-get purge (both architectures)"
purge_and_check "${dev_packages[@]/%/:amd64}" "${dev_packages[@]/%/:armhf}"
echo "packages-check: all checks passed"
