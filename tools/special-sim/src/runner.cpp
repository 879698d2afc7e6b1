// The glue between a scenario, the host SDK's control API, the module's public
// interface and the demo device.
#include "runner.h"

#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>

#include "consts.h"
#include "crash_board.h"
#include "names.h"
#include "noltDevSDK_special_protocol.h"
#include "noltdev_host.h"
#include "record_tables.h"
#include "runner_impl.h"
#include "step_table.h"

namespace sim {

namespace {

Runner *g_runner = nullptr; // the module's callbacks carry no user pointer

// The entry point a user's application library must export.
using AppStartFn = int (*)(void);

} // namespace

int Runner::RecvMsg(noltDevSDK_special_msg_to_dev *msg) {
    int result = g_runner->device_.Apply(msg);
    g_runner->Received(msg, result);
    return result;
}

int Runner::GetRuntimeInfo(noltDevSDK_special_runtime_info *info) {
    int selector = 0;
    if (info->data != nullptr && info->len >= static_cast<int>(sizeof selector)) {
        std::memcpy(&selector, info->data, sizeof selector);
    }
    int result = g_runner->device_.Answer(info);
    g_runner->Answered(info, selector, result);
    return result;
}

bool IsNotSupported(int code) {
    return code != 0 && (static_cast<unsigned int>(code) & 0xFFFu) == 4u;
}

void Runner::KeepAnswer(const char *callback, int type, int result) {
    if (result == 0) {
        return;
    }
    const NameTable &names = std::string(callback) == "recv_msg" ? kMsgTypes : kRuntimeTypes;
    std::string text = DescribeCode(result) + " to " + callback + " " + names.Describe(type);
    std::lock_guard<std::mutex> lock(mu_);
    if (std::find(answers_.begin(), answers_.end(), text) == answers_.end()) {
        answers_.push_back(text);
    }
    std::pair<std::string, int> what(callback, type);
    if (IsNotSupported(result) &&
        std::find(not_supported_.begin(), not_supported_.end(), what) == not_supported_.end()) {
        not_supported_.push_back(what);
    }
}

void Runner::Received(const noltDevSDK_special_msg_to_dev *msg, int result) {
    KeepAnswer("recv_msg", msg->type, result);
    const RecordDesc *desc = MsgRecord(msg->type);
    cJSON *record = desc && msg->data && msg->len > 0
                        ? RecordToJson(*desc, msg->data, static_cast<size_t>(msg->len))
                        : nullptr;
    out_.Callback("recv_msg", msg->type, kMsgTypes.Name(msg->type), msg->len, result, record);
}

void Runner::Answered(const noltDevSDK_special_runtime_info *info, int selector, int result) {
    KeepAnswer("get_runtime_info", info->type, result);
    const RecordDesc *desc = RuntimeRecord(info->type);
    cJSON *record = result == 0 && desc && info->data && info->len > 0
                        ? RecordToJson(*desc, info->data, static_cast<size_t>(info->len))
                        : nullptr;
    if (ShowRuntime(info->type, selector, result, record)) {
        out_.Callback("get_runtime_info", info->type, kRuntimeTypes.Name(info->type), info->len, result,
                      record);
    } else {
        cJSON_Delete(record);
    }
}

void Runner::Found(const std::string &text) {
    cJSON *members = cJSON_CreateObject();
    cJSON_AddStringToObject(members, "finding", text.c_str());
    out_.Outcome("finding", text, members);
}

// In "changes" mode an answer is shown only when it differs from the last answer to
// the same question, so that a poll shows what moved rather than 22 repeats.
bool Runner::ShowRuntime(int type, int selector, int result, const cJSON *record) {
    if (options_.runtime == RuntimeShow::All) {
        return true;
    }
    std::lock_guard<std::mutex> lock(mu_);
    if (options_.runtime == RuntimeShow::None) {
        hidden_runtime_++;
        return false;
    }
    char *printed = record ? cJSON_PrintUnformatted(record) : nullptr;
    std::string answer = std::to_string(result) + (printed ? printed : "");
    cJSON_free(printed);
    std::string &last = last_runtime_[{type, selector}];
    if (last == answer) {
        hidden_runtime_++;
        return false;
    }
    last = answer;
    return true;
}

int Runner::Sink(const noltdev_host_message *msg, void *user) {
    Runner *self = static_cast<Runner *>(user);
    self->out_.Message(false, msg->command_id, msg->seq, msg->response,
                       std::string(msg->body, msg->body_len));
    return 0;
}

void Runner::LogHook(int level, const char *line, void *user) {
    Runner *self = static_cast<Runner *>(user);
    if (level <= self->options_.log_level) {
        self->out_.Log(level, line ? line : "");
    }
}

int Runner::Start() {
    g_runner = this;
    noltdev_host_kernel_reset();
    noltdev_host_shadow_reset();
    noltdev_host_set_sink(&Runner::Sink, this);
    noltdev_host_set_log_hook(&Runner::LogHook, this);
    // The hook brings the chosen lines into the transcript; NOLTDEV_LOG_LEVEL set in the
    // environment keeps the module's own log on standard error too, as a device writes it.
    const char *env_level = std::getenv("NOLTDEV_LOG_LEVEL");
    if (env_level == nullptr || *env_level == '\0') {
        noltdev_host_set_log_level(0);
    }
    int rc = options_.app.empty() ? StartDemo() : StartApp();
    if (rc != 0) {
        return 1;
    }
    rc = noltdev_host_msg_thread_start();
    if (rc != 0) {
        Result("init", "noltdev_host_msg_thread_start", rc);
        return 1;
    }
    // as on a device: the service polls from its own thread while commands arrive
    if (options_.poll_ms > 0) {
        Result("init", "noltdev_host_report_start(" + std::to_string(options_.poll_ms) + ")",
               noltdev_host_report_start(options_.poll_ms));
    }
    return 0;
}

int Runner::StartDemo() {
    noltDevSDK_special_init_info info;
    std::memset(&info, 0, sizeof info);
    info.cb.recv_msg = &Runner::RecvMsg;
    info.cb.get_runtime_info = &Runner::GetRuntimeInfo;
    int rc = noltDevSDK_special_init(&info);
    Result("init", "noltDevSDK_special_init", rc);
    return rc != 0 ? 1 : 0;
}

// The application's library brings the module up itself, as on the device; its call to
// noltDevSDK_special_init reaches the simulator's own, which wraps the callbacks.
int Runner::StartApp() {
    checker_.reset(new AppChecker(*this, options_.check));
    checker_->Install();
    checker_->SetWhere(options_.app + ":start");
    void *lib = dlopen(options_.app.c_str(), RTLD_NOW | RTLD_LOCAL); // kept open: the module runs its code
    AppStartFn start = lib ? reinterpret_cast<AppStartFn>(dlsym(lib, "noltdev_app_start")) : nullptr;
    if (start == nullptr) {
        Result("error",
               std::string("load ") + options_.app + ": " + (lib ? "no noltdev_app_start" : dlerror()), -1);
        return 1;
    }
    app_stop_ = reinterpret_cast<AppStopFn>(dlsym(lib, "noltdev_app_stop"));
    app_control_ = reinterpret_cast<AppControlFn>(dlsym(lib, "noltdev_app_control"));
    AppChecker::SetThreadRole(kRoleApplication);
    int rc = start();
    Result("init", "noltdev_app_start", rc);
    if (rc == 0 && !checker_->Wrapped()) {
        Result("error", "noltdev_app_start returned 0 but never called noltDevSDK_special_init", -1);
        return 1;
    }
    return rc != 0 ? 1 : 0;
}

void Runner::StopApp() {
    if (app_stop_ != nullptr) {
        app_stop_();
        Result("fini", "noltdev_app_stop", 0);
    } else {
        Result("fini", "noltDevSDK_special_fini", noltDevSDK_special_fini());
    }
}

void Runner::Run(const std::string &file, const Step &step) {
    where_ = file + ":" + std::to_string(step.line);
    BoardStep(where_);
    if (checker_) {
        checker_->SetWhere(where_);
    }
    AppChecker::SetThreadRole(step.row->thread_role);
    // Steps that change or show the demo device have nothing to act on with an application.
    if (step.row->needs_demo && checker_) {
        NotExercised("'" + step.text.substr(0, step.text.find(' ')) +
                     "' needs the demo device; not run with --app");
        return;
    }
    step.row->run(*this, step);
}

RunReport Runner::Report() {
    RunReport report;
    if (checker_) {
        report.findings = checker_->Findings();
    }
    report.not_exercised = not_exercised_;
    std::lock_guard<std::mutex> lock(mu_);
    report.answers = answers_;
    report.not_supported = not_supported_;
    return report;
}

// Each reason once: a request the application does not know is named once, with its text.
void Runner::NotExercised(const std::string &why) {
    for (const std::string &seen : not_exercised_) {
        if (seen.size() >= why.size() && seen.compare(seen.size() - why.size(), why.size(), why) == 0) {
            return;
        }
    }
    not_exercised_.push_back(where_ + ": " + why);
    cJSON *members = cJSON_CreateObject();
    cJSON_AddStringToObject(members, "reason", why.c_str());
    out_.Outcome("not_exercised", why, members);
}

// "app REQUEST": the application's own control hook, when it has one.
void Runner::AppRequest(const std::string &request) {
    if (app_control_ == nullptr) {
        NotExercised("the application has no noltdev_app_control for '" + request + "'");
        return;
    }
    int rc = app_control_(request.c_str());
    Result("app", "noltdev_app_control(\"" + request + "\")", rc);
    if (rc != 0) {
        NotExercised("the application's noltdev_app_control refused or does not know \"" + request +
                     "\" (returned " + DescribeCode(rc) + ")");
    }
}

void Runner::Finish() {
    if (options_.poll_ms > 0) {
        noltdev_host_report_stop();
    }
    WaitAnswers();
    AppChecker::SetThreadRole(kRoleApplication);
    if (checker_) {
        StopApp();
    } else {
        Result("fini", "noltDevSDK_special_fini", noltDevSDK_special_fini());
    }
    noltdev_host_msg_thread_stop();
    noltdev_host_set_sink(nullptr, nullptr);
    noltdev_host_set_log_hook(nullptr, nullptr);
    g_runner = nullptr;
}

void Runner::Result(const char *kind, const std::string &what, int result) {
    cJSON *members = cJSON_CreateObject();
    cJSON_AddStringToObject(members, "operation", what.c_str());
    cJSON_AddNumberToObject(members, "result", result);
    out_.Outcome(kind, what + " -> " + DescribeCode(result), members);
}

// Custom-voice answers come from a worker thread some time after the request: the host
// SDK counts them as they are sent.
void Runner::WaitAnswers() {
    int sent =
        noltdev_host_wait_sent(kCenPlt2PuSetCustomVoiceRsp, voice_requests_, options_.answer_timeout_ms);
    if (sent < voice_requests_) {
        int missing = voice_requests_ - sent;
        voice_requests_ = sent;
        out_.Outcome("note", std::to_string(missing) + " custom-voice answer(s) did not come", nullptr);
    }
}

void Runner::Inject(int command, unsigned int seq, const std::string &body, bool wait) {
    out_.Message(true, static_cast<uint32_t>(command), seq, 0, body);
    // no answer comes from a sleeping device, nor through a link that is down
    if (command == kCenPlt2PuSetCustomVoiceReq && !sleeping_ && noltdev_host_link_up() != 0) {
        voice_requests_++;
    }
    int rc = noltdev_host_post(kDomain, command, seq, body.c_str(), static_cast<uint32_t>(body.size()));
    if (rc != 0) {
        Result("error", "noltdev_host_post", rc);
    }
    if (wait) {
        WaitAnswers();
    }
}

int Runner::TakeHiddenRuntime() {
    std::lock_guard<std::mutex> lock(mu_);
    int hidden = hidden_runtime_;
    hidden_runtime_ = 0;
    return hidden;
}

int RunScenario(const Scenario &scenario, const std::string &file, Transcript &out, const RunOptions &options,
                RunReport *report) {
    Runner runner(out, options);
    int rc = runner.Start();
    // the first "repeat MS" step starts the loop over the steps after it
    size_t loop_from = 0;
    std::chrono::steady_clock::time_point loop_until;
    for (size_t i = 0; rc == 0 && i < scenario.steps.size(); i++) {
        const Step &step = scenario.steps[i];
        out.BeginStep(file, step.line, step.text, step.row->echo);
        runner.Run(file, step);
        if (loop_from == 0 && std::strcmp(step.row->name, kRepeatStep) == 0) {
            loop_from = i + 1;
            loop_until = std::chrono::steady_clock::now() + std::chrono::milliseconds(step.number);
        }
        if (loop_from != 0 && loop_from < scenario.steps.size() && i + 1 == scenario.steps.size() &&
            std::chrono::steady_clock::now() < loop_until) {
            i = loop_from - 1;
        }
    }
    if (rc == 0) {
        runner.Finish();
    }
    if (report != nullptr) {
        *report = runner.Report();
    }
    AppChecker::SetThreadRole(nullptr);
    return rc;
}

} // namespace sim
