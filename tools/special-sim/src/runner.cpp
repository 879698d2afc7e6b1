// The glue between a scenario, the host SDK's control API, the module's public
// interface and the demo device.
#include "runner.h"

#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

#include "consts.h"
#include "names.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_shadow.h"
#include "noltDevSDK_special_protocol.h"
#include "noltdev_host.h"
#include "record_tables.h"

namespace sim {

namespace {

constexpr int kDomain = NOLTDEVSDK_SPECIAL_DOMAIN_ID;

class Runner;
Runner *g_runner = nullptr; // the module's callbacks carry no user pointer

// The entry points a user's application library exports (noltdev_app_start required).
using AppStartFn = int (*)(void);
using AppStopFn = void (*)(void);
using AppControlFn = int (*)(const char *request);

class Runner : public CallbackObserver {
  public:
    Runner(Transcript &out, const RunOptions &options) : out_(out), options_(options) {}

    int Start();
    void Begin(const std::string &file, const Step &step);
    void Execute(const Step &step);
    void Finish();
    RunReport Report();

    void Received(const noltDevSDK_special_msg_to_dev *msg, int result) override;
    void Answered(const noltDevSDK_special_runtime_info *info, int selector, int result) override;
    void Found(const std::string &text) override;

  private:
    int StartDemo();
    int StartApp();
    void StopApp();
    void AppRequest(const Step &step);
    bool NeedsDemo(const Step &step);
    void NotExercised(const std::string &why);
    static int RecvMsg(noltDevSDK_special_msg_to_dev *msg);
    static int GetRuntimeInfo(noltDevSDK_special_runtime_info *info);
    static int Sink(const noltdev_host_message *msg, void *user);
    static void LogHook(int level, const char *line, void *user);

    void Inject(const Step &step);
    void Call(const Step &step);
    void Shadow(const Step &step);
    void WaitAnswers();
    void Result(const char *kind, const std::string &what, int result);
    bool ShowRuntime(int type, int selector, int result, const cJSON *record);

