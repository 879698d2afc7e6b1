# Cross build for 32-bit little-endian MIPS, run under qemu-mipsel.
set(NOLTDEV_CROSS_TRIPLET mipsel-linux-gnu)
set(NOLTDEV_CROSS_QEMU qemu-mipsel)
set(CMAKE_SYSTEM_PROCESSOR mipsel)
include(${CMAKE_CURRENT_LIST_DIR}/cross-linux.cmake)
