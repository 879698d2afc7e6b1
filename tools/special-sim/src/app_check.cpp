// The checking shims around the application's callbacks (see app_check.h).
#include "app_check.h"

#include <malloc.h>
#include <pthread.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "crash_board.h"
#include "names.h"
#include "noltdev_host.h"
#include "record_tables.h"

namespace sim {

const char kRoleApplication[] = "application thread";
const char kRolePoller[] = "report-status poller";
const char kRoleShadow[] = "shadow service";
const char kRoleKernel[] = "kernel message thread";
const char kRoleVoiceWorker[] = "custom-voice worker";

namespace {

AppChecker *g_checker = nullptr; // the module's callbacks carry no user pointer

thread_local const char *t_role = nullptr; // set on the scenario's own thread
thread_local bool t_voice_worker = false;  // this thread has carried a custom voice
thread_local int t_inside = 0;             // callbacks this thread is in (re-entry: more than one)

std::string ThreadName(int recv_type) {
    if (t_role != nullptr) {
        return t_role;
    }
    // the host SDK's own threads carry their names
    char name[16] = "";
    pthread_getname_np(pthread_self(), name, sizeof name);
    if (std::strcmp(name, NOLTDEV_HOST_THREAD_REPORT) == 0) {
        return kRolePoller;
    }
    if (std::strcmp(name, NOLTDEV_HOST_THREAD_SHADOW) == 0) {
        return kRoleShadow;
    }
    t_voice_worker = t_voice_worker || recv_type == NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE;
    return t_voice_worker ? kRoleVoiceWorker : kRoleKernel;
}

long long MillisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start)
        .count();
}

size_t UsedLen(const void *data, int len) {
    return data != nullptr && len > 0 ? static_cast<size_t>(len) : 0;
}

} // namespace

std::string DescribeFinding(const Finding &f) {
    std::string again = f.repeats > 0 ? "; " + std::to_string(f.repeats) + " more time(s)" : "";
    return std::string(SeverityName(f.issue.severity)) + " " + FaultClassName(f.issue.fault) + " " +
           f.callback + " " + f.type_name + " (" + std::to_string(f.type) + ") " + f.issue.path + ": " +
           f.issue.what + " (" + f.where + ", " + f.thread + again + ")";
}

std::string FindingKey(FaultClass fault, const std::string &callback, int type, const std::string &path) {
    return std::string(FaultClassName(fault)) + " " + callback + " " + std::to_string(type) + " " + path;
}

std::string AnyIndex(const std::string &path) {
    std::string out;
    bool in_index = false;
    for (char c : path) {
        in_index = c == '[' || (in_index && c != ']');
        if (!in_index || c == '[') {
            out += c;
        }
    }
    return out;
}

AppChecker::AppChecker(CallbackObserver &observer, const CheckOptions &options)
    : observer_(observer), options_(options) {}

AppChecker::~AppChecker() {
    if (g_checker == this) {
        g_checker = nullptr;
    }
}

void AppChecker::Install() {
    g_checker = this;
}

void AppChecker::SetWhere(const std::string &where) {
    std::lock_guard<std::mutex> lock(mu_);
    where_ = where;
}

void AppChecker::SetThreadRole(const char *role) {
    t_role = role;
}

bool AppChecker::Wrapped() {
    std::lock_guard<std::mutex> lock(mu_);
    return wrapped_;
}

std::vector<Finding> AppChecker::Findings() {
    std::lock_guard<std::mutex> lock(mu_);
    return findings_;
}

int AppChecker::Count(Severity severity) {
    std::lock_guard<std::mutex> lock(mu_);
    int n = 0;
    for (const Finding &f : findings_) {
        n += f.issue.severity == severity ? 1 : 0;
    }
    return n;
}

void AppChecker::Wrap(noltDevSDK_special_callback *cb) {
    if (g_checker == nullptr || cb == nullptr) {
        return;
    }
    {
        std::lock_guard<std::mutex> lock(g_checker->mu_);
        g_checker->app_ = *cb;
        g_checker->wrapped_ = true;
    }
    cb->recv_msg = &AppChecker::RecvShim;
    cb->get_runtime_info = &AppChecker::RuntimeShim;
}

