/* Fixed-width base types of the SDK microkernel interface. */
#ifndef NOLTDEV_BASE_TYPEDEF_H
#define NOLTDEV_BASE_TYPEDEF_H

#include <stdint.h>

typedef uint8_t NOLTDEV_SDK_UINT8;
typedef uint16_t NOLTDEV_SDK_UINT16;
typedef uint32_t NOLTDEV_SDK_UINT32;
typedef int32_t NOLTDEV_SDK_INT32;
typedef void *NOLTDEV_SDK_PTR;

#endif
