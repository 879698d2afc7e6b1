// Where the application's callbacks are while they run, kept where a crash handler and
// the qualification's parent process can still read it: the callback, its record type,
// the scenario step and the thread of each callback in flight. A signal in the
// application (or an exit from a callback) is then reported with all of that and the
// application's frames instead of ending the run without a word.
#pragma once

#include <string>
#include <vector>

namespace sim {

// One callback in flight, as the board keeps it (fixed-size: a signal handler reads it).
struct InFlight {
    std::string callback; // "recv_msg" or "get_runtime_info"
    int type = 0;
    std::string type_name; // the public header's enumerator
    std::string where;     // "file:line" of the scenario step
    std::string thread;    // "kernel message thread", ...
    long long held_ms = 0; // how long it has run so far
};

// What the board says after a crash: the signal (0 for an exit), the callback the
// crashing thread was in (callback empty when it was in none) and the frames.
struct CrashReport {
    int signal = 0;
    InFlight in;
    std::string step; // the scenario step running at the time
    std::vector<std::string> frames;
};

// Makes the board shared with the processes forked after this call (the qualification
// runs each row in one); without it the board is this process's own.
void ShareCrashBoard();
// Clears the board for a new run.
void ResetCrashBoard();

// The callbacks' shims mark their entry and exit; the runner names the step.
void BoardEnter(const char *callback, int type, const char *type_name, const std::string &where,
                const std::string &thread);
void BoardLeave();
void BoardStep(const std::string &where);

// From now on SIGSEGV, SIGBUS, SIGFPE, SIGILL and SIGABRT are written to the board with
// the crashing thread's frames, then to fd as text ("special-sim: the application crashed:
// ..."), and the signal then ends the process as it would have.
void InstallCrashReport(int fd);

// From now on an exit() while a callback runs ends the process at once with its status,
// written to fd as text when fd >= 0 ("special-sim: the application called exit(3)
// inside ..."), before the destructors of a running module can abort it.
void InstallExitReport(int fd);

// The board as it is now (after the process that wrote it ended, or while it hangs).
std::vector<InFlight> BoardInFlight();
CrashReport BoardCrash();

// "SIGSEGV (segmentation fault) in recv_msg NOLTDEVSDK_SPECIAL_ON_WAKE (5) at file:line on
// the kernel message thread"; the frames follow, one per line, indented.
std::string DescribeCrash(const CrashReport &crash);
// "recv_msg NOLTDEVSDK_SPECIAL_ON_WAKE (5) has not returned after 10 s (kernel message
// thread, file:line)".
std::string DescribeHang(const InFlight &in, int seconds);

// "get_runtime_info NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS (5) hung again (held 500 ms
// here, the whole row timeout in an earlier row; report-status poller, file:line)".
std::string DescribeKnownHang(const InFlight &in, long long ms);

// The frames worth showing: those in the application's library when there are any.
std::vector<std::string> AppFrames(const std::vector<std::string> &frames, const std::string &app);

} // namespace sim
