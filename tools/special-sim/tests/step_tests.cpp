// Tests of each scenario step's effect: a short scenario runs against the module and
// the demo device, and its JSON Lines must show what the step is for (and must not
// show what it prevents).
#include <gtest/gtest.h>

#include <cstdio>

#include "expect.h"
#include "runner.h"
#include "scenario.h"
#include "transcript.h"

namespace sim {
namespace {

// Plays a scenario with the demo device; the JSON Lines it wrote.
std::vector<std::string> Play(const std::string &text, RunOptions options = RunOptions()) {
    Scenario scenario = ParseScenario(text, "t.scn");
    EXPECT_TRUE(scenario.errors.empty()) << scenario.errors[0];
    FILE *sink = std::fopen("/dev/null", "w");
    std::vector<std::string> lines;
    {
        Transcript out(sink, true, true);
        options.answer_timeout_ms = 1000;
        EXPECT_EQ(RunScenario(scenario, "t.scn", out, options), 0);
        lines = out.Lines();
    }
    std::fclose(sink);
    return lines;
}

const char kWorkMode2[] =
    "kCenPlt2PuSetKeyValueReq <Request><Type>batteryCameraWorkMode</Type><Value>2</Value></Request>";

struct StepCase {
    const char *name;
    std::string scenario;
    const char *holds; // expectation lines that must each match
    const char *never; // expectation lines none of which may match
};

TEST(StepEffect, EachStepDoesWhatItSays) {
    const std::string mode2 = kWorkMode2;
    const StepCase cases[] = {
        {"send waits for the device's answer", "send " + mode2,
         "to_device command=18829 seq=1 line=1\n"
         "recv_msg type=16 record.mode=2 result=0 line=1\n"
         "to_platform command=18830 seq=1 response=1 body~<Result>0 line=1",
         ""},
        {"post goes on, wait collects the answer", "post " + mode2 + "\nnote between\nwait",
         "to_device command=18829 seq=1 line=1\nnote text=between line=2\nto_platform command=18830 seq=1",
         ""},
        {"commands without seq are numbered, an explicit seq is kept",
         "send " + mode2 + "\nsend kCenPlt2PuSetKeyValueReq seq 77 <Request/>\nsend " + mode2,
         "to_device seq=1 line=1\nto_device seq=77 line=2\nto_device seq=2 line=3", ""},
        {"a sleeping device drops commands", "sleep on\nsend " + mode2 + "\nsleep off\nsend " + mode2,
         "to_device line=2\nrecv_msg type=16 line=4", "recv_msg line=2\nto_platform command=18830 line=2"},
        {"event", "event online", "event operation~sdk_kernel_event_online result=0", ""},
        {"serial goes into what the device sends", "serial DS4242\ncall verification-code 1234",
         "to_platform command=13450 body~<DevSerial>DS4242 body~1234\n"
         "call operation=noltDevSDK_special_send_msg(SEND_VERIFICATION_CODE) result=0",
         ""},
        {"the 4G flow report needs registration", "registered off\ncall 4g-flow\nregistered on\ncall 4g-flow",
         "call operation=noltDevSDK_special_send_msg(TRANS_4G_FLOW_INFO) result=0 line=4\n"
         "to_platform command=13600 line=4",
         "to_platform command=13600 line=2\ncall result=0 line=2"},
        {"shadow deliver reaches the device, read gives the platform's view",
         "shadow deliver Trusteeship array "
         "[{\"channel\":2,\"subserial\":\"CH0000000002\",\"baseserial\":\"DS0000000000\"}]\n"
         "shadow read Trusteeship",
         "shadow_to_device key=Trusteeship type=4 line=1\n"
         "recv_msg type=6 record.usNum=1 record.astUnit.0.acSubserial=CH0000000002\n"
         "shadow operation=noltdev_host_shadow_deliver result=0\n"
         "shadow_to_platform key=Trusteeship result=0 line=2",
         ""},
        {"set changes what the device answers, show prints a group", "set ring.vol 33\nshow ring\npoll",
         "state group=ring record.vol=33 line=2\nget_runtime_info type=13 record.vol=33 line=3",
         "state group=plan"},
        {"show without a group prints every group", "show",
         "state group=ring\nstate group=plan\nstate group=device", ""},
        {"setting past a count raises it", "set children.subserial.3.subserial CH9\npoll",
         "get_runtime_info type=7 record.num=4 record.subserial.3.subserial=CH9", ""},
        {"answer makes a callback answer a code until ok",
         "answer recv_msg BATTERY_WORK_MODE -1\nsend " + mode2 +
             "\nanswer recv_msg BATTERY_WORK_MODE ok\nsend " + mode2,
         "recv_msg type=16 result=-1 line=2\nrecv_msg type=16 result=0 line=4", ""},
        {"answer for get_runtime_info", "answer get_runtime_info RING_SOUND -5\npoll",
         "get_runtime_info type=13 result=-5", "get_runtime_info type=13 result=0"},
        {"call unbind", "call unbind",
         "to_platform command=19590\ncall operation=noltDevSDK_special_send_msg(UNBIND_USER) result=0", ""},
        {"call mapped-port-query", "call mapped-port-query cam.example.net",
         "to_platform command=10379 body~<Domain>cam.example.net</Domain>", ""},
        {"call flow-count", "call flow-count",
         "to_platform command=12374\ncall operation=noltDevSDK_special_report_flow_counting result=0", ""},
        {"call trusteeship-report", "call trusteeship-report",
         "call operation=noltDevSDK_special_report_trusteeship result=0", ""},
        {"call raw answers with its seq and response flag",
         "call raw kCenPlt2PuAIMemberPicQueryRsp seq 9 response 1 {}",
         "to_platform command=19603 seq=9 response=1 body={}\n"
         "call operation=noltDevSDK_special_send_msg_to_platform result=0",
         ""},
        // (the report-status service keeps what it reported across runs in one process)
        {"after a reset a poll reports, the next one only changes", "reset\npoll 2",
         "poll hidden_runtime_answers=0 line=2\npoll reports=0 hidden_runtime_answers=21 line=2",
         "poll reports=0 hidden_runtime_answers=0"},
        {"force reports one item at the next poll", "poll\nforce SpeakerConfig\npoll",
         "force operation~NOLTDEVSDK_ReportSpeakerConfig result=0\npoll reports=1 line=3", ""},
        {"reset makes the next poll report everything again", "poll\nreset\npoll",
         "reset result=21\npoll reports=20 line=3", "poll reports=0 line=3"},
        {"wait MS only waits", "wait 1", "step \"text=wait 1\"", "note"},
        {"a note is a line for the reader, not an echoed step", "note hello there",
         "note \"text=hello there\"", "step text~note"},
        {"app without an application is not exercised", "app change 3",
         "not_exercised reason~noltdev_app_control", "app"},
    };
    for (const StepCase &c : cases) {
        std::vector<std::string> lines = Play(c.scenario);
        std::vector<std::string> problems = CheckExpectations(lines, c.holds, "holds");
        for (const std::string &p : problems) {
            ADD_FAILURE() << c.name << ": " << p;
        }
        for (const std::string &never : SplitLines(c.never)) {
            if (!never.empty()) {
                EXPECT_EQ(CheckExpectations(lines, never, "never").size(), 1u) << c.name << ": " << never;
            }
        }
        EXPECT_EQ(CheckExpectations(lines, "init result=0 line=0\nfini result=0", "ends").size(), 0u)
            << c.name;
    }
}

// How many lines of a kind (and, when given, with a member containing `text`).
size_t Count(const std::vector<std::string> &lines, const std::string &kind, const std::string &text = "") {
    size_t n = 0;
    for (const std::string &line : lines) {
        bool has_kind = line.find("\"kind\":\"" + kind + "\"") != std::string::npos;
        n += has_kind && line.find(text) != std::string::npos ? 1 : 0;
    }
    return n;
}

// --runtime: every answer, only changed ones, or none (then counted in the poll line).
TEST(RunOptions, RuntimeAnswersShown) {
    struct Case {
        RuntimeShow show;
        size_t answers; // over two polls of 21 questions each
        const char *second_poll;
    } cases[] = {
        {RuntimeShow::All, 42, "poll reports=0 hidden_runtime_answers=0 line=2"},
        {RuntimeShow::Changes, 21, "poll reports=0 hidden_runtime_answers=21 line=2"},
        {RuntimeShow::None, 0, "poll reports=0 hidden_runtime_answers=21 line=2"},
    };
    for (const Case &c : cases) {
        RunOptions options;
        options.runtime = c.show;
        std::vector<std::string> lines = Play("reset\npoll 2", options);
        EXPECT_EQ(Count(lines, "get_runtime_info"), c.answers) << static_cast<int>(c.show);
        EXPECT_TRUE(CheckExpectations(lines, c.second_poll, "e").empty()) << static_cast<int>(c.show);
    }
}

// --poll-ms: the service polls on its own thread, with no poll step; "repeat" runs the
// steps after it again until its time has passed.
TEST(RunOptions, PollingThreadAndRepeat) {
    for (int poll_ms : {0, 5}) {
        RunOptions options;
        options.poll_ms = poll_ms;
        std::vector<std::string> lines = Play("note once\nrepeat 100\nnote again\nwait 10", options);
        EXPECT_EQ(Count(lines, "note", "once"), 1u);
        EXPECT_GE(Count(lines, "note", "again"), 3u);
        EXPECT_EQ(Count(lines, "get_runtime_info") > 0, poll_ms > 0) << poll_ms;
        EXPECT_EQ(CheckExpectations(lines, "init operation=noltdev_host_report_start(5)", "e").empty(),
                  poll_ms > 0);
    }
}

// --log-level: the module's lines up to that level, in order with the traffic.
TEST(RunOptions, LogLinesUpToTheLevel) {
    const std::string scenario = std::string("send ") + kWorkMode2;
    std::vector<size_t> counts;
    for (int level = 0; level <= 4; level++) {
        RunOptions options;
        options.log_level = level;
        std::vector<std::string> lines = Play(scenario, options);
        counts.push_back(Count(lines, "log"));
        for (int above = level + 1; above <= 4; above++) {
            EXPECT_EQ(Count(lines, "log", "\"level\":" + std::to_string(above)), 0u) << level;
        }
    }
    EXPECT_EQ(counts[0], 0u);
    EXPECT_GT(counts[4], counts[0]);
    for (size_t i = 1; i < counts.size(); i++) {
        EXPECT_GE(counts[i], counts[i - 1]) << i;
    }
}

} // namespace
} // namespace sim
