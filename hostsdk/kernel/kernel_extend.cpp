// The extension table (one extension per domain id) and what reaches an extension:
// platform messages on its data-route callback and kernel events on its event callback.
#include <map>
#include <mutex>
#include <vector>

#include "kernel_internal.h"
#include "noltdev_host.h"
#include "noltdev_sdk_kernel_struct.h"

namespace {

std::mutex g_table_mu;
std::map<int, noltdev_sdk_kernel_extend> g_table;
int g_load_result = 0;

// Held for every delivery and event, so that an extension never sees two at once. A
// callback may itself inject or raise an event on its own thread.
std::recursive_mutex g_delivery_mu;

// Calls reach(ext) with a copy of the domain's extension, under the delivery lock.
template <class Reach> int ReachExtension(int domain_id, Reach reach) {
    noltdev_sdk_kernel_extend ext;
    {
        std::lock_guard<std::mutex> lock(g_table_mu);
        auto it = g_table.find(domain_id);
        if (it == g_table.end()) {
            return NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN;
        }
        ext = it->second;
    }
    std::lock_guard<std::recursive_mutex> lock(g_delivery_mu);
    reach(ext);
    return 0;
}

} // namespace

namespace noltdev_kernel {

int Deliver(int domain_id, int command_id, uint32_t seq, Body &body) {
    int rc = ReachExtension(domain_id, [&](const noltdev_sdk_kernel_extend &ext) {
        if (ext.noltdev_sdk_kernel_extend_data_route == nullptr) {
            return;
        }
        noltdev_sdk_kernel_submsg msg = {};
        msg.msg_seq = seq;
        msg.buf = body.data();
        msg.buf_len = static_cast<NOLTDEV_SDK_UINT32>(body.size());
        msg.msg_domain_id = domain_id;
        msg.msg_command_id = command_id;
        ext.noltdev_sdk_kernel_extend_data_route(&msg, ext.pUser);
    });
    body.Spend();
    return rc;
}

bool CopyBody(const char *body, uint32_t body_len, std::string &out) {
    if (body == nullptr && body_len != 0) {
        return false;
    }
    out.assign(body != nullptr ? body : "", body_len);
    return true;
}

int RaiseEventEverywhere(int event_type) {
    std::vector<int> domains;
    {
        std::lock_guard<std::mutex> lock(g_table_mu);
        for (const auto &row : g_table) {
            domains.push_back(row.first);
        }
    }
    int reached = 0;
    for (int domain : domains) {
        reached += noltdev_host_raise_event(domain, event_type) == 0 ? 1 : 0;
    }
    return reached;
}

void ResetExtensions() {
    std::lock_guard<std::mutex> lock(g_table_mu);
    g_table.clear();
    g_load_result = 0;
}

} // namespace noltdev_kernel

extern "C" {

int noltdev_sdk_kernel_extend_load(const noltdev_sdk_kernel_extend *ext) {
    if (ext == nullptr) {
        return NOLTDEV_SDK_KERNEL_ERR_PARAM;
    }
    int code = 0;
    if (noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_EXTEND_LOAD, &code)) {
        return code;
    }
    {
        std::lock_guard<std::mutex> lock(g_table_mu);
        if (g_load_result != 0) {
            return g_load_result;
        }
        if (!g_table.emplace(ext->domain_id, *ext).second) {
            return NOLTDEV_SDK_KERNEL_ERR_DOMAIN_EXIST;
        }
    }
    if (ext->noltdev_sdk_kernel_extend_start != nullptr) {
        ext->noltdev_sdk_kernel_extend_start(ext->pUser);
    }
    return 0;
}

void noltdev_host_set_extend_load_result(int code) {
    std::lock_guard<std::mutex> lock(g_table_mu);
    g_load_result = code;
}

int noltdev_host_domain_loaded(int domain_id) {
    std::lock_guard<std::mutex> lock(g_table_mu);
    return g_table.count(domain_id) != 0 ? 1 : 0;
}

int noltdev_host_inject(int domain_id, int command_id, uint32_t seq, const char *body, uint32_t body_len) {
    noltdev_kernel::Body copy;
    if (!copy.Assign(body, body_len)) {
        return NOLTDEV_SDK_KERNEL_ERR_PARAM;
    }
    return noltdev_kernel::Deliver(domain_id, command_id, seq, copy);
}

int noltdev_host_raise_event(int domain_id, int event_type) {
    if (event_type < sdk_kernel_event_online || event_type > sdk_kernel_event_heartbeat_interval_changed) {
        return NOLTDEV_SDK_KERNEL_ERR_PARAM; // not a kernel event
    }
    return ReachExtension(domain_id, [&](const noltdev_sdk_kernel_extend &ext) {
        if (ext.noltdev_sdk_kernel_extend_event != nullptr) {
            noltdev_sdk_kernel_event event = {};
            event.event_type = static_cast<sdk_kernel_event_type>(event_type);
            ext.noltdev_sdk_kernel_extend_event(&event, ext.pUser);
        }
    });
}

} // extern "C"
