# The part every cross build shares, included by the per-target toolchain files
# (armhf.cmake, armel.cmake, ...), which set first:
#   NOLTDEV_CROSS_TRIPLET   the GNU triplet of Debian's cross compiler (arm-linux-gnueabihf)
#   NOLTDEV_CROSS_QEMU      the qemu-user program that runs that code (qemu-arm)
#   CMAKE_SYSTEM_PROCESSOR
# Debian's cross compiler and the multiarch libraries of that architecture build
# everything (scripts/install-cross.sh installs both); programs built here, the test suite
# included, run under qemu-user.
set(CMAKE_SYSTEM_NAME Linux)

set(CMAKE_C_COMPILER ${NOLTDEV_CROSS_TRIPLET}-gcc)
set(CMAKE_CXX_COMPILER ${NOLTDEV_CROSS_TRIPLET}-g++)
# Debian keeps the multiarch libraries and their CMake packages under /usr/lib/<triplet>.
set(CMAKE_LIBRARY_ARCHITECTURE ${NOLTDEV_CROSS_TRIPLET})

# The cross C library lives under /usr/<triplet>; qemu takes the loader from there. The C
# runtime must then come from there too: the multiarch libc6 of that architecture, which
# the multiarch libraries pull in, is otherwise found first through ld.so.cache, and a
# loader and a libc from two different builds crash as soon as a thread starts.
find_program(NOLTDEV_QEMU ${NOLTDEV_CROSS_QEMU})
if(NOLTDEV_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${NOLTDEV_QEMU} -L /usr/${NOLTDEV_CROSS_TRIPLET}
      -E LD_LIBRARY_PATH=/usr/${NOLTDEV_CROSS_TRIPLET}/lib)
endif()

# Host programs from the host, everything linked into a target from the target's tree.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# pkg-config (the sample application's check) must see only the target's .pc files.
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/${NOLTDEV_CROSS_TRIPLET}/pkgconfig:/usr/share/pkgconfig)
