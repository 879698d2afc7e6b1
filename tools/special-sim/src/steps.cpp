// The scenario's steps, each one's parser beside its executor, and the table that
// names them (see README.md for the language).
#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

#include "consts.h"
#include "names.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_shadow.h"
#include "noltdev_host.h"
#include "runner_impl.h"
#include "scenario.h"
#include "scenario_words.h"
#include "step_table.h"
#include "transcript.h"

namespace sim {

namespace {

std::string NoWords(Cursor &, Step &, ParseContext &) {
    return "";
}

// send / post CMD [seq N] BODY
std::string ParseSend(Cursor &c, Step &s, ParseContext &ctx) {
    std::string err = CommandAndSeq(c, s, ctx);
    return err.empty() ? ReadBody(c, ctx, &s.body) : err;
}
void RunSend(Runner &run, const Step &s) {
    run.Inject(static_cast<int>(s.number), s.seq, s.body, true);
}
void RunPost(Runner &run, const Step &s) {
    run.Inject(static_cast<int>(s.number), s.seq, s.body, false);
}

// event NAME
std::string ParseEvent(Cursor &c, Step &s, ParseContext &) {
    return NeedName(c, kEvents, "event", &s.number);
}
void RunEvent(Runner &run, const Step &s) {
    run.Result("event", kEvents.Describe(s.number),
               noltdev_host_raise_event(kDomain, static_cast<int>(s.number)));
}

// sleep on|off, registered on|off
std::string ParseOnOff(Cursor &c, Step &s, ParseContext &) {
    return NeedOnOff(c, &s.flag);
}
void RunSleep(Runner &run, const Step &s) {
    noltdev_host_set_sleep(s.flag ? 1 : 0);
    run.SetSleeping(s.flag);
}
void RunRegistered(Runner &, const Step &s) {
    noltdev_host_set_registered(s.flag ? 1 : 0);
}

// link up|down
std::string ParseLink(Cursor &c, Step &s, ParseContext &) {
    std::string w;
    c.Word(&w);
    s.flag = w == "up";
    return s.flag || w == "down" ? "" : "expected up or down, got '" + w + "'";
}
void RunLink(Runner &run, const Step &s) {
    int flag = s.flag ? 1 : 0;
    run.Result("link", "noltdev_host_set_link(" + std::to_string(flag) + ")", noltdev_host_set_link(flag));
}

// serial TEXT
std::string ParseSerial(Cursor &c, Step &s, ParseContext &) {
    return c.Word(&s.arg) ? "" : "serial needs a text";
}
void RunSerial(Runner &, const Step &s) {
    noltdev_host_set_serial(s.arg.c_str());
}

// shadow deliver KEY TYPE BODY (flag set), shadow read KEY [SIZE]
std::string ParseShadow(Cursor &c, Step &s, ParseContext &ctx) {
    std::string what;
    c.Word(&what);
    if (!c.Word(&s.arg)) {
        return "shadow " + what + " needs a key";
    }
    if (what == "deliver") {
        s.flag = true;
        std::string err = NeedName(c, kShadowTypes, "shadow value type", &s.number);
        return err.empty() ? ReadBody(c, ctx, &s.body) : err;
    }
    if (what == "read") {
        s.number = 0;
        return c.AtEnd() ? "" : NeedNumber(c, "buffer size", 1, 1 << 20, &s.number);
    }
    return "expected 'shadow deliver KEY TYPE BODY' or 'shadow read KEY [SIZE]'";
}
void ShadowDeliver(Runner &run, const Step &s) {
    int type = static_cast<int>(s.number);
    run.Out().Shadow(true, s.arg, type, s.body, 0, 0);
    run.Result("shadow", "noltdev_host_shadow_deliver",
               noltdev_host_shadow_deliver(kDomain, s.arg.c_str(), type, s.body.c_str(),
                                           static_cast<int>(s.body.size())));
}
void ShadowRead(Runner &run, const Step &s) {
    std::string value(std::max<size_t>(8192, static_cast<size_t>(s.number) + 1), '\0');
    int type = shd_data_type_null; // what a read that finds nothing shows
    uint32_t version = 0;
    int rc = noltdev_host_shadow_read(kDomain, s.arg.c_str(), static_cast<int>(s.number), &value[0],
                                      static_cast<int>(value.size()), &type, &version);
    value.resize(std::strlen(value.c_str()));
    run.Out().Shadow(false, s.arg, type, value, rc, version);
}
void RunShadow(Runner &run, const Step &s) {
    s.flag ? ShadowDeliver(run, s) : ShadowRead(run, s);
}

// set PATH VALUE (the value is the rest of the line, quotes optional)
std::string ParseSet(Cursor &c, Step &s, ParseContext &) {
    std::string path;
    if (!c.Word(&path)) {
        return "set needs a field path and a value";
    }
    std::string value = c.Rest();
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
        std::vector<std::string> words;
        if (SplitWords(value, &words) && words.size() == 1) {
            value = words[0];
        }
    }
    std::string err;
    return DemoDevice::PrepareSet(path, value, &s.set, &err) ? "" : err;
}
void RunSet(Runner &run, const Step &s) {
    run.Device().Set(s.set);
}

// show [GROUP]
std::string ParseShow(Cursor &c, Step &s, ParseContext &) {
    s.arg = c.AtEnd() ? "all" : c.Rest();
    return s.arg == "all" || DemoDevice::FindGroup(s.arg) ? "" : "unknown state group '" + s.arg + "'";
}
void RunShow(Runner &run, const Step &s) {
    for (const Group &g : DemoDevice::Groups()) {
        if (s.arg == "all" || s.arg == g.name) {
            run.Out().State(g.name, run.Device().GroupJson(g));
        }
    }
}

// answer recv_msg|get_runtime_info TYPE CODE (flag: recv_msg)
std::string ParseAnswer(Cursor &c, Step &s, ParseContext &) {
    std::string target;
    c.Word(&target);
    if (target != "recv_msg" && target != "get_runtime_info") {
        return "expected 'answer recv_msg|get_runtime_info TYPE CODE'";
    }
    s.flag = target == "recv_msg";
    std::string err = NeedName(c, s.flag ? kMsgTypes : kRuntimeTypes, "type", &s.number);
    if (!err.empty()) {
        return err;
    }
    long long code = 0;
    std::string w;
    if (!c.Word(&w) || !(w == "ok" || kResultCodes.Lookup(w, &code))) {
        return "expected a result code (ok, a NOLTDEVSDK_SPECIAL_CODE_ name or a number), got '" + w + "'";
    }
    s.code = static_cast<int>(static_cast<unsigned int>(code));
    s.arg = w;
    return "";
}
void RunAnswer(Runner &run, const Step &s) {
    if (s.flag) {
        run.Device().SetRecvResult(static_cast<int>(s.number), s.code);
    } else {
        run.Device().SetRuntimeResult(static_cast<int>(s.number), s.code);
    }
}

// poll [N]
std::string ParsePoll(Cursor &c, Step &s, ParseContext &) {
    s.number = 1;
    return c.AtEnd() ? "" : NeedNumber(c, "poll count", 1, 1000, &s.number);
}
void RunPoll(Runner &run, const Step &s) {
    for (long long i = 0; i < s.number; i++) {
        int reports = noltdev_host_report_poll();
        int hidden = run.TakeHiddenRuntime();
        cJSON *members = cJSON_CreateObject();
        cJSON_AddNumberToObject(members, "reports", reports);
        cJSON_AddNumberToObject(members, "hidden_runtime_answers", hidden);
        run.Out().Outcome("poll",
                          std::to_string(reports) + " report(s); " + std::to_string(hidden) +
                              " unchanged runtime answer(s) not shown",
                          members);
    }
}

// force ID
std::string ParseForce(Cursor &c, Step &s, ParseContext &) {
    return NeedName(c, kReportIds, "report id", &s.number);
}
void RunForce(Runner &run, const Step &s) {
    run.Result("force", kReportIds.Describe(s.number),
               noltDevSDK_report_set_force_report(static_cast<int>(s.number)));
}

// reset
void RunReset(Runner &run, const Step &) {
    run.Result("reset", "noltdev_host_report_reset_all", noltdev_host_report_reset_all());
}

// fail OPERATION N [CODE]: a row of the host SDK's fault table, except those that only
// reach the module inside the test suite (its own threads and allocations are wrapped at
// link time there; here the module is a shared library, and cJSON's allocator is the
// simulator's too).
std::string ParseFail(Cursor &c, Step &s, ParseContext &) {
    std::string name;
    c.Word(&name);
    s.number = noltdev_host_fault_find(name.c_str());
    if (s.number < 0) {
        return "unknown platform operation '" + name + "'";
    }
    if (s.number == NOLTDEV_HOST_FAULT_THREAD_CREATE || s.number == NOLTDEV_HOST_FAULT_MALLOC ||
        s.number == NOLTDEV_HOST_FAULT_JSON_ALLOC) {
        return "'" + name + "' fails only in the test suite, not in the simulator";
    }
    long long count = 0;
    std::string err = NeedNumber(c, "call count", 1, 1000000, &count);
    s.count = static_cast<int>(count);
    long long code = -1;
    std::string w;
    if (err.empty() && c.Word(&w) && !kResultCodes.Lookup(w, &code)) {
        err = "expected a result code (a NOLTDEVSDK_SPECIAL_CODE_ name or a number), got '" + w + "'";
    }
    s.code = static_cast<int>(static_cast<unsigned int>(code));
    return err;
}
void RunFail(Runner &run, const Step &s) {
    int op = static_cast<int>(s.number);
    run.Result("fail",
               std::string(noltdev_host_fault_name(op)) + ", next " + std::to_string(s.count) +
                   " call(s) give " + DescribeCode(s.code),
               noltdev_host_fault_set(op, 0, s.count, 0, s.code));
}

// wait [MS]
std::string ParseWait(Cursor &c, Step &s, ParseContext &) {
    s.number = 0;
    return c.AtEnd() ? "" : NeedNumber(c, "milliseconds", 0, 600000, &s.number);
}
void RunWait(Runner &run, const Step &s) {
    if (s.number > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(s.number));
    } else {
        run.WaitAnswers();
    }
}

