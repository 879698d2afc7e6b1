// The fuzz harnesses' application: accepts every platform instruction and fills state
// queries from fuzzer bytes, including counts beyond the buffer and unterminated texts.
#include "fuzz_app.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "harness_start.h"
#include "noltDevSDK_special_def.h"
#include "noltDevSDK_special_protocol.h"
#include "noltdev_host.h"

namespace special_fuzz {

namespace {
std::mutex g_mu;
std::condition_variable g_cv;
uint64_t g_workers = 0; // custom-voice workers started
uint64_t g_answers = 0; // custom-voice answers sent
bool g_counting = false;
int g_baseline_threads = 0; // threads of the process with no worker running
std::vector<uint8_t> g_runtime;
size_t g_next = 0;

// Threads of this process, as the kernel counts them (a thread that has ended is gone).
int ThreadCount() {
    std::ifstream status("/proc/self/status");
    std::string key;
    while (status >> key) {
        if (key == "Threads:") {
            int n = 0;
            status >> n;
            return n;
        }
        status.ignore(4096, '\n');
    }
    return 0;
}

int Sink(const noltdev_host_message *msg, void *) {
    if (msg->command_id == kCenPlt2PuSetCustomVoiceRsp) {
        std::lock_guard<std::mutex> lock(g_mu);
        ++g_answers;
        g_cv.notify_all();
    }
    return 0;
}

// The handler logs the voice's URL right before it starts the worker, and this line
// when the start fails.
void LogHook(int, const char *line, void *) {
    std::lock_guard<std::mutex> lock(g_mu);
    if (!g_counting) {
        return;
    }
    if (std::strncmp(line, "url:", 4) == 0) {
        ++g_workers;
    } else if (std::strcmp(line, "pthread creaete error\n") == 0) {
        --g_workers;
    }
}

int RecvMsg(noltDevSDK_special_msg_to_dev *msg) {
    return msg != nullptr && msg->len > 0 ? 0 : -1;
}

uint8_t NextByte() {
    uint8_t b = 0;
    Fill(&b, 1);
    return b;
}

// Mostly success, sometimes "not supported" or another failure.
int ResultCode() {
    uint8_t rc = NextByte();
    return rc < 200 ? 0 : (rc < 230 ? NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT : NOLTDEVSDK_SPECIAL_CODE_FAIL);
}

// The deletion results: the application allocates the block and the module frees it.
// The count always matches what was allocated (the block is the application's memory),
// but the answer may fail with or without a block, or succeed without one.
int DeletionResults(noltDevSDK_special_runtime_info *info) {
    uint8_t mode = NextByte();
    uint8_t n = NextByte() % 8;
    size_t size =
        sizeof(noltDevSDK_Special_DelTrusteeship_S) + n * sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
    if (mode % 8 != 7) {
        auto *block = static_cast<noltDevSDK_Special_DelTrusteeship_S *>(std::malloc(size));
        Fill(block, size);
        block->usNum = n;
        info->data = block;
    }
    return mode % 4 == 3 ? NOLTDEVSDK_SPECIAL_CODE_FAIL : 0;
}

int GetRuntimeInfo(noltDevSDK_special_runtime_info *info) {
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP) {
        return DeletionResults(info);
    }
    int rc = ResultCode();
    if (info->data != nullptr && info->len > 0) {
        Fill(info->data, static_cast<size_t>(info->len));
    }
    return rc;
}
} // namespace

void Start() {
    static const bool started = [] {
        noltdev_host_set_log_hook(&LogHook, nullptr);
        special_harness::StartModule(&Sink, &RecvMsg, &GetRuntimeInfo);
        g_baseline_threads = ThreadCount();
        return true;
    }();
    (void)started;
}

void SetRuntimeBytes(const uint8_t *data, size_t size) {
    std::lock_guard<std::mutex> lock(g_mu);
    g_runtime.assign(data, data + size);
    g_next = 0;
}

void Fill(void *dst, size_t len) {
    std::lock_guard<std::mutex> lock(g_mu);
    uint8_t *out = static_cast<uint8_t *>(dst);
    if (g_runtime.empty()) {
        std::memset(out, 0, len);
        return;
    }
    while (len > 0) {
        size_t at = g_next % g_runtime.size();
        size_t n = std::min(len, g_runtime.size() - at);
        std::memcpy(out, g_runtime.data() + at, n);
        out += n;
        len -= n;
        g_next += n;
    }
}

void CountWorkers(bool on) {
    std::lock_guard<std::mutex> lock(g_mu);
    g_counting = on;
}

bool WaitForWorkers(int timeout_ms) {
    auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout_ms);
    {
        std::unique_lock<std::mutex> lock(g_mu);
        if (!g_cv.wait_until(lock, deadline, [] { return g_answers >= g_workers; })) {
            return false;
        }
    }
    // A worker ends a moment after its answer, still holding what it sent: wait for its
    // thread to be gone too, so that a leak check never runs while a worker is in flight.
    while (ThreadCount() > g_baseline_threads) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
    return true;
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
