// Runs a user's application library in place of the demo device: its two callbacks are
// wrapped in checking shims when it calls noltDevSDK_special_init (the simulator's
// executable interposes that function), and each callback is checked against the public
// header's contract. Findings carry the callback, type, field path, scenario line,
// thread and severity.
#pragma once

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "checker.h"
#include "noltDevSDK_special_def.h"

namespace sim {

// What the runner does with each callback once the application has answered (it
// prints the record). Called on the callback's own thread.
class CallbackObserver {
  public:
    virtual ~CallbackObserver() = default;
    virtual void Received(const noltDevSDK_special_msg_to_dev *msg, int result) = 0;
    virtual void Answered(const noltDevSDK_special_runtime_info *info, int selector, int result) = 0;
    // A finding, as it is made.
    virtual void Found(const std::string &text) = 0;
};

// One contract finding.
struct Finding {
    std::string callback; // "recv_msg" or "get_runtime_info"
    int type = 0;
    std::string type_name; // the public header's enumerator
    Issue issue;
    std::string where;  // "file:line" of the scenario step
    std::string thread; // "kernel message thread", "custom-voice worker", ...
    int repeats = 0;    // the same fault in the same field again, after the first
};

// "error text recv_msg NOLTDEVSDK_SPECIAL_ON_... (18) plan.time[0][0].begin: what (file:line, thread)".
std::string DescribeFinding(const Finding &finding);

// What makes two findings the same fault: its class, callback, type and field.
std::string FindingKey(FaultClass fault, const std::string &callback, int type, const std::string &path);

// A field path with its array indexes left out ("voice_info[].create_time"): the same
// slip in another entry of the same array.
std::string AnyIndex(const std::string &path);

struct CheckOptions {
    bool check = true; // run the contract checks (off: the shims only forward and show)
    int slow_ms = 500; // a callback holding its thread longer than this is a finding
    // the same for a custom-voice worker, where slow work belongs; -1: not checked
    int slow_worker_ms = -1;
    // note callbacks that overlap on different threads (off where overlap is the point)
    bool note_overlap = true;
    // faults (FindingKey over AnyIndex of the path) already reported elsewhere, not
    // reported again, in whichever entry of an array
    std::set<std::string> already_found;
};

// The shims' state; a fault found again in the same field of the same callback and
// type counts as a repeat of its first finding. One per run, installed with Install()
// before the application starts.

// The roles of the scenario's own thread, as findings name it.
extern const char kRoleApplication[]; // "application thread": steps, start and stop
extern const char kRolePoller[];      // "report-status poller": poll, force, reset
extern const char kRoleShadow[];      // "shadow service": shadow steps
// The roles of the other threads callbacks run on.
extern const char kRoleKernel[];      // "kernel message thread": platform commands
extern const char kRoleVoiceWorker[]; // "custom-voice worker": one custom voice each

class AppChecker {
  public:
    AppChecker(CallbackObserver &observer, const CheckOptions &options);
    ~AppChecker();

    // From now on noltDevSDK_special_init wraps the callbacks it is given.
    void Install();

    // The scenario step now running, for findings made while it runs.
    void SetWhere(const std::string &where);
    // What the scenario's own thread does now (one of the roles above); callbacks on
    // other threads are named by what they carry.
    static void SetThreadRole(const char *role);

    // Whether the application's callbacks went through Wrap().
    bool Wrapped();
    std::vector<Finding> Findings();
    int Count(Severity severity);

    // Called by the interposed noltDevSDK_special_init: replaces the callbacks with the
    // shims (when a checker is installed) and keeps the application's own.
    static void Wrap(noltDevSDK_special_callback *cb);

  private:
    static int RecvShim(noltDevSDK_special_msg_to_dev *msg);
    static int RuntimeShim(noltDevSDK_special_runtime_info *info);
    int Recv(noltDevSDK_special_msg_to_dev *msg);
    int Runtime(noltDevSDK_special_runtime_info *info);
    int CallRuntime(noltDevSDK_special_runtime_info *info, std::vector<Issue> *issues);
    int CallDeletion(noltDevSDK_special_runtime_info *info, const std::string &thread,
                     std::vector<Issue> *issues);
    void CheckBlock(noltDevSDK_special_runtime_info *info, std::vector<Issue> *issues);
    void Enter(const char *callback, int type, const std::string &thread, std::vector<Issue> *issues);
    void Leave(long long elapsed_ms, const std::string &thread, std::vector<Issue> *issues);
    void Record(const char *callback, int type, const std::string &thread, const std::vector<Issue> &issues);

    CallbackObserver &observer_;
    CheckOptions options_;
    noltDevSDK_special_callback app_ = {nullptr, nullptr};
    bool wrapped_ = false;
    std::mutex mu_;
    std::string where_;
    int inside_ = 0;            // callbacks running now
    std::string inside_thread_; // the thread of the one that entered first
    std::vector<Finding> findings_;
    std::map<std::string, size_t> seen_; // a fault in a field of a callback type -> its finding
};

} // namespace sim
