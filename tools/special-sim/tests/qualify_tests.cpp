// The qualification's verdicts: the four outcomes and their messages, a row lost to a
// crash, an exit or a hang, rows made from the suite's sections and the status table, and
// the checker's rules on what the header allows (the custom-voice worker, re-entry).
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

#include "app_check.h"
#include "crash_board.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_def.h"
#include "qualify.h"
#include "qualify_rows.h"
#include "runner.h"
#include "transcript.h"

namespace sim {
namespace {

const int kNotSupport = NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;

Finding MakeFinding(Severity severity) {
    return Finding{"get_runtime_info",
                   13,
                   "NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND",
                   Issue{FaultClass::Len, "ring_type.len", "len handed back as 16", severity},
                   "f.scn:3",
                   "report-status poller",
                   0};
}

// Each outcome from what a run left: the findings, the application's answers, the
// steps not exercised and the unmet expectations.
TEST(Judge, FourOutcomesAndTheirMessages) {
    RowPlan plan{"command kCenPlt2PuSetDevPlanReq", "command", "f.scn", "", "f.expect", "", {}, {}};
    plan.needs = {{"get_runtime_info", 14}, {"recv_msg", 5}};
    const std::string wake_ns = DescribeCode(kNotSupport) + " to recv_msg NOLTDEVSDK_SPECIAL_ON_WAKE (5)";
    const std::string plan_ns =
        DescribeCode(kNotSupport) + " to get_runtime_info NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN (14)";
    const std::string plan_fail = "-1 to get_runtime_info NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN (14)";
    const std::string other_ns =
        DescribeCode(kNotSupport) + " to get_runtime_info NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO (16)";
    const std::vector<std::string> unmet = {"f.expect:2: nothing matches: x"};
    const struct Case {
        const char *what;
        std::vector<Finding> findings;
        std::vector<std::string> answers;
        std::vector<std::pair<std::string, int>> not_supported;
        std::vector<std::string> not_exercised, unmet;
        bool required;
        const char *status;
        std::vector<std::string> says; // in the problems, the reason or the notes
    } cases[] = {
        {"clean", {}, {}, {}, {}, {}, false, "passed", {}},
        {"info only", {MakeFinding(Severity::Info)}, {}, {}, {}, {}, false, "passed", {"info len"}},
        {"an error finding",
         {MakeFinding(Severity::Error)},
         {},
         {},
         {},
         unmet,
         false,
         "FAILED",
         {"error len get_runtime_info", "f.expect:2: nothing matches"}},
        {"not supported, needed",
         {},
         {plan_ns},
         {{"get_runtime_info", 14}},
         {},
         unmet,
         false,
         "not applicable",
         {"the application answered " + plan_ns}},
        {"declined the command",
         {},
         {wake_ns},
         {{"recv_msg", 5}},
         {},
         {},
         false,
         "not applicable",
         {wake_ns}},
        {"a question not supported, all met",
         {},
         {plan_ns},
         {{"get_runtime_info", 14}},
         {},
         {},
         false,
         "passed",
         {}},
        {"not supported but required",
         {},
         {plan_ns},
         {{"get_runtime_info", 14}},
         {},
         unmet,
         true,
         "FAILED",
         {"the application answered " + plan_ns, "the row is required"}},
        {"another non-zero code",
         {},
         {plan_fail},
         {},
         {},
         unmet,
         false,
         "FAILED",
         {"the application answered " + plan_fail}},
        {"not supported, not needed",
         {},
         {other_ns},
         {{"get_runtime_info", 16}},
         {},
         unmet,
         false,
         "FAILED",
         {}},
        {"hook refused", {}, {}, {}, {"f.scn:4: refused"}, {}, false, "not exercised", {"f.scn:4: refused"}},
        {"hook refused, not supported",
         {},
         {plan_ns},
         {{"get_runtime_info", 14}},
         {"f.scn:4: refused"},
         {},
         false,
         "not applicable",
         {plan_ns}},
    };
    for (const Case &c : cases) {
        RunReport report;
        report.findings = c.findings;
        report.answers = c.answers;
        report.not_supported = c.not_supported;
        report.not_exercised = c.not_exercised;
        QualifyRow row = JudgeRow(plan, report, c.unmet, c.required);
        EXPECT_EQ(row.status, c.status) << c.what;
        std::string all = row.reason;
        for (const std::string &p : row.problems) {
            all += "\n" + p;
        }
        for (const std::string &n : row.notes) {
            all += "\n" + n;
        }
        for (const std::string &s : c.says) {
            EXPECT_NE(all.find(s), std::string::npos) << c.what << ": " << all;
        }
        EXPECT_EQ(row.status == "FAILED", row.reason.empty() && !row.problems.empty()) << c.what;
    }
    EXPECT_TRUE(IsNotSupported(kNotSupport));
    EXPECT_TRUE(IsNotSupported(0x4));
    EXPECT_FALSE(IsNotSupported(0));
    EXPECT_FALSE(IsNotSupported(-1));
}

// A race the application takes part in fails a passing row with a "race" finding; one
// between threads of our own (no application frame) is only a note.
TEST(Judge, RacesInTheApplicationFailTheRowOthersAreNoted) {
    const std::string app = "/apps/libracy.so";
    const std::string in_app = R"(WARNING: ThreadSanitizer: data race (pid=1)
  Write of size 4 at 0x7f0000001004 by thread T1:
    #0 on_recv_msg /src/racy.c:31 (libracy.so+0x1218)
    #1 sim::AppChecker::RecvShim(noltDevSDK_special_msg_to_dev*) /src/app_check.cpp:113 (special-sim+0x1)
  Previous read of size 4 at 0x7f0000001004 by thread T2:
    #0 on_get_runtime_info /src/racy.c:52 (libracy.so+0x126a)
    #1 sim::AppChecker::RuntimeShim(noltDevSDK_special_runtime_info*) /src/app_check.cpp:117 (special-sim+0x2)
  Location is global 'g_volume' of size 8 at 0x7f0000001000 (libracy.so+0x4000)
  Thread T1 'kernel-msg' (tid=2, running) created by main thread at:
    #0 pthread_create <null> (special-sim+0x3)
  Thread T2 'report-status' (tid=3, running) created by main thread at:
    #0 pthread_create <null> (special-sim+0x3)
SUMMARY: ThreadSanitizer: data race /src/racy.c:31 in on_recv_msg
)";
    std::string ours = in_app;
    for (size_t at = ours.find("libracy.so+"); at != std::string::npos; at = ours.find("libracy.so+")) {
        ours.replace(at, 10, "libother.so");
    }
    const struct {
        const std::string *log;
        const char *status;
        size_t problems, notes, findings;
        const char *says;
    } cases[] = {
        {&in_app, "FAILED", 1, 0, 1, "race: recv_msg (kernel message thread"},
        {&ours, "passed", 0, 1, 0, "race outside the application"},
    };
    for (const auto &c : cases) {
        QualifyRow row{"command x", "command", "f.scn", "passed", {}, {}, "", ""};
        std::vector<Finding> findings;
        AddRaces(*c.log, app, &row, &findings);
        EXPECT_EQ(row.status, c.status) << c.says;
        ASSERT_EQ(row.problems.size(), c.problems) << c.says;
        ASSERT_EQ(row.notes.size(), c.notes) << c.says;
        ASSERT_EQ(findings.size(), c.findings) << c.says;
        const std::string &text = c.problems > 0 ? row.problems[0] : row.notes[0];
        EXPECT_EQ(text.find(c.says), 0u) << text;
        EXPECT_NE(text.find("g_volume+4"), std::string::npos) << text;
        if (c.findings > 0) {
            EXPECT_EQ(findings[0].issue.fault, FaultClass::Race);
            EXPECT_EQ(findings[0].callback, "recv_msg");
        }
    }
}

// What a row's process sends back survives the pipe, texts with tabs and newlines too;
// a row cut short (no end line) is not taken.
TEST(Judge, RowsTravelBackFromTheirProcess) {
    QualifyRow row{"status 12382 ICR", "status", "03.scn", "FAILED", {"a\tb\nc", "d\\e"}, {"note"}, "", ""};
    std::vector<Finding> findings = {MakeFinding(Severity::Error)};
    std::string text = SerializeRow(row, findings);
    QualifyRow back;
    std::vector<Finding> found;
    ASSERT_TRUE(ParseRow(text, &back, &found));
    EXPECT_EQ(back.capability, row.capability);
    EXPECT_EQ(back.problems, row.problems);
    EXPECT_EQ(back.notes, row.notes);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(DescribeFinding(found[0]), DescribeFinding(findings[0]));
    EXPECT_FALSE(ParseRow(text.substr(0, text.size() - 4), &back, &found));
}

enum class Misbehave { Crash, Exit, Hang, QuietCrash };

// A child that enters a callback on the board and then crashes, exits or hangs: the
// verdict names what happened, the callback, its type, the step and the thread.
TEST(Judge, ALostRowSaysWhatHappenedWhere) {
    ShareCrashBoard();
    RowPlan plan{"command kCenPlt2PuWakeReq", "command", "f.scn", "", "", "", {}, {}};
    const struct {
        Misbehave how;
        const char *says;
    } cases[] = {
        {Misbehave::Crash, "crash: SIGSEGV (segmentation fault) in recv_msg NOLTDEVSDK_SPECIAL_ON_WAKE (5) "
                           "at f.scn:3 on the kernel "
                           "message thread"},
        {Misbehave::Exit, "exit: the application ended the process (exit status 3) inside recv_msg "
                          "NOLTDEVSDK_SPECIAL_ON_WAKE (5) at f.scn:3 on the kernel message thread"},
        {Misbehave::Hang,
         "hang: recv_msg NOLTDEVSDK_SPECIAL_ON_WAKE (5) has not returned after 1 s (kernel message "
         "thread, f.scn:3)"},
        {Misbehave::QuietCrash, "crash: SIGABRT (abort) outside the application's callbacks, at f.scn:9"},
    };
    for (const auto &c : cases) {
        ResetCrashBoard();
        pid_t pid = fork();
        if (pid == 0) {
            InstallCrashReport(-1);
            BoardStep("f.scn:9");
            if (c.how != Misbehave::QuietCrash) {
                BoardEnter("recv_msg", 5, "NOLTDEVSDK_SPECIAL_ON_WAKE", "f.scn:3", "kernel message thread");
            }
            if (c.how == Misbehave::Exit) {
                _exit(3);
            }
            if (c.how == Misbehave::Hang) {
                pause();
            }
            raise(c.how == Misbehave::Crash ? SIGSEGV : SIGABRT);
            _exit(0);
        }
        int status = 0;
        QualifyRow row;
        if (c.how == Misbehave::Hang) {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            row = LostRow(plan, "", 0, true, 1);
            kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
        } else {
            waitpid(pid, &status, 0);
            row = LostRow(plan, "", status, false, 1);
        }
        EXPECT_EQ(row.status, "FAILED");
        ASSERT_FALSE(row.problems.empty());
        EXPECT_EQ(row.problems[0].rfind(c.says, 0), 0u) << row.problems[0];
    }
}

// Rows from a suite directory: sections with a shared prologue and the file's own line
// numbers, a failure row derived from each command row, the status table over its
// template, and what each row needs.
TEST(SuiteRows, SectionsTemplatesAndDerivedRows) {
    char dir[] = "/tmp/special-sim-rows-XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    const struct {
        const char *name, *text;
    } files[] = {
        {"01-a.scn", "event online\n# row: command kCenPlt2PuWakeReq\nsend kCenPlt2PuWakeReq seq 7 {}\n"
                     "# row: request unbind user\n# needs: get_runtime_info SPECIAL_PLAN\ncall unbind\n"},
        {"01-a.expect", "# row: command kCenPlt2PuWakeReq\nto_platform name=kCenPlt2PuWakeRsp seq=7\n"
                        "recv_msg name=NOLTDEVSDK_SPECIAL_ON_WAKE\n# row: request unbind user\n"
                        "to_platform name=kPu2CenPltUnBindUserReq\n"},
        {"02-status.scn", "# row template: status\napp change {type}\nforce {report}\n"},
    };
    for (const auto &f : files) {
        std::ofstream(std::string(dir) + "/" + f.name) << f.text;
    }
    std::vector<std::string> problems;
    std::vector<RowPlan> rows = SuiteRows(dir, &problems);
    EXPECT_TRUE(problems.empty());
    ASSERT_EQ(rows.size(), 3u + 22u);
    EXPECT_EQ(rows[0].name, "command kCenPlt2PuWakeReq");
    EXPECT_EQ(rows[0].scenario,
              "event online\n# row: command kCenPlt2PuWakeReq\nsend kCenPlt2PuWakeReq seq 7 {}\n\n\n\n\n");
    EXPECT_EQ(rows[0].needs, (std::vector<std::pair<std::string, int>>{{"recv_msg", 5}}));
    EXPECT_EQ(rows[1].name, "failure kCenPlt2PuWakeReq");
    EXPECT_EQ(rows[1].kind, "failure");
    EXPECT_NE(rows[1].scenario.find("event online\napp answer recv_msg 5 -1\nsend"), std::string::npos);
    EXPECT_EQ(rows[1].expect, "recv_msg type=5 result=-1\nto_platform name=kCenPlt2PuWakeRsp seq=7\n");
    EXPECT_EQ(rows[2].name, "request unbind user");
    EXPECT_EQ(rows[2].needs, (std::vector<std::pair<std::string, int>>{{"get_runtime_info", 14}}));
    EXPECT_EQ(rows[2].expect.find("kCenPlt2PuWakeRsp"), std::string::npos);
    EXPECT_EQ(rows[3 + 7].name, "status 12382 Battery_WorkStatus");
    EXPECT_EQ(rows[3 + 7].scenario, "# row template: status\napp change 5\nforce " +
                                        std::to_string(NOLTDEVSDK_ReportBatteryWorkStatus) + "\n");
    EXPECT_EQ(rows[3 + 7].expect, "to_platform command=12382 body~Type=\"Battery_WorkStatus\"\n");
    EXPECT_TRUE(RowSelected(rows[3 + 7], "request,status"));
    EXPECT_TRUE(RowSelected(rows[0], "command kCenPlt2PuWakeReq"));
    EXPECT_FALSE(RowSelected(rows[1], "command"));
    for (const auto &f : files) {
        std::remove((std::string(dir) + "/" + f.name).c_str());
    }
    rmdir(dir);
}

