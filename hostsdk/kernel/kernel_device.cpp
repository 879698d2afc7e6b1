// The device as the kernel describes it: information by key, sleep and registration
// status, and the timer facility.
#include <atomic>
#include <cstring>
#include <mutex>
#include <set>
#include <string>

#include "kernel_internal.h"
#include "noltdev_host.h"
#include "noltdev_sdk_kernel_struct.h"

namespace {

constexpr const char *kDefaultSerial = "DS0000000000";

// Every serial ever configured is kept, so that a pointer handed out by
// getdevinfo stays valid whatever is configured later.
std::mutex g_serial_mu;
std::set<std::string> g_serials;
const char *g_serial = kDefaultSerial;

std::atomic<int> g_sleeping{0};
std::atomic<int> g_registered{1};
std::atomic<int> g_timer_inits{0};

} // namespace

namespace noltdev_kernel {

void ResetDevice() {
    noltdev_host_set_serial(kDefaultSerial);
    g_sleeping = 0;
    g_registered = 1;
    g_timer_inits = 0;
}

} // namespace noltdev_kernel

extern "C" {

const char *noltdev_sdk_kernel_getdevinfo_bykey(const char *key) {
    if (key == nullptr || std::strcmp(key, "dev_subserial") != 0) {
        return "";
    }
    std::lock_guard<std::mutex> lock(g_serial_mu);
    return g_serial;
}

void noltdev_host_set_serial(const char *serial) {
    std::lock_guard<std::mutex> lock(g_serial_mu);
    g_serial = g_serials.insert(serial != nullptr ? serial : "").first->c_str();
}

int noltdev_get_sleep_status(void) {
    return g_sleeping;
}
void noltdev_host_set_sleep(int sleeping) {
    g_sleeping = sleeping != 0 ? 1 : 0;
}

int noltdev_get_register_status(void) {
    return g_registered;
}
void noltdev_host_set_registered(int registered) {
    g_registered = registered != 0 ? 1 : 0;
}

int noltdev_timer_init(void) {
    ++g_timer_inits;
    return 0;
}

int noltdev_host_timer_init_count(void) {
    return g_timer_inits;
}

} // extern "C"
