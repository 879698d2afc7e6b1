# Cross build for 32-bit ARM, soft float (armv5te), run under qemu-arm.
set(NOLTDEV_CROSS_TRIPLET arm-linux-gnueabi)
set(NOLTDEV_CROSS_QEMU qemu-arm)
set(CMAKE_SYSTEM_PROCESSOR arm)
include(${CMAKE_CURRENT_LIST_DIR}/cross-linux.cmake)
