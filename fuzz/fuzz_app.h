// The application and platform side shared by the fuzz harnesses: the module is brought
// up once inside the host SDK with an application that accepts everything and answers
// state queries from bytes the fuzzer chose.
#pragma once

#include <cstddef>
#include <cstdint>

namespace special_fuzz {

// Starts the module once per process (quiet log, counting sink).
void Start();
// Bytes that get_runtime_info copies into every record it is asked for (cycled).
void SetRuntimeBytes(const uint8_t *data, size_t size);
// Number of messages the kernel has accepted so far.
uint64_t SentCount();
// Waits (bounded) until at least n messages have been sent; false on time-out.
bool WaitForSent(uint64_t n, int timeout_ms);

// Reads fixed-size values off the front of the input.
struct Reader {
    const uint8_t *data;
    size_t size;
    uint32_t U32();
    uint8_t U8();
};

} // namespace special_fuzz
