// Reads ThreadSanitizer's data race reports (the text a process writes to the file set
// with __sanitizer_set_report_path, as gcc's libtsan and clang's runtime print it) and
// tells, for each race, which of the application's callbacks on which of the module's
// threads touched what. Other kinds of report in the same text are skipped.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sim {

// One stack frame as the report prints it; what the symbolizer could not tell is empty.
struct RaceFrame {
    std::string function; // "on_recv_msg", "sim::AppChecker::RecvShim(int)"
    std::string file;     // source file as printed, "" without debug information
    int line = 0;         // 0 without debug information
    std::string module;   // file name of the library or executable, "libracy_app.so"
    uint64_t offset = 0;  // the frame's address within that module
};

// "racy_app.c:31" (the file's base name), or "libracy_app.so+0x1239" without a line, or
// "" when the frame is unknown.
std::string FramePlace(const RaceFrame &frame);

// One of the two accesses of a race.
struct RaceAccess {
    bool write = false;
    bool atomic = false;
    int size = 0;         // bytes accessed
    uint64_t address = 0; // the address accessed
    std::string thread;   // "T3"; "T0" for the main thread
    // What the thread is: "kernel message thread", "report-status poller", "application
    // thread", "custom-voice worker", "application's own thread", "module thread"; "" when
    // the report was cut before the thread's section.
    std::string role;
    // The innermost frame in the application library; when the access has none, the
    // innermost frame outside the sanitizer's runtime.
    RaceFrame frame;
    bool in_app = false;  // frame is the application's
    std::string callback; // "recv_msg" or "get_runtime_info" when the access ran inside one
};

// Where the raced memory is.
struct RaceLocation {
    enum class Kind { Address, Global, Heap, Stack, Tls } kind = Kind::Address;
    std::string name;    // Global: the variable ("" when unnamed); Stack, Tls: the owning thread ("T1")
    uint64_t size = 0;   // Global: the variable's size; Heap: the block's
    uint64_t offset = 0; // Global, Heap: the access's offset from the start
    std::string module;  // Global without a name: "libracy_app.so+0x409c"
};

// "g_volume+0 (a global of 4 bytes)", "a heap block of 40 bytes, offset 8", "the stack of
// T1", "the thread-local storage of T0", "address 0x7b0c00000008" (given the access's address).
std::string DescribeLocation(const RaceLocation &location, uint64_t address);

// One data race: the access the report was made at and the earlier one it conflicts with.
struct Race {
    RaceAccess current;
    RaceAccess previous;
    RaceLocation location;
    bool involves_app = false; // at least one access has a frame in the application
    bool complete = true;      // false: the report was cut before its SUMMARY line
    int count = 1;             // reports of this race: same two places, same location
};

// Every data race in the log, in the order first reported, identical ones counted once.
// app_path is the application library as given to the simulator; its frames are told
// by the library's file name. Never fails: text that is not understood is skipped, and a
// report cut short yields what was read of it.
std::vector<Race> ParseRaces(const std::string &log, const std::string &app_path);

// One line: "recv_msg (kernel message thread, T2) writes 4 bytes of g_volume+0 (a global
// of 4 bytes) at racy_app.c:31 in on_recv_msg while get_runtime_info (report-status
// poller, T3) reads them at racy_app.c:52 in on_get_runtime_info".
std::string DescribeRace(const Race &race);

} // namespace sim
