// The board of callbacks in flight and the crash handler (see crash_board.h). The board
// is fixed-size plain memory so that a signal handler can fill it and a parent process
// can read it after its child died.
#include "crash_board.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace sim {

namespace {

constexpr int kSlots = 32;
constexpr int kFrames = 24;

struct Slot {
    std::atomic<long> tid; // 0: free
    char callback[24];
    int type;
    char type_name[80];
    char where[160];
    char thread[48];
    long long since_ms;
};

struct Board {
    Slot slots[kSlots];
    char step[160];
    std::atomic<int> signal;
    int crash_slot; // -1: the crashing thread was in no callback
    char frames[kFrames][200];
    int frame_count;
};

Board g_own;
Board *g_board = &g_own;
int g_fd = -1;
int g_exit_fd = -1;

long ThreadId() {
    return static_cast<long>(syscall(SYS_gettid));
}

long long NowMs() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return static_cast<long long>(ts.tv_sec) * 1000 + ts.tv_nsec / 1000000;
}

void Copy(char *dst, size_t size, const std::string &src) {
    size_t n = src.size() < size - 1 ? src.size() : size - 1;
    std::memcpy(dst, src.data(), n);
    dst[n] = '\0';
}

InFlight FromSlot(const Slot &s) {
    InFlight in;
    in.callback = s.callback;
    in.type = s.type;
    in.type_name = s.type_name;
    in.where = s.where;
    in.thread = s.thread;
    in.held_ms = NowMs() - s.since_ms;
    return in;
}

const char *SignalName(int sig) {
    switch (sig) {
    case SIGSEGV:
        return "SIGSEGV (segmentation fault)";
    case SIGBUS:
        return "SIGBUS (bus error)";
    case SIGFPE:
        return "SIGFPE (arithmetic error)";
    case SIGILL:
        return "SIGILL (illegal instruction)";
    case SIGABRT:
        return "SIGABRT (abort)";
    default:
        return "a signal";
    }
}

// The frames of the crashing thread, named by their library and symbol where dladdr
// finds one ("libapp.so(on_recv_msg+0x1c)").
void KeepFrames() {
    void *pcs[kFrames + 2];
    int n = backtrace(pcs, kFrames + 2);
    g_board->frame_count = 0;
    for (int i = 2; i < n && g_board->frame_count < kFrames; i++) { // past the handler itself
        Dl_info info{};
        char *out = g_board->frames[g_board->frame_count++];
        if (dladdr(pcs[i], &info) != 0 && info.dli_fname != nullptr) {
            const char *lib = std::strrchr(info.dli_fname, '/');
            lib = lib ? lib + 1 : info.dli_fname;
            uintptr_t base = reinterpret_cast<uintptr_t>(info.dli_saddr ? info.dli_saddr : info.dli_fbase);
            std::snprintf(out, sizeof g_board->frames[0], "%s(%s+0x%lx) [%p]", lib,
                          info.dli_sname ? info.dli_sname : "", // NOLINT
                          static_cast<unsigned long>(reinterpret_cast<uintptr_t>(pcs[i]) - base), pcs[i]);
        } else {
            std::snprintf(out, sizeof g_board->frames[0], "[%p]", pcs[i]);
        }
    }
}

void OnCrash(int sig) {
    int expected = 0;
    if (g_board->signal.compare_exchange_strong(expected, sig)) {
        long tid = ThreadId();
        g_board->crash_slot = -1;
        for (int i = 0; i < kSlots; i++) {
            if (g_board->slots[i].tid.load() == tid) {
                g_board->crash_slot = i;
            }
        }
        KeepFrames();
        if (g_fd >= 0) {
            std::string text = "special-sim: the application crashed: " + DescribeCrash(BoardCrash()) + "\n";
            ssize_t ignored = write(g_fd, text.data(), text.size());
            (void)ignored;
        }
    }
    std::signal(sig, SIG_DFL);
    raise(sig);
}

void OnExit(int status, void *) {
    std::vector<InFlight> in = BoardInFlight();
    if (in.empty()) {
        return;
    }
    if (g_exit_fd >= 0) {
        std::string text = "special-sim: the application called exit(" + std::to_string(status) +
                           ") inside " + in[0].callback + " " + in[0].type_name + " (" +
                           std::to_string(in[0].type) + ") at " + in[0].where + " on the " + in[0].thread +
                           "\n";
        ssize_t ignored = write(g_exit_fd, text.data(), text.size());
        (void)ignored;
    }
    _exit(status);
}

} // namespace

void InstallExitReport(int fd) {
    g_exit_fd = fd;
    on_exit(&OnExit, nullptr);
}

void ShareCrashBoard() {
    void *shared = mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared != MAP_FAILED) {
        g_board = new (shared) Board();
    }
}

void ResetCrashBoard() {
    for (Slot &s : g_board->slots) {
        s.tid.store(0);
    }
    g_board->step[0] = '\0';
    g_board->signal.store(0);
    g_board->crash_slot = -1;
    g_board->frame_count = 0;
}

