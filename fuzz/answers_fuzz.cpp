// Fuzzes the platform's answers to the device's own requests: the mapped-port answer
// (XML) and the unbind answer (JSON).
#include <cstdint>

#include "fuzz_app.h"
#include "noltdev_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    special_fuzz::Start();
    special_fuzz::Reader in{data, size};
    int command = in.U8() % 2 == 0 ? 10380 : 19591;
    uint32_t seq = in.U32();
    noltdev_host_inject(3999, command, seq, reinterpret_cast<const char *>(in.data),
                        static_cast<uint32_t>(in.size));
    return 0;
}
