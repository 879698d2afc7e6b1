// Runs a checked scenario: the module is loaded inside the host SDK (kernel message
// thread, report-status service in step mode, shadow service) with the demo device
// as its application, and every step, message and callback goes to the transcript.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "app_check.h"
#include "scenario.h"
#include "transcript.h"

namespace sim {

enum class RuntimeShow { All, Changes, None };

struct RunOptions {
    int log_level = 0;                          // module log lines up to this level go to the transcript
    RuntimeShow runtime = RuntimeShow::Changes; // which get_runtime_info answers to show
    int answer_timeout_ms = 3000;               // how long "wait" waits for a custom-voice answer
    int poll_ms = 0;    // > 0: the report-status service polls on its own thread at this period
    std::string app;    // the application's library in place of the demo device
    CheckOptions check; // the contract checker (with an application only)
};

// What a run found beyond its transcript.
struct RunReport {
    std::vector<Finding> findings;
    // Steps that could not do what they ask: a demo-device step with an application, or
    // an application that has no control hook or refused the request.
    std::vector<std::string> not_exercised;
    // The application's non-zero answers, "NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT (0x...) to
    // get_runtime_info NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN (14)", each once.
    std::vector<std::string> answers;
    // (callback, type) the application answered with the not-supported code.
    std::vector<std::pair<std::string, int>> not_supported;
};

// The module's own rule: a code whose low twelve bits are 4 says "not supported".
bool IsNotSupported(int code);

// Returns 0, or 1 when the module (or the application) could not be started.
int RunScenario(const Scenario &scenario, const std::string &file, Transcript &out, const RunOptions &options,
                RunReport *report = nullptr);

} // namespace sim
