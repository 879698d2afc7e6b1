// The common module's redirect service: records every registration in call order and
// answers the configured result.
#include <atomic>
#include <cstring>
#include <mutex>
#include <vector>

#include "kernel_internal.h"
#include "noltDevSDK_Common_Module_Def.h"
#include "noltdev_host.h"
#include "noltdev_sdk_kernel_error.h"

namespace {

std::mutex g_mu;
std::vector<Common_redirect_pair> g_pairs;
std::atomic<int> g_result{0};

} // namespace

namespace noltdev_kernel {

void ResetRedirects() {
    std::lock_guard<std::mutex> lock(g_mu);
    g_pairs.clear();
    g_result = 0;
}

} // namespace noltdev_kernel

extern "C" {

int noltDevSDK_Common_Module_RedirectReg(const Common_redirect_pair *pair) {
    if (pair == nullptr) {
        return NOLTDEV_SDK_KERNEL_ERR_PARAM;
    }
    std::lock_guard<std::mutex> lock(g_mu);
    g_pairs.push_back(*pair);
    int code = 0;
    return noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_REDIRECT_REG, &code) ? code : g_result.load();
}

void noltdev_host_set_redirect_result(int code) {
    g_result = code;
}

int noltdev_host_redirect_count(void) {
    std::lock_guard<std::mutex> lock(g_mu);
    return static_cast<int>(g_pairs.size());
}

int noltdev_host_redirect_get(int i, uint32_t *command_id, uint32_t *domain_id, char type[32]) {
    std::lock_guard<std::mutex> lock(g_mu);
    if (i < 0 || static_cast<size_t>(i) >= g_pairs.size()) {
        return -1;
    }
    const Common_redirect_pair &pair = g_pairs[i];
    if (command_id != nullptr) {
        *command_id = pair.command_id;
    }
    if (domain_id != nullptr) {
        *domain_id = pair.domain_id;
    }
    if (type != nullptr) {
        std::memcpy(type, pair.type, sizeof pair.type);
    }
    return 0;
}

} // extern "C"
