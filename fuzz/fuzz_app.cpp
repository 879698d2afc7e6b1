// The fuzz harnesses' application: accepts every platform instruction and fills state
// queries from fuzzer bytes, including counts beyond the buffer and unterminated texts.
#include "fuzz_app.h"

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <vector>

#include "noltDevSDK_special_def.h"
#include "noltdev_host.h"

namespace special_fuzz {

namespace {
std::mutex g_mu;
std::condition_variable g_cv;
uint64_t g_sent = 0;
std::vector<uint8_t> g_runtime;

int Sink(const noltdev_host_message *, void *) {
    std::lock_guard<std::mutex> lock(g_mu);
    ++g_sent;
    g_cv.notify_all();
    return 0;
}

int RecvMsg(noltDevSDK_special_msg_to_dev *msg) {
    return msg != nullptr && msg->len > 0 ? 0 : -1;
}

void Fill(void *dst, size_t len) {
    std::lock_guard<std::mutex> lock(g_mu);
    uint8_t *out = static_cast<uint8_t *>(dst);
    for (size_t i = 0; i < len; ++i) {
        out[i] = g_runtime.empty() ? 0 : g_runtime[i % g_runtime.size()];
    }
}

int GetRuntimeInfo(noltDevSDK_special_runtime_info *info) {
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP) {
        // the application allocates the deletion block and the module frees it; its count
        // always matches what was allocated (a block is the application's own memory)
        uint8_t n = 0;
        Fill(&n, 1);
        size_t size = sizeof(noltDevSDK_Special_DelTrusteeship_S) +
                      n % 8 * sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
        auto *block = static_cast<noltDevSDK_Special_DelTrusteeship_S *>(malloc(size));
        Fill(block, size);
        block->usNum = n % 8;
        info->data = block;
        return 0;
    }
    if (info->data != nullptr && info->len > 0) {
        Fill(info->data, static_cast<size_t>(info->len));
    }
    uint8_t rc = 0;
    Fill(&rc, 1);
    // mostly success, sometimes "not supported" or another failure
    return rc < 200 ? 0 : (rc < 230 ? NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT : NOLTDEVSDK_SPECIAL_CODE_FAIL);
}
} // namespace

void Start() {
    static bool started = false;
    if (started) {
        return;
    }
    started = true;
    noltdev_host_kernel_reset();
    noltdev_host_set_log_level(0);
    noltdev_host_set_sink(&Sink, nullptr);
    noltDevSDK_special_init_info info;
    std::memset(&info, 0, sizeof info);
    info.cb.recv_msg = &RecvMsg;
    info.cb.get_runtime_info = &GetRuntimeInfo;
    noltDevSDK_special_init(&info);
}

void SetRuntimeBytes(const uint8_t *data, size_t size) {
    std::lock_guard<std::mutex> lock(g_mu);
    g_runtime.assign(data, data + size);
}

uint64_t SentCount() {
    std::lock_guard<std::mutex> lock(g_mu);
    return g_sent;
}

bool WaitForSent(uint64_t n, int timeout_ms) {
    std::unique_lock<std::mutex> lock(g_mu);
    return g_cv.wait_for(lock, std::chrono::milliseconds(timeout_ms), [&] { return g_sent >= n; });
}

uint32_t Reader::U32() {
    uint32_t v = 0;
    for (int i = 0; i < 4; ++i) {
        v = v << 8 | U8();
    }
    return v;
}

uint8_t Reader::U8() {
    if (size == 0) {
        return 0;
    }
    uint8_t v = *data++;
    --size;
    return v;
}

} // namespace special_fuzz
