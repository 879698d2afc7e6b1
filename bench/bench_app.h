// The application and platform side of the benchmarks: a device whose state never
// changes, answering every state query from fixed records, and a sink that keeps the
// last message sent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "noltDevSDK_special_def.h"

namespace special_bench {

// One state query the status items make: its type, the record size and the selector the
// module sets before asking (the switch type; -1 for none).
struct Query {
    int type;
    size_t size;
    int selector;
};
// The queries one poll of all items makes, in registration order.
const std::vector<Query> &PollQueries();

// Starts the module once in the host SDK with the steady device.
void Start();
// The steady device's get_runtime_info (also used by the floors).
int GetRuntimeInfo(noltDevSDK_special_runtime_info *info);
// The text of the last message sent, the bytes and the messages sent so far.
std::string LastSent();
size_t SentBytes();
uint64_t SentMessages();
// Blocks until more than count messages have been sent (answers from worker threads).
void WaitSentMoreThan(uint64_t count);

} // namespace special_bench