int g_worker_ms = 0;
noltDevSDK_special_callback g_wrapped;

// Sleeps on a custom voice; asks the module (here: the wrapped callback) for a status on
// the same thread, as a call into the module that calls back would.
int VoiceThenReenter(noltDevSDK_special_msg_to_dev *msg) {
    if (msg->type == NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE) {
        std::this_thread::sleep_for(std::chrono::milliseconds(g_worker_ms));
        return 0;
    }
    noltDevSDK_special_runtime_info info = {NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE, nullptr, 0};
    return g_wrapped.get_runtime_info(&info);
}

int AnswerNothing(noltDevSDK_special_runtime_info *) {
    return 0;
}

// The custom-voice worker is held to no threshold unless one is given for it; a
// callback re-entered on its own thread is not concurrency.
TEST(AppChecker, NoFalseAlarmsOnWhatTheHeaderAllows) {
    const struct {
        int type;
        int slow_worker_ms;
        size_t findings;
    } cases[] = {
        {NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE, -1, 0},
        {NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE, 5, 1},
        {NOLTDEVSDK_SPECIAL_ON_WAKE, -1, 0}, // re-enters get_runtime_info
    };
    for (const auto &c : cases) {
        AppChecker::SetThreadRole(nullptr);
        g_worker_ms = 30;
        struct : CallbackObserver {
            void Received(const noltDevSDK_special_msg_to_dev *, int) override {}
            void Answered(const noltDevSDK_special_runtime_info *, int, int) override {}
            void Found(const std::string &) override {}
        } observer;
        CheckOptions options;
        options.slow_ms = 10;
        options.slow_worker_ms = c.slow_worker_ms;
        AppChecker checker(observer, options);
        checker.Install();
        g_wrapped = {&VoiceThenReenter, &AnswerNothing};
        AppChecker::Wrap(&g_wrapped);
        std::thread worker([&c] {
            noltDevSDK_special_msg_to_dev msg = {c.type, nullptr, 0};
            g_wrapped.recv_msg(&msg);
        });
        worker.join();
        std::vector<Finding> findings = checker.Findings();
        ASSERT_EQ(findings.size(), c.findings)
            << c.type << " " << (findings.empty() ? "" : DescribeFinding(findings[0]));
        if (c.findings > 0) {
            EXPECT_EQ(findings[0].issue.fault, FaultClass::Slow);
            EXPECT_EQ(findings[0].thread, "custom-voice worker");
        }
    }
}

} // namespace
} // namespace sim

