// Outbound messages: noltdev_sdk_kernel_send copies each message and hands it to the
// sink installed through the control API, one call at a time.
#include <cstring>
#include <mutex>
#include <string>

#include "kernel_internal.h"
#include "noltdev_host.h"
#include "noltdev_sdk_kernel_struct.h"

namespace {

// Guards the sink and serialises its calls: once set_sink returns, the previous sink
// is never called again. Recursive so that a sink may send or replace itself.
std::recursive_mutex g_sink_mu;
noltdev_host_sink_fn g_sink = nullptr;
void *g_sink_user = nullptr;

} // namespace

namespace noltdev_kernel {

void ResetSend() {
    noltdev_host_set_sink(nullptr, nullptr);
}

} // namespace noltdev_kernel

extern "C" {

int noltdev_sdk_kernel_send(const noltdev_sdk_kernel_pubmsg *msg) {
    if (msg == nullptr) {
        return NOLTDEV_SDK_KERNEL_ERR_PARAM;
    }
    int code = 0;
    if (noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_KERNEL_SEND, &code)) {
        return code;
    }
    if (!noltdev_kernel::LinkUp()) {
        return NOLTDEV_SDK_KERNEL_ERR_SEND; // nothing reaches the platform while the link is down
    }
    std::string body;
    if (!noltdev_kernel::CopyBody(reinterpret_cast<const char *>(msg->msg_body), msg->msg_body_len, body)) {
        return NOLTDEV_SDK_KERNEL_ERR_PARAM;
    }
    std::string version(msg->command_ver, strnlen(msg->command_ver, sizeof msg->command_ver));

    noltdev_host_message out = {};
    out.domain_id = msg->msg_domain_id;
    out.command_id = msg->msg_command_id;
    out.seq = msg->msg_seq;
    out.response = msg->msg_response;
    out.command_ver = version.c_str();
    out.body = body.c_str();
    out.body_len = static_cast<uint32_t>(body.size());

    std::lock_guard<std::recursive_mutex> lock(g_sink_mu);
    return g_sink != nullptr ? g_sink(&out, g_sink_user) : 0;
}

void noltdev_host_set_sink(noltdev_host_sink_fn fn, void *user) {
    std::lock_guard<std::recursive_mutex> lock(g_sink_mu);
    g_sink = fn;
    g_sink_user = user;
}

} // extern "C"
