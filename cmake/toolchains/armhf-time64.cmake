# Cross build for 32-bit ARM, hard float, with a 64-bit time_t and file offsets (the
# layout of a C library built for dates past 2038), run under qemu-arm.
set(NOLTDEV_CROSS_TRIPLET arm-linux-gnueabihf)
set(NOLTDEV_CROSS_QEMU qemu-arm)
set(CMAKE_SYSTEM_PROCESSOR arm)
# glibc picks the 64-bit time_t and off_t interfaces from these two macros.
set(CMAKE_C_FLAGS_INIT "-D_TIME_BITS=64 -D_FILE_OFFSET_BITS=64")
set(CMAKE_CXX_FLAGS_INIT "-D_TIME_BITS=64 -D_FILE_OFFSET_BITS=64")
include(${CMAKE_CURRENT_LIST_DIR}/cross-linux.cmake)
