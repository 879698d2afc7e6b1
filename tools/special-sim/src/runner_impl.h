// The running simulation as the steps see it: the module inside the host SDK with the
// demo device (or an application) behind its callbacks, and the transcript. Used by the
// scenario thread only; the callbacks arrive on the module's threads.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "app_check.h"
#include "device_state.h"
#include "noltDevSDK_special_protocol.h"
#include "noltdev_host.h"
#include "runner.h"

namespace sim {

// The module's domain, as the host SDK addresses its messages, events and shadow keys.
constexpr int kDomain = NOLTDEVSDK_SPECIAL_DOMAIN_ID;

class Runner : public CallbackObserver {
  public:
    Runner(Transcript &out, const RunOptions &options) : out_(out), options_(options) {}

    // Brings the module up; 0, or 1 when it (or the application) did not start.
    int Start();
    // Names where the step is for findings and runs it (a demo step is skipped with --app).
    void Run(const std::string &file, const Step &step);
    void Finish();
    RunReport Report();

    void Received(const noltDevSDK_special_msg_to_dev *msg, int result) override;
    void Answered(const noltDevSDK_special_runtime_info *info, int selector, int result) override;
    void Found(const std::string &text) override;

    // What a step's executor may do.
    Transcript &Out() { return out_; }
    DemoDevice &Device() { return device_; }
    // Writes an operation's result ("KIND" outcome: "what -> code").
    void Result(const char *kind, const std::string &what, int result);
    // Injects a platform command; `wait`: until the device handled it.
    void Inject(int command, unsigned int seq, const std::string &body, bool wait);
    // Until posted messages are delivered and custom-voice answers came (bounded).
    void WaitAnswers();
    void SetSleeping(bool on) { sleeping_ = on; }
    // Unchanged runtime answers not shown since the last call.
    int TakeHiddenRuntime();
    // "app REQUEST": the application's control hook, when it has one.
    void AppRequest(const std::string &request);

  private:
    int StartDemo();
    int StartApp();
    void StopApp();
    void NotExercised(const std::string &why);
    static int RecvMsg(noltDevSDK_special_msg_to_dev *msg);
    static int GetRuntimeInfo(noltDevSDK_special_runtime_info *info);
    static int Sink(const noltdev_host_message *msg, void *user);
    static void LogHook(int level, const char *line, void *user);
    bool ShowRuntime(int type, int selector, int result, const cJSON *record);

    using AppStopFn = void (*)(void);
    using AppControlFn = int (*)(const char *request);

    DemoDevice device_;
    Transcript &out_;
    RunOptions options_;
    bool sleeping_ = false;
    std::mutex mu_;
    int voice_requests_ = 0; // custom-voice requests whose worker's answer is awaited (scenario thread)
    std::map<std::pair<int, int>, std::string> last_runtime_;
    int hidden_runtime_ = 0;
    std::unique_ptr<AppChecker> checker_; // with an application only
    AppStopFn app_stop_ = nullptr;
    AppControlFn app_control_ = nullptr;
    std::string where_;
    std::vector<std::string> not_exercised_;
    // Keeps a non-zero answer of the application (under mu_).
    void KeepAnswer(const char *callback, int type, int result);
    std::vector<std::string> answers_;
    std::vector<std::pair<std::string, int>> not_supported_;
};

} // namespace sim
