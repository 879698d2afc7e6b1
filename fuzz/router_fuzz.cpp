// Fuzzes the router: the first bytes pick a command (every routed identifier and a few
// unrouted ones), the sequence number and the sleep state; the rest is the body.
#include <cstdint>
#include <string>

#include "fuzz_app.h"
#include "noltdev_host.h"

namespace {
const int kCommands[] = {18699, 18731, 18749, 18829, 18843, 18863, 19588, 19606, 19917,     10380,
                         19591, 13451, 0,     1,     19592, 19596, 20000, -1,    0x7fffffff};
const int kCustomVoice = 18843;
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    special_fuzz::Start();
    special_fuzz::Reader in{data, size};
    int command = kCommands[in.U8() % (sizeof kCommands / sizeof kCommands[0])];
    uint32_t seq = in.U32();
    int sleeping = in.U8() % 8 == 0;
    noltdev_host_set_sleep(sleeping);
    special_fuzz::SetRuntimeBytes(in.data, in.size);
    uint64_t before = special_fuzz::SentCount();
    noltdev_host_inject(3999, command, seq, reinterpret_cast<const char *>(in.data),
                        static_cast<uint32_t>(in.size));
    if (command == kCustomVoice && !sleeping) {
        // the answer comes from a detached worker: wait for it so workers never pile up
        special_fuzz::WaitForSent(before + 1, 2000);
    }
    return 0;
}