void BoardEnter(const char *callback, int type, const char *type_name, const std::string &where,
                const std::string &thread) {
    for (Slot &s : g_board->slots) {
        long free_slot = 0;
        if (s.tid.compare_exchange_strong(free_slot, -1)) {
            Copy(s.callback, sizeof s.callback, callback);
            s.type = type;
            Copy(s.type_name, sizeof s.type_name, type_name ? type_name : "");
            Copy(s.where, sizeof s.where, where);
            Copy(s.thread, sizeof s.thread, thread);
            s.since_ms = NowMs();
            s.tid.store(ThreadId());
            return;
        }
    }
}

// The innermost callback of this thread leaves (a re-entered one holds a later slot).
void BoardLeave() {
    long tid = ThreadId();
    for (int i = kSlots - 1; i >= 0; i--) {
        long mine = tid;
        if (g_board->slots[i].tid.compare_exchange_strong(mine, 0)) {
            return;
        }
    }
}

void BoardStep(const std::string &where) {
    Copy(g_board->step, sizeof g_board->step, where);
}

void InstallCrashReport(int fd) {
    g_fd = fd;
    void *warm[2];
    backtrace(warm, 2); // loads the unwinder now rather than inside the handler
    for (int sig : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        std::signal(sig, &OnCrash);
    }
}

std::vector<InFlight> BoardInFlight() {
    std::vector<InFlight> out;
    for (const Slot &s : g_board->slots) {
        if (s.tid.load() > 0) {
            out.push_back(FromSlot(s));
        }
    }
    return out;
}

CrashReport BoardCrash() {
    CrashReport crash;
    crash.signal = g_board->signal.load();
    crash.step = g_board->step;
    if (g_board->crash_slot >= 0 && g_board->crash_slot < kSlots) {
        crash.in = FromSlot(g_board->slots[g_board->crash_slot]);
    }
    for (int i = 0; i < g_board->frame_count && i < kFrames; i++) {
        crash.frames.push_back(g_board->frames[i]);
    }
    return crash;
}

std::string DescribeCrash(const CrashReport &crash) {
    std::string text = SignalName(crash.signal);
    if (!crash.in.callback.empty()) {
        text += " in " + crash.in.callback + " " + crash.in.type_name + " (" + std::to_string(crash.in.type) +
                ") at " + crash.in.where + " on the " + crash.in.thread;
    } else {
        text += " outside the application's callbacks, at " + (crash.step.empty() ? "start-up" : crash.step);
    }
    for (const std::string &f : crash.frames) {
        text += "\n        " + f;
    }
    return text;
}

std::string DescribeHang(const InFlight &in, int seconds) {
    return in.callback + " " + in.type_name + " (" + std::to_string(in.type) + ") has not returned after " +
           std::to_string(seconds) + " s (" + in.thread + ", " + in.where + ")";
}

std::string DescribeKnownHang(const InFlight &in, long long ms) {
    return in.callback + " " + in.type_name + " (" + std::to_string(in.type) + ") hung again (held " +
           std::to_string(ms) + " ms here, the whole row timeout in an earlier row; " + in.thread + ", " +
           in.where + ")";
}

// addr2line's function and "file:line" for an offset in a library; false without them.
bool Addr2line(const std::string &lib, const std::string &offset, std::string *name, std::string *at) {
    FILE *p = popen(("addr2line -f -C -e '" + lib + "' " + offset + " 2>/dev/null").c_str(), "r");
    char function[256] = {}, where[512] = {};
    bool read = p != nullptr && std::fgets(function, sizeof function, p) != nullptr &&
                std::fgets(where, sizeof where, p) != nullptr;
    if (p != nullptr) {
        pclose(p);
    }
    name->assign(function, std::strcspn(function, "\n"));
    at->assign(where, std::strcspn(where, "\n"));
    return read && !name->empty() && *name != "??";
}

// A frame of the application named by its offset only (a static function) gets the
// function, and the file and line where the library has debug information, from
// addr2line when it is installed; anything else is left as it is.
std::string Symbolise(const std::string &frame, const std::string &app) {
    std::string lib = app.substr(app.rfind('/') + 1);
    std::string head = lib + "(+0x";
    std::string name, at;
    if (lib.empty() || frame.compare(0, head.size(), head) != 0 || app.find('\'') != std::string::npos ||
        !Addr2line(app, frame.substr(head.size() - 2, frame.find(')') - head.size() + 2), &name, &at)) {
        return frame;
    }
    at = at.size() > 2 && at.compare(at.size() - 2, 2, ":?") == 0 ? at.substr(0, at.size() - 2) : at;
    return frame + " " + name + (at.compare(0, 2, "??") == 0 ? "" : " at " + at);
}

std::vector<std::string> AppFrames(const std::vector<std::string> &frames, const std::string &app) {
    std::string lib = app.substr(app.rfind('/') + 1);
    std::vector<std::string> mine;
    for (const std::string &f : frames) {
        if (!lib.empty() && f.compare(0, lib.size(), lib) == 0) {
            mine.push_back(Symbolise(f, app));
        }
    }
    return mine.empty() ? frames : mine;
}

} // namespace sim