// repeat MS: the steps after it run again and again until MS milliseconds have passed
// (RunScenario does the looping; the step itself only marks where the loop starts)
std::string ParseRepeat(Cursor &c, Step &s, ParseContext &) {
    return NeedNumber(c, "milliseconds", 1, 600000, &s.number);
}
void RunRepeat(Runner &, const Step &) {}

// note TEXT, app REQUEST (the qualification suite's way to ask the application for a
// state change on its side)
std::string ParseNote(Cursor &c, Step &s, ParseContext &) {
    s.arg = c.Rest();
    return "";
}
void RunNote(Runner &run, const Step &s) {
    run.Out().Outcome("note", s.arg, nullptr);
}
std::string ParseApp(Cursor &c, Step &s, ParseContext &) {
    s.arg = c.Rest();
    return s.arg.empty() ? "app needs a request" : "";
}
void RunApp(Runner &run, const Step &s) {
    run.AppRequest(s.arg);
}

// call OPERATION ... (the operations' own table and parser are in step_calls.cpp)
void RunCall(Runner &run, const Step &s) {
    std::string what;
    int rc = s.call->run(run, s, &what);
    run.Result("call", what, rc);
}

const StepRow kSteps[] = {
    // name, parser, executor, thread role, needs the demo device, echoed
    {"send", ParseSend, RunSend, kRoleApplication, false, true},
    {"post", ParseSend, RunPost, kRoleApplication, false, true},
    {"event", ParseEvent, RunEvent, kRoleApplication, false, true},
    {"sleep", ParseOnOff, RunSleep, kRoleApplication, false, true},
    {"registered", ParseOnOff, RunRegistered, kRoleApplication, false, true},
    {"link", ParseLink, RunLink, kRoleApplication, false, true},
    {"serial", ParseSerial, RunSerial, kRoleApplication, false, true},
    {"shadow", ParseShadow, RunShadow, kRoleShadow, false, true},
    {"set", ParseSet, RunSet, kRoleApplication, true, true},
    {"show", ParseShow, RunShow, kRoleApplication, true, true},
    {"answer", ParseAnswer, RunAnswer, kRoleApplication, true, true},
    {"call", ParseCall, RunCall, kRoleApplication, false, true},
    {"poll", ParsePoll, RunPoll, kRolePoller, false, true},
    {"force", ParseForce, RunForce, kRolePoller, false, true},
    {"reset", NoWords, RunReset, kRolePoller, false, true},
    {"fail", ParseFail, RunFail, kRoleApplication, false, true},
    {"wait", ParseWait, RunWait, kRoleApplication, false, true},
    {kRepeatStep, ParseRepeat, RunRepeat, kRoleApplication, false, true},
    {"app", ParseApp, RunApp, kRoleApplication, false, true},
    {"note", ParseNote, RunNote, kRoleApplication, false, false},
};

} // namespace

const char kRepeatStep[] = "repeat";

const StepRow *FindStep(const std::string &name) {
    const StepRow *end = kSteps + sizeof kSteps / sizeof kSteps[0];
    const StepRow *row = std::find_if(kSteps, end, [&](const StepRow &r) { return name == r.name; });
    return row != end ? row : nullptr;
}

} // namespace sim
