/* The kernel common module's redirect service: routes a generic platform command whose
 * body carries a given type key to another domain. */
#ifndef NOLTDEVSDK_COMMON_MODULE_DEF_H
#define NOLTDEVSDK_COMMON_MODULE_DEF_H

#include "base_typedef.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct Common_redirect_pair {
    NOLTDEV_SDK_UINT32 command_id;
    NOLTDEV_SDK_UINT32 domain_id;
    char type[32]; /* NUL-padded type key inside the command's body */
} Common_redirect_pair;

int noltDevSDK_Common_Module_RedirectReg(const Common_redirect_pair *pair);

#ifdef __cplusplus
}
#endif

#endif
