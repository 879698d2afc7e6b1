// Fuzzes the status items and the application's own requests with a careless application:
// every record it is asked for or hands over is filled from the input (counts beyond the
// buffer, unterminated texts), then the items are polled, forced and reset.
#include <cstdint>
#include <cstring>

#include "fuzz_app.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_host.h"

namespace {
const int kItems[] = {31, 101, 102, 105, 32,  33,  37,  38,  39,  40,  36,
                      42, 45,  92,  96,  118, 103, 104, 119, 123, 124, 122};

// The requests the application sends, with records filled from the input; the 4G page's
// count always matches its rows (they are the application's memory).
void SendRequests() {
    noltDevSDK_special_flow_counting_seg_count segs;
    special_fuzz::Fill(&segs, sizeof segs);
    noltDevSDK_special_report_flow_counting(&segs);
    noltDevSDK_special_send_verification_code code;
    special_fuzz::Fill(&code, sizeof code);
    noltDevSDK_special_query_voddns_mapped_port domain;
    special_fuzz::Fill(&domain, sizeof domain);
    noltDevSDK_special_4G_flow_info rows[4];
    special_fuzz::Fill(rows, sizeof rows);
    uint8_t count = 0;
    special_fuzz::Fill(&count, 1);
    noltDevSDK_special_4G_flow_info_page page = {count % 5, rows};
    noltDevSDK_special_msg msgs[] = {{NOLTDEVSDK_SPECIAL_UNBIND_USER, nullptr},
                                     {NOLTDEVSDK_SPECIAL_SEND_VERIFICATION_CODE, &code},
                                     {NOLTDEVSDK_SPECIAL_QUERY_VODDNS_MAPPED_PORT, &domain},
                                     {NOLTDEVSDK_SPECIAL_TRANS_4G_FLOW_INFO, &page}};
    for (noltDevSDK_special_msg &m : msgs) {
        noltDevSDK_special_send_msg(&m);
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    special_fuzz::Start();
    special_fuzz::Reader in{data, size};
    uint32_t force_mask = in.U32();
    special_fuzz::SetRuntimeBytes(in.data, in.size);
    noltdev_host_report_poll();
    for (unsigned i = 0; i < sizeof kItems / sizeof kItems[0]; ++i) {
        if (force_mask >> i & 1) {
            noltDevSDK_report_set_force_report(kItems[i]);
        }
    }
    noltdev_host_report_poll();
    noltDevSDK_special_report_trusteeship();
    if (force_mask >> 30 & 1) {
        SendRequests();
    }
    if (force_mask >> 31 & 1) {
        noltdev_host_report_reset_all();
        noltdev_host_report_poll();
    }
    return 0;
}
