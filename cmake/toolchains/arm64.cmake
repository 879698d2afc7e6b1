# Cross build for 64-bit ARM (armv8-a, the Cortex-A53/A55 class), run under qemu-aarch64.
set(NOLTDEV_CROSS_TRIPLET aarch64-linux-gnu)
set(NOLTDEV_CROSS_QEMU qemu-aarch64)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/cross-linux.cmake)