namespace sim {
namespace {

// What a hang row says, the first time and when the same callback hangs again, and which
// frames of a crash are shown: the application's own when it has any, else all of them.
TEST(CrashBoard, HangTextsAndTheFramesShown) {
    InFlight in;
    in.callback = "get_runtime_info";
    in.type = 5;
    in.type_name = "NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS";
    in.where = "03-status-items.scn:7";
    in.thread = "report-status poller";
    EXPECT_EQ(DescribeHang(in, 10),
              "get_runtime_info NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS (5) has not "
              "returned after 10 s (report-status poller, 03-status-items.scn:7)");
    EXPECT_EQ(
        DescribeKnownHang(in, 500),
        "get_runtime_info NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS (5) hung again (held 500 ms here, "
        "the whole row timeout in an earlier row; report-status poller, 03-status-items.scn:7)");

    const std::vector<std::string> foreign = {"libc.so.6(+0x8aeec) [0x1]", "special-sim(+0x100) [0x2]"};
    struct Case {
        const char *name;
        std::vector<std::string> frames;
        size_t shown;
    } cases[] = {
        {"no frame of the application: all shown", foreign, 2},
        {"the application's frames only",
         {"libc.so.6(+0x1) [0x1]", "libnothere_app.so(+0x10) [0x3]", "libnothere_app.so(+0x20) [0x4]"},
         2},
    };
    for (const Case &c : cases) {
        std::vector<std::string> shown = AppFrames(c.frames, "/nowhere/libnothere_app.so");
        EXPECT_EQ(shown.size(), c.shown) << c.name;
    }
}

} // namespace
} // namespace sim
