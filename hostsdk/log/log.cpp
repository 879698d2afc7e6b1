// The debug log: formats each line once, hands it to the installed hook whatever the
// level, and writes it to standard error when its level is at or below the threshold.
// A line that neither would take is not formatted at all.
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <vector>

#include "log_ctrl.h"
#include "noltdev_host.h"

namespace {

constexpr int kDefaultLevel = LOG_WARNING;

int LevelFromEnvironment() {
    const char *text = std::getenv("NOLTDEV_LOG_LEVEL");
    if (text == nullptr || *text == '\0') {
        return kDefaultLevel;
    }
    char *end = nullptr;
    long level = std::strtol(text, &end, 10);
    return *end == '\0' && level >= 0 && level <= 100 ? static_cast<int>(level) : kDefaultLevel;
}

std::atomic<int> g_threshold{LevelFromEnvironment()};

// Guards the hook and serialises the output, so lines never interleave and a removed
// hook is never called after noltdev_host_set_log_hook returns.
std::recursive_mutex g_mu;
noltdev_host_log_hook_fn g_hook = nullptr;
void *g_hook_user = nullptr;
// Whether a hook is installed, read without the lock by the check that skips a line.
std::atomic<bool> g_has_hook{false};

const char *LevelName(int level) {
    switch (level) {
    case LOG_ERROR:
        return "ERROR";
    case LOG_WARNING:
        return "WARNING";
    case LOG_DEBUG:
        return "DEBUG";
    case LOG_INFO:
        return "INFO";
    default:
        return "LOG";
    }
}

bool Printed(int level) {
    int threshold = g_threshold.load();
    return threshold > 0 && level <= threshold;
}

void Emit(int level, const char *line, int len) {
    bool print = Printed(level);
    std::lock_guard<std::recursive_mutex> lock(g_mu);
    if (g_hook != nullptr) {
        g_hook(level, line, g_hook_user);
    }
    if (print) {
        const char *end = len > 0 && line[len - 1] == '\n' ? "" : "\n";
        std::fprintf(stderr, "[%s] %s%s", LevelName(level), line, end);
    }
}

} // namespace

extern "C" {

int noltdev_debug_wanted(int level) {
    return g_has_hook.load() || Printed(level) ? 1 : 0;
}

void noltdev_debug(int level, const char *fmt, ...) {
    if (fmt == nullptr || noltdev_debug_wanted(level) == 0) {
        return;
    }
    char stack[512];
    va_list args;
    va_start(args, fmt);
    int len = std::vsnprintf(stack, sizeof stack, fmt, args);
    va_end(args);
    if (len < 0) {
        return; // the format itself is broken
    }
    if (static_cast<size_t>(len) < sizeof stack) {
        Emit(level, stack, len);
        return;
    }
    std::vector<char> heap(static_cast<size_t>(len) + 1);
    va_start(args, fmt);
    std::vsnprintf(heap.data(), heap.size(), fmt, args);
    va_end(args);
    Emit(level, heap.data(), len);
}

void noltdev_host_set_log_hook(noltdev_host_log_hook_fn fn, void *user) {
    std::lock_guard<std::recursive_mutex> lock(g_mu);
    g_hook = fn;
    g_hook_user = user;
    g_has_hook = fn != nullptr;
}

void noltdev_host_set_log_level(int level) {
    g_threshold = level;
}

} // extern "C"
