/* Domain registration with the microkernel and routing of incoming platform messages. */
#ifndef SPECIAL_EXTERN_H
#define SPECIAL_EXTERN_H

#include "noltdev_sdk_kernel_struct.h"

/* Loads the extension, registers the redirect rows, starts the kernel timers. 0, or the
 * kernel's code when it refuses the domain. */
int special_extern_init(void);
/* Does nothing: the domain stays loaded. */
int special_extern_fini(void);

void special_extend_start_cb(NOLTDEV_SDK_PTR pUser);
void special_extend_stop_cb(NOLTDEV_SDK_PTR pUser);
void special_extend_data_route_cb(noltdev_sdk_kernel_submsg *msg, NOLTDEV_SDK_PTR pUser);
void special_extend_event_cb(noltdev_sdk_kernel_event *event, NOLTDEV_SDK_PTR pUser);

#endif
