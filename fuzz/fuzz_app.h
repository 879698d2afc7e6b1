// The application and platform side shared by the fuzz harnesses: the module is brought
// up once inside the host SDK with an application that accepts everything and answers
// state queries from bytes the fuzzer chose.
#pragma once

#include <cstddef>
#include <cstdint>

namespace special_fuzz {

// Starts the module once per process (quiet log, counting sink).
void Start();
// Bytes get_runtime_info hands out: each call takes the next ones (cycling), first one
// byte for its result code, then the record, so items see different values.
void SetRuntimeBytes(const uint8_t *data, size_t size);
// Fills len bytes from the runtime bytes, as get_runtime_info does.
void Fill(void *dst, size_t len);
// Counts custom-voice workers from the log while on: only while a custom-voice command is
// being delivered, since other commands may log a body that looks the same.
void CountWorkers(bool on);
// Waits (bounded) until every custom-voice worker started so far has sent its answer,
// so workers never pile up between inputs; false on time-out.
bool WaitForWorkers(int timeout_ms = 5000);

// Reads fixed-size values off the front of the input.
struct Reader {
    const uint8_t *data;
    size_t size;
    uint32_t U32();
    uint8_t U8();
};

} // namespace special_fuzz
