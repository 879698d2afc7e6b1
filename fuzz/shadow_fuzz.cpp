// Fuzzes the "Trusteeship" shadow key: a platform value of any type, length and text,
// then a read-back of the key's value into a buffer of a fuzzed size.
#include <cstdint>
#include <string>

#include "fuzz_app.h"
#include "noltdev_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    special_fuzz::Start();
    special_fuzz::Reader in{data, size};
    int type = in.U8() % 8;
    int buf_size = 1 + in.U8() * 8;
    std::string text(reinterpret_cast<const char *>(in.data), in.size);
    noltdev_host_shadow_deliver(3999, "Trusteeship", type, text.c_str(), static_cast<int>(text.size()));
    special_fuzz::SetRuntimeBytes(in.data, in.size);
    char out[4096];
    noltdev_host_shadow_read(3999, "Trusteeship", buf_size, out, sizeof out, nullptr, nullptr);
    return 0;
}
