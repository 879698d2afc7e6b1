/* Result codes of the SDK microkernel. */
#ifndef NOLTDEV_SDK_KERNEL_ERROR_H
#define NOLTDEV_SDK_KERNEL_ERROR_H

typedef enum noltdev_sdk_kernel_error {
    NOLTDEV_SDK_KERNEL_OK = 0,
    NOLTDEV_SDK_KERNEL_ERR_PARAM = 0x10000001,        /* a NULL or malformed argument */
    NOLTDEV_SDK_KERNEL_ERR_DOMAIN_EXIST = 0x10000002, /* an extension with that domain id is loaded */
    NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN = 0x10000003,    /* no extension for the message's domain */
    NOLTDEV_SDK_KERNEL_ERR_SEND = 0x10000004,         /* the link refused the message */
    NOLTDEV_SDK_KERNEL_ERR_NOMEM = 0x10000005,        /* out of memory */
    NOLTDEV_SDK_KERNEL_ERR_REFUSED = 0x10000006       /* the kernel refused the request */
} noltdev_sdk_kernel_error;

#endif
