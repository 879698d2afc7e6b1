# Cross build for 32-bit ARM (hard float) embedded Linux with Debian's cross compiler and
# the multiarch :armhf libraries (scripts/install-armhf.sh installs both). Programs built
# here, the test suite included, run under qemu-arm.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(NOLTDEV_ARMHF_TRIPLET arm-linux-gnueabihf)
set(CMAKE_C_COMPILER ${NOLTDEV_ARMHF_TRIPLET}-gcc)
set(CMAKE_CXX_COMPILER ${NOLTDEV_ARMHF_TRIPLET}-g++)
# Debian keeps the armhf libraries and their CMake packages under /usr/lib/<triplet>.
set(CMAKE_LIBRARY_ARCHITECTURE ${NOLTDEV_ARMHF_TRIPLET})

# The cross C library lives under /usr/<triplet>; qemu-arm takes the loader from there.
# The C runtime must then come from there too: the multiarch libc6:armhf, which the :armhf
# libraries pull in, is otherwise found first through ld.so.cache, and a loader and a libc
# from two different builds crash as soon as a thread starts.
find_program(NOLTDEV_QEMU_ARM qemu-arm)
if(NOLTDEV_QEMU_ARM)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${NOLTDEV_QEMU_ARM} -L /usr/${NOLTDEV_ARMHF_TRIPLET}
      -E LD_LIBRARY_PATH=/usr/${NOLTDEV_ARMHF_TRIPLET}/lib)
endif()

# Host programs from the host, everything linked into a target from the armhf tree.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# pkg-config (the sample application's check) must see only armhf .pc files.
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/${NOLTDEV_ARMHF_TRIPLET}/pkgconfig:/usr/share/pkgconfig)
