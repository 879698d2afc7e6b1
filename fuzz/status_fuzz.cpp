// Fuzzes the status items with a careless application: every record it is asked for is
// filled from the input (counts beyond the buffer, unterminated texts), then the items
// are polled, forced and reset.
#include <cstdint>

#include "fuzz_app.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_host.h"

namespace {
const int kItems[] = {31, 101, 102, 105, 32,  33,  37,  38,  39,  40,  36,
                      42, 45,  92,  96,  118, 103, 104, 119, 123, 124, 122};
}

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
    if (force_mask >> 31 & 1) {
        noltdev_host_report_reset_all();
        noltdev_host_report_poll();
    }
    return 0;
}
