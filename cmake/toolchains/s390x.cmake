# Cross build for s390x, the big-endian target (64-bit pointers), run under qemu-s390x.
set(NOLTDEV_CROSS_TRIPLET s390x-linux-gnu)
set(NOLTDEV_CROSS_QEMU qemu-s390x)
set(CMAKE_SYSTEM_PROCESSOR s390x)
include(${CMAKE_CURRENT_LIST_DIR}/cross-linux.cmake)
