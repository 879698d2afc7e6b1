# Helpers shared by the scripts: package checks and apt-get runs that wait for the dpkg
# lock instead of failing when another install is under way.
# shellcheck shell=bash

# Prints the packages among "$@" that dpkg does not report as installed for the
# architecture each needs: "name:arch" for a cross target's, a bare name for this
# machine's. dpkg answers a bare name with whichever architecture it holds (a cross
# target's library alone included), so the question always names one; packages of
# architecture "all" answer to ":all".
missing_packages() {
    local pkg name arch host status
    host=$(dpkg --print-architecture)
    for pkg in "$@"; do
        name=${pkg%%:*} arch=$host
        [ "$name" = "$pkg" ] || arch=${pkg#*:}
        # one of the two names always matches nothing, and dpkg-query then exits 1
        status=$(dpkg-query -W -f='${Status}\n' "$name:$arch" "$name:all" 2>/dev/null || true)
        if [[ $status != *"install ok installed"* ]]; then
            printf '%s\n' "$pkg"
        fi
    done
}

# Refreshes the package lists. A list that fails to download (a mirror in the middle of a
# sync) is retried once and then left to the install step, which fails only when a
# package it needs is really absent.
apt_update() {
    local apt=(apt-get -o DPkg::Lock::Timeout=600 -q)
    if ! "${apt[@]}" update; then
        sleep 10
        "${apt[@]}" update || echo "warning: some package lists failed to refresh" >&2
    fi
}

# Installs "$@" with apt-get when any of them is missing; refreshes the lists once.
apt_install_missing() {
    local missing
    missing=$(missing_packages "$@")
    if [ -z "$missing" ]; then
        return 0
    fi
    if [ "$(id -u)" -ne 0 ]; then
        echo "missing packages (run as root to install): $(echo "$missing" | tr '\n' ' ')" >&2
        return 1
    fi
    echo "installing: $(echo "$missing" | tr '\n' ' ')"
    local apt=(apt-get -o DPkg::Lock::Timeout=600 -y -q)
    export DEBIAN_FRONTEND=noninteractive
    apt_update
    # shellcheck disable=SC2086
    "${apt[@]}" install --no-install-recommends $missing
}

# Prints the GNU triplet of Debian architecture "$1" among the cross targets the project
# builds for (cmake/toolchains/<arch>.cmake); fails for any other name.
cross_triplet() {
    case "${1:-}" in
    armhf) echo arm-linux-gnueabihf ;;
    armel) echo arm-linux-gnueabi ;;
    mipsel) echo mipsel-linux-gnu ;;
    s390x) echo s390x-linux-gnu ;;
    arm64) echo aarch64-linux-gnu ;;
    *) return 1 ;;
    esac
}

# Sets up the scripts that build an application against the module for target "$1"
# ("host" or "armhf"): installs what is missing and sets build (the preset's build
# directory), cc (the C compiler), cmake_args (for a separate CMake project), run (how a
# target program is started: qemu-arm with the cross loader and its own C runtime, as
# the toolchain file's emulator) and pc_libdir (pkg-config's system directories).
# Any other target: prints the caller's usage and exits 2.
select_app_target() {
    local root
    root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
    case "$1" in
    host)
        bash "$root/scripts/install-deps.sh" suite python
        build=$root/build cc=(gcc) cmake_args=() run=() pc_libdir=
        ;;
    armhf)
        bash "$root/scripts/install-cross.sh" armhf
        build=$root/build-armhf cc=(arm-linux-gnueabihf-gcc)
        cmake_args=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchains/armhf.cmake")
        run=(qemu-arm -L /usr/arm-linux-gnueabihf -E LD_LIBRARY_PATH=/usr/arm-linux-gnueabihf/lib)
        pc_libdir=/usr/lib/arm-linux-gnueabihf/pkgconfig:/usr/share/pkgconfig
        ;;
    *)
        echo "usage: $0 [host|armhf]" >&2
        exit 2
        ;;
    esac
}

# Prints the elapsed seconds since "$1" (a value of $SECONDS).
elapsed_since() {
    echo $((SECONDS - $1))
}
