// Brings the module up inside the host SDK for a harness that is not a test (benchmarks,
// fuzzers): a fresh kernel, a quiet log, the harness's sink and its two callbacks.
#pragma once

#include <cstring>

#include "noltDevSDK_special_def.h"
#include "noltdev_host.h"

namespace special_harness {

inline int StartModule(noltdev_host_sink_fn sink, int (*recv_msg)(noltDevSDK_special_msg_to_dev *),
                       int (*get_runtime_info)(noltDevSDK_special_runtime_info *)) {
    noltdev_host_kernel_reset();
    noltdev_host_set_log_level(0);
    noltdev_host_set_sink(sink, nullptr);
    noltDevSDK_special_init_info info;
    std::memset(&info, 0, sizeof info);
    info.cb.recv_msg = recv_msg;
    info.cb.get_runtime_info = get_runtime_info;
    return noltDevSDK_special_init(&info);
}

} // namespace special_harness
