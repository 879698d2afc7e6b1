// Outbound messages: noltdev_sdk_kernel_send copies each message and hands it to the
// sink installed through the control API, one call at a time, and counts what was sent
// per command so that a test can wait for answers sent from other threads.
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <map>
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

// Messages sent per command id since the last reset.
std::mutex g_count_mu;
std::condition_variable g_counted;
std::map<uint32_t, int> g_sent;

void CountSent(uint32_t command_id) {
    {
        std::lock_guard<std::mutex> lock(g_count_mu);
        g_sent[command_id]++;
    }
    g_counted.notify_all();
}

} // namespace

namespace noltdev_kernel {

void ResetSend() {
    noltdev_host_set_sink(nullptr, nullptr);
    std::lock_guard<std::mutex> lock(g_count_mu);
    g_sent.clear();
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
    int rc = g_sink != nullptr ? g_sink(&out, g_sink_user) : 0;
    CountSent(out.command_id);
    return rc;
}

int noltdev_host_wait_sent(uint32_t command_id, int count, int timeout_ms) {
    noltdev_host_drain();
    std::unique_lock<std::mutex> lock(g_count_mu);
    g_counted.wait_for(lock, std::chrono::milliseconds(timeout_ms > 0 ? timeout_ms : 0),
                       [command_id, count] { return g_sent[command_id] >= count; });
    return g_sent[command_id];
}

void noltdev_host_set_sink(noltdev_host_sink_fn fn, void *user) {
    std::lock_guard<std::recursive_mutex> lock(g_sink_mu);
    g_sink = fn;
    g_sink_user = user;
}

} // extern "C"
