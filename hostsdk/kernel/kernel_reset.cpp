// Restores every default of the host kernel between tests.
#include "kernel_internal.h"
#include "noltdev_host.h"

extern "C" void noltdev_host_kernel_reset(void) {
    noltdev_host_msg_thread_stop();
    noltdev_kernel::ResetExtensions();
    noltdev_kernel::ResetSend();
    noltdev_kernel::ResetDevice();
    noltdev_kernel::ResetLink();
    noltdev_kernel::ResetRedirects();
    noltdev_kernel::ResetFaults();
}