int AppChecker::RecvShim(noltDevSDK_special_msg_to_dev *msg) {
    return g_checker->Recv(msg);
}

int AppChecker::RuntimeShim(noltDevSDK_special_runtime_info *info) {
    return g_checker->Runtime(info);
}

// The application gets a copy of the record between guard zones; what it wrote within
// the record is copied back.
int AppChecker::Recv(noltDevSDK_special_msg_to_dev *msg) {
    std::string thread = ThreadName(msg->type);
    std::vector<Issue> issues;
    Enter("recv_msg", msg->type, thread, &issues);
    size_t len = UsedLen(msg->data, msg->len);
    GuardedCopy copy(msg->data, len);
    noltDevSDK_special_msg_to_dev given = *msg;
    given.data = len > 0 ? copy.Data() : msg->data;
    auto start = std::chrono::steady_clock::now();
    int result = app_.recv_msg != nullptr ? app_.recv_msg(&given) : NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    Leave(MillisecondsSince(start), thread, &issues);
    if (len > 0) {
        std::memcpy(msg->data, copy.Data(), len);
        const RecordDesc *desc = MsgRecord(msg->type);
        if (options_.check) {
            CheckGuards(copy, desc ? desc->name : "data", len, &issues, desc);
        }
    }
    observer_.Received(msg, result);
    Record("recv_msg", msg->type, thread, issues);
    return result;
}

int AppChecker::Runtime(noltDevSDK_special_runtime_info *info) {
    std::string thread = ThreadName(-1);
    std::vector<Issue> issues;
    Enter("get_runtime_info", info->type, thread, &issues);
    int selector = 0;
    if (info->data != nullptr && info->len >= static_cast<int>(sizeof selector)) {
        std::memcpy(&selector, info->data, sizeof selector);
    }
    int result = CallRuntime(info, &issues);
    observer_.Answered(info, selector, result);
    Record("get_runtime_info", info->type, thread, issues);
    return result;
}

// Calls the application with a guarded copy of the record and checks what it filled in.
int AppChecker::CallRuntime(noltDevSDK_special_runtime_info *info, std::vector<Issue> *issues) {
    const std::string thread = ThreadName(-1);
    auto start = std::chrono::steady_clock::now();
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP) {
        return CallDeletion(info, thread, issues);
    }
    size_t len = UsedLen(info->data, info->len);
    GuardedCopy copy(info->data, len);
    noltDevSDK_special_runtime_info given = *info;
    given.data = len > 0 ? copy.Data() : info->data;
    int result = app_.get_runtime_info != nullptr ? app_.get_runtime_info(&given)
                                                  : NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    Leave(MillisecondsSince(start), thread, issues);
    if (len > 0) {
        std::memcpy(info->data, copy.Data(), len);
    }
    const RecordDesc *desc = RuntimeRecord(info->type);
    if (!options_.check) {
        return result;
    }
    const char *name = desc ? desc->name : "data";
    CheckGuards(copy, name, len, issues, desc);
    if (given.len != info->len) {
        issues->push_back(Issue{FaultClass::Len, std::string(name) + ".len",
                                "len handed back as " + std::to_string(given.len) + ", the record is " +
                                    std::to_string(info->len) + " bytes",
                                Severity::Error});
    }
    if (result == 0 && desc != nullptr) {
        CheckFields(*desc, info->data, len, issues);
    }
    return result;
}

// Type 9: the application allocates the block, the module frees it; no copy is made.
int AppChecker::CallDeletion(noltDevSDK_special_runtime_info *info, const std::string &thread,
                             std::vector<Issue> *issues) {
    auto start = std::chrono::steady_clock::now();
    int result = app_.get_runtime_info != nullptr ? app_.get_runtime_info(info) : -1;
    Leave(MillisecondsSince(start), thread, issues);
    if (options_.check && result == 0) {
        CheckBlock(info, issues);
    }
    return result;
}

