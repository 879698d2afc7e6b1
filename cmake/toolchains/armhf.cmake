# Cross build for 32-bit ARM, hard float (armv7), run under qemu-arm.
set(NOLTDEV_CROSS_TRIPLET arm-linux-gnueabihf)
set(NOLTDEV_CROSS_QEMU qemu-arm)
set(CMAKE_SYSTEM_PROCESSOR arm)
include(${CMAKE_CURRENT_LIST_DIR}/cross-linux.cmake)
