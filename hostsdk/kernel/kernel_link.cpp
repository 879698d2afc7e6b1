// The device's link to the platform: while it is down every send fails and the device
// counts as not registered; taking it down or up raises the kernel's break or online
// event on every loaded extension.
#include <atomic>

#include "kernel_internal.h"
#include "noltdev_host.h"
#include "noltdev_sdk_kernel_error.h"
#include "noltdev_sdk_kernel_struct.h"

namespace {

std::atomic<int> g_link_up{1};

} // namespace

namespace noltdev_kernel {

bool LinkUp() {
    return g_link_up.load() != 0;
}

void ResetLink() {
    g_link_up = 1;
}

} // namespace noltdev_kernel

extern "C" {

int noltdev_host_set_link(int up) {
    int want = up != 0 ? 1 : 0;
    if (g_link_up.exchange(want) == want) {
        return 0; // already so: no event
    }
    noltdev_host_set_registered(want);
    return noltdev_kernel::RaiseEventEverywhere(want != 0 ? sdk_kernel_event_online : sdk_kernel_event_break);
}

int noltdev_host_link_up(void) {
    return g_link_up.load();
}

} // extern "C"