    DemoDevice device_;
    Transcript &out_;
    RunOptions options_;
    bool sleeping_ = false;
    std::mutex mu_;
    std::condition_variable cv_;
    int pending_voice_ = 0; // custom-voice requests still waiting for their worker's answer
    std::map<std::pair<int, int>, std::string> last_runtime_;
    int hidden_runtime_ = 0;
    std::unique_ptr<AppChecker> checker_; // with an application only
    AppStopFn app_stop_ = nullptr;
    AppControlFn app_control_ = nullptr;
    std::string where_;
    std::vector<std::string> not_exercised_;
};

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

void Runner::Received(const noltDevSDK_special_msg_to_dev *msg, int result) {
    const RecordDesc *desc = MsgRecord(msg->type);
    cJSON *record = desc && msg->data && msg->len > 0
                        ? RecordToJson(*desc, msg->data, static_cast<size_t>(msg->len))
                        : nullptr;
    out_.Callback("recv_msg", msg->type, kMsgTypes.Name(msg->type), msg->len, result, record);
}

void Runner::Answered(const noltDevSDK_special_runtime_info *info, int selector, int result) {
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
    if (msg->command_id == kCenPlt2PuSetCustomVoiceRsp) {
        std::lock_guard<std::mutex> lock(self->mu_);
        self->pending_voice_ = self->pending_voice_ > 0 ? self->pending_voice_ - 1 : 0;
        self->cv_.notify_all();
    }
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
    noltdev_host_set_log_level(0); // the hook brings the chosen lines into the transcript
    int rc = options_.app.empty() ? StartDemo() : StartApp();
    if (rc != 0) {
        return 1;
    }
    rc = noltdev_host_msg_thread_start();
    if (rc != 0) {
        Result("init", "noltdev_host_msg_thread_start", rc);
        return 1;
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
    AppChecker::SetThreadRole("application thread");
    int rc = start();
    Result("init", "noltdev_app_start", rc);
    if (rc == 0 && !checker_->Wrapped()) {
        Result("error",
               "the application's callbacks were not wrapped (noltDevSDK_special_init not interposed)", -1);
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

void Runner::Begin(const std::string &file, const Step &step) {
    where_ = file + ":" + std::to_string(step.line);
    if (checker_) {
        checker_->SetWhere(where_);
    }
    const char *role = "application thread";
    if (step.op == Op::Poll || step.op == Op::Force || step.op == Op::Reset) {
        role = "report-status poller";
    } else if (step.op == Op::ShadowDeliver || step.op == Op::ShadowRead) {
        role = "shadow service";
    }
    AppChecker::SetThreadRole(role);
}

RunReport Runner::Report() {
    RunReport report;
    if (checker_) {
        report.findings = checker_->Findings();
    }
    report.not_exercised = not_exercised_;
    return report;
}

void Runner::NotExercised(const std::string &why) {
    not_exercised_.push_back(where_ + ": " + why);
    cJSON *members = cJSON_CreateObject();
    cJSON_AddStringToObject(members, "reason", why.c_str());
    out_.Outcome("not_exercised", why, members);
}

// Steps that change or show the demo device have nothing to act on with an application.
bool Runner::NeedsDemo(const Step &step) {
    bool demo_only = step.op == Op::Set || step.op == Op::Show || step.op == Op::Answer;
    if (!demo_only || !checker_) {
        return false;
    }
    NotExercised("'" + step.text.substr(0, step.text.find(' ')) +
                 "' needs the demo device; not run with --app");
    return true;
}

// "app REQUEST": the application's own control hook, when it has one.
void Runner::AppRequest(const Step &step) {
    if (app_control_ == nullptr) {
        NotExercised("the application has no noltdev_app_control for '" + step.arg + "'");
        return;
    }
    int rc = app_control_(step.arg.c_str());
    Result("app", "noltdev_app_control(\"" + step.arg + "\")", rc);
    if (rc != 0) {
        NotExercised("the application refused '" + step.arg + "'");
    }
}

void Runner::Finish() {
    WaitAnswers();
    AppChecker::SetThreadRole("application thread");
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

// Custom-voice answers come from a worker thread some time after the request.
void Runner::WaitAnswers() {
    noltdev_host_drain();
    std::unique_lock<std::mutex> lock(mu_);
    if (!cv_.wait_for(lock, std::chrono::milliseconds(options_.answer_timeout_ms),
                      [this] { return pending_voice_ == 0; })) {
        int missing = pending_voice_;
        pending_voice_ = 0;
        lock.unlock();
        out_.Outcome("note", std::to_string(missing) + " custom-voice answer(s) did not come", nullptr);
    }
}

void Runner::Inject(const Step &step) {
    int command = static_cast<int>(step.number);
    out_.Message(true, static_cast<uint32_t>(command), step.seq, 0, step.body);
    if (command == kCenPlt2PuSetCustomVoiceReq && !sleeping_) {
        std::lock_guard<std::mutex> lock(mu_);
        pending_voice_++;
    }
    int rc = noltdev_host_post(kDomain, command, step.seq, step.body.c_str(),
                               static_cast<uint32_t>(step.body.size()));
    if (rc != 0) {
        Result("error", "noltdev_host_post", rc);
    }
    if (step.op == Op::Send) {
        WaitAnswers();
    }
}

void Runner::Shadow(const Step &step) {
    if (step.op == Op::ShadowDeliver) {
        int type = static_cast<int>(step.number);
        out_.Shadow(true, step.arg, type, step.body, 0, 0);
        Result("shadow", "noltdev_host_shadow_deliver",
               noltdev_host_shadow_deliver(kDomain, step.arg.c_str(), type, step.body.c_str(),
                                           static_cast<int>(step.body.size())));
        return;
    }
    std::string value(std::max<size_t>(8192, static_cast<size_t>(step.number) + 1), '\0');
    int type = shd_data_type_null; // what a read that finds nothing shows
    uint32_t version = 0;
    int rc = noltdev_host_shadow_read(kDomain, step.arg.c_str(), static_cast<int>(step.number), &value[0],
                                      static_cast<int>(value.size()), &type, &version);
    value.resize(std::strlen(value.c_str()));
    out_.Shadow(false, step.arg, type, value, rc, version);
}

// One device request through noltDevSDK_special_send_msg; the text requests (code,
// domain) take a 128-byte text record.
int SendRequest(NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_TYPE_E type, void *record, std::string *what) {
    noltDevSDK_special_msg msg;
    std::memset(&msg, 0, sizeof msg);
    msg.msg_type = type;
    msg.msg_struct_ptr = record;
    static const char *const kNames[] = {"UNBIND_USER", "SEND_VERIFICATION_CODE", "QUERY_VODDNS_MAPPED_PORT",
                                         "TRANS_4G_FLOW_INFO"};
    *what = std::string("noltDevSDK_special_send_msg(") + kNames[type] + ")";
    return noltDevSDK_special_send_msg(&msg);
}

void Runner::Call(const Step &step) {
    int rc = 0;
    std::string what;
    char text[128] = {};
    std::strncpy(text, step.arg.c_str(), sizeof text - 1);
    FlowRows rows;
    noltDevSDK_special_4G_flow_info_page page;
    switch (step.call) {
    case CallKind::Unbind:
        rc = SendRequest(NOLTDEVSDK_SPECIAL_UNBIND_USER, nullptr, &what);
        break;
    case CallKind::VerificationCode:
        rc = SendRequest(NOLTDEVSDK_SPECIAL_SEND_VERIFICATION_CODE, text, &what);
        break;
    case CallKind::MappedPortQuery:
        rc = SendRequest(NOLTDEVSDK_SPECIAL_QUERY_VODDNS_MAPPED_PORT, text, &what);
        break;
    case CallKind::Flow4G:
        rows = device_.FlowInfo();
        page.max_count = rows.max_count;
        page.flow_info = rows.flow_info;
        rc = SendRequest(NOLTDEVSDK_SPECIAL_TRANS_4G_FLOW_INFO, &page, &what);
        break;
    case CallKind::FlowCount: {
        noltDevSDK_special_flow_counting_seg_count segs = device_.Counting();
        rc = noltDevSDK_special_report_flow_counting(&segs);
        what = "noltDevSDK_special_report_flow_counting";
        break;
    }
    case CallKind::Raw: {
        std::string body = step.body;
        noltDevSDK_special_trans_cmd_msg raw;
        std::memset(&raw, 0, sizeof raw);
        raw.content = &body[0];
        raw.content_len = static_cast<int>(body.size());
        raw.cmd_id = static_cast<unsigned int>(step.number);
        raw.msg_type = static_cast<unsigned char>(step.response);
        raw.msg_seq = step.seq;
        rc = noltDevSDK_special_send_msg_to_platform(&raw);
        what = "noltDevSDK_special_send_msg_to_platform";
        break;
    }
    case CallKind::TrusteeshipReport:
        rc = noltDevSDK_special_report_trusteeship();
        what = "noltDevSDK_special_report_trusteeship";
        break;
    }
    Result("call", what, rc);
}

void Runner::Execute(const Step &step) {
    if (NeedsDemo(step)) {
        return;
    }
    switch (step.op) {
    case Op::Send:
    case Op::Post:
        Inject(step);
        break;
    case Op::Event:
        Result("event", kEvents.Describe(step.number),
               noltdev_host_raise_event(kDomain, static_cast<int>(step.number)));
        break;
    case Op::Sleep:
        noltdev_host_set_sleep(step.flag ? 1 : 0);
        sleeping_ = step.flag;
        break;
    case Op::Registered:
        noltdev_host_set_registered(step.flag ? 1 : 0);
        break;
    case Op::Serial:
        noltdev_host_set_serial(step.arg.c_str());
        break;
    case Op::ShadowDeliver:
    case Op::ShadowRead:
        Shadow(step);
        break;
    case Op::Set:
        device_.Set(step.set);
        break;
    case Op::Show:
        for (const Group &g : DemoDevice::Groups()) {
            if (step.arg == "all" || step.arg == g.name) {
                out_.State(g.name, device_.GroupJson(g));
            }
        }
        break;
    case Op::Answer:
        if (step.flag) {
            device_.SetRecvResult(static_cast<int>(step.number), step.code);
        } else {
            device_.SetRuntimeResult(static_cast<int>(step.number), step.code);
        }
        break;
    case Op::Call:
        Call(step);
        break;
    case Op::Poll:
        for (long long i = 0; i < step.number; i++) {
            int reports = noltdev_host_report_poll();
            int hidden;
            {
                std::lock_guard<std::mutex> lock(mu_);
                hidden = hidden_runtime_;
                hidden_runtime_ = 0;
            }
            cJSON *members = cJSON_CreateObject();
            cJSON_AddNumberToObject(members, "reports", reports);
            cJSON_AddNumberToObject(members, "hidden_runtime_answers", hidden);
            out_.Outcome("poll",
                         std::to_string(reports) + " report(s); " + std::to_string(hidden) +
                             " unchanged runtime answer(s) not shown",
                         members);
        }
        break;
    case Op::Force:
        Result("force", kReportIds.Describe(step.number),
               noltDevSDK_report_set_force_report(static_cast<int>(step.number)));
        break;
    case Op::Reset:
        Result("reset", "noltdev_host_report_reset_all", noltdev_host_report_reset_all());
        break;
    case Op::Wait:
        if (step.number > 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(step.number));
        } else {
            WaitAnswers();
        }
        break;
    case Op::Note:
        out_.Outcome("note", step.arg, nullptr);
        break;
    case Op::App:
        AppRequest(step);
        break;
    }
}

} // namespace

int RunScenario(const Scenario &scenario, const std::string &file, Transcript &out, const RunOptions &options,
                RunReport *report) {
    Runner runner(out, options);
    int rc = runner.Start();
    for (size_t i = 0; rc == 0 && i < scenario.steps.size(); i++) {
        const Step &step = scenario.steps[i];
        out.BeginStep(file, step.line, step.text, step.op != Op::Note);
        runner.Begin(file, step);
        runner.Execute(step);
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