// The block's size is what malloc_usable_size reports, which may exceed the request by
// the allocator's rounding (glibc: up to 24 bytes), so a block short by less than that is
// not found; one unit (88 bytes) short always is. A block smaller than its usNum says is
// found, then replaced by one of the size the
// module will read (zero-filled past what the application wrote), so that the run goes
// on without the module reading past the application's allocation.
void AppChecker::CheckBlock(noltDevSDK_special_runtime_info *info, std::vector<Issue> *issues) {
    size_t before = issues->size();
    size_t usable = info->data ? malloc_usable_size(info->data) : 0;
    CheckDeletionBlock(info->data, info->len, usable, issues);
    if (issues->size() == before) {
        CheckFields(kDelTrusteeshipDesc, info->data, usable, issues);
        return;
    }
    if (info->data == nullptr) {
        return;
    }
    size_t need = offsetof(noltDevSDK_Special_DelTrusteeship_S, astUnit) +
                  static_cast<const noltDevSDK_Special_DelTrusteeship_S *>(info->data)->usNum *
                      sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
    void *whole = std::calloc(1, need);
    if (whole != nullptr) {
        std::memcpy(whole, info->data, usable < need ? usable : need);
        std::free(info->data);
        info->data = whole;
        info->len = static_cast<int>(need);
    }
}

// A callback entered while one runs on another thread is concurrency; the same thread
// coming back in (the application called a module function that calls back) is re-entry.
void AppChecker::Enter(const char *callback, int type, const std::string &thread,
                       std::vector<Issue> *issues) {
    const NameTable &names = std::string(callback) == "recv_msg" ? kMsgTypes : kRuntimeTypes;
    std::lock_guard<std::mutex> lock(mu_);
    BoardEnter(callback, type, names.Name(type), where_, thread);
    if (inside_ > t_inside && options_.check && options_.note_overlap) {
        issues->push_back(Issue{FaultClass::Concurrent, std::string(callback) + "(entry)",
                                "entered on the " + thread + " while a callback runs on the " +
                                    inside_thread_ + " (type " + std::to_string(type) + ")",
                                Severity::Info});
    }
    if (inside_++ == 0) {
        inside_thread_ = thread;
    }
    t_inside++;
}

// The custom-voice worker is where slow work belongs: it is held to a threshold only
// when one is given for it.
void AppChecker::Leave(long long elapsed_ms, const std::string &thread, std::vector<Issue> *issues) {
    BoardLeave();
    std::lock_guard<std::mutex> lock(mu_);
    inside_--;
    t_inside--;
    int threshold = thread == kRoleVoiceWorker ? options_.slow_worker_ms : options_.slow_ms;
    if (options_.check && threshold >= 0 && elapsed_ms > threshold) {
        issues->push_back(Issue{FaultClass::Slow, "(callback)",
                                "held the " + thread + " for " + std::to_string(elapsed_ms) +
                                    " ms (threshold " + std::to_string(threshold) + " ms)",
                                Severity::Error});
    }
}

void AppChecker::Record(const char *callback, int type, const std::string &thread,
                        const std::vector<Issue> &issues) {
    const NameTable &names = std::string(callback) == "recv_msg" ? kMsgTypes : kRuntimeTypes;
    std::vector<std::string> lines;
    {
        std::lock_guard<std::mutex> lock(mu_);
        for (const Issue &issue : issues) {
            std::string key = FindingKey(issue.fault, callback, type, issue.path);
            if (options_.already_found.count(FindingKey(issue.fault, callback, type, AnyIndex(issue.path))) !=
                0) {
                continue;
            }
            auto first = seen_.find(key);
            if (first != seen_.end()) {
                findings_[first->second].repeats++;
                continue;
            }
            seen_[key] = findings_.size();
            Finding f{callback, type, names.Name(type), issue, where_, thread};
            findings_.push_back(f);
            lines.push_back(DescribeFinding(f));
        }
    }
    for (const std::string &line : lines) {
        observer_.Found(line);
    }
}

} // namespace sim
