// Tests of the contract checker: each fault class found in the field it is in, a clean
// record passing, the guard zones, the type-9 block, the shims around a callback, and a
// recorded run's expectations holding for the same run and failing for a changed one.
#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <mutex>
#include <thread>

#include "app_check.h"
#include "checker.h"
#include "device_state.h"
#include "expect.h"
#include "noltDevSDK_special_build.h"
#include "qualify.h"
#include "record.h"
#include "record_tables.h"
#include "report.h"

#include <pugixml.hpp>

namespace sim {
namespace {

struct Filled {
    const char *name;
    const RecordDesc *desc;
    size_t len;
    void (*fill)(unsigned char *record);
    const char *fault; // null: no issue expected
    const char *path;
};

void Nothing(unsigned char *) {}

// A slip found in one entry of an array is the same slip in another entry.
TEST(FindingKey, AnyIndexLeavesTheIndexesOut) {
    const char *cases[][2] = {
        {"custom_voice_infos.voice_info[2].create_time", "custom_voice_infos.voice_info[].create_time"},
        {"plan.time[3][0].begin", "plan.time[][].begin"},
        {"voddns_local_mapped_infos[+672]", "voddns_local_mapped_infos[]"},
        {"ring_type.len", "ring_type.len"},
        {"cut[12", "cut["},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(AnyIndex(c[0]), c[1]) << c[0];
    }
}

// One flaw planted in an otherwise zeroed record per row; the checker names it by class
// and field path.
TEST(CheckFields, FindsEachFaultInItsField) {
    using Cv = noltDevSDK_special_custom_voice_infos;
    using Tc = DemoDevice::ChildList;
    static const Filled cases[] = {
        {"clean plan", &kPlanDesc, sizeof(noltDevSDK_special_plan), Nothing, nullptr, nullptr},
        {"text at full width", &k4GInfoDesc, sizeof(noltDevSDK_special_4G_Info_S),
         [](unsigned char *r) {
             std::memset(reinterpret_cast<noltDevSDK_special_4G_Info_S *>(r)->network, 'L', 32);
         },
         "text", "4G_Info_S.network"},
        {"count past the array", &kCustomVoiceInfosDesc, sizeof(Cv),
         [](unsigned char *r) { reinterpret_cast<Cv *>(r)->num = 17; }, "count", "custom_voice_infos.num"},
        {"negative count", &kCustomVoiceInfosDesc, sizeof(Cv),
         [](unsigned char *r) { reinterpret_cast<Cv *>(r)->num = -1; }, "count", "custom_voice_infos.num"},
        {"text in a counted entry", &kCustomVoiceInfosDesc, sizeof(Cv),
         [](unsigned char *r) {
             reinterpret_cast<Cv *>(r)->num = 3;
             std::memset(reinterpret_cast<Cv *>(r)->voice_info[2].name, 'x', 64);
         },
         "text", "custom_voice_infos.voice_info[2].name"},
        {"entry past the count is not looked at", &kCustomVoiceInfosDesc, sizeof(Cv),
         [](unsigned char *r) {
             reinterpret_cast<Cv *>(r)->num = 2;
             std::memset(reinterpret_cast<Cv *>(r)->voice_info[2].name, 'x', 64);
         },
         nullptr, nullptr},
        {"open-ended list bounded by len", &kTrusteeshipConnectDesc,
         sizeof(int) + 2 * sizeof(noltDevSDK_trusteeship_subserial),
         [](unsigned char *r) { reinterpret_cast<Tc *>(r)->num = 3; }, "count", "Trusteeship_connect.num"},
        {"switch type outside its set", &kSwitchEnableDesc, sizeof(noltDevSDK_special_switch_enable),
         [](unsigned char *r) { reinterpret_cast<noltDevSDK_special_switch_enable *>(r)->type = 5; }, "enum",
         "switch_enable.type"},
        {"key outside its set", &kKeyValueDesc, sizeof(noltDevSDK_special_key_value),
         [](unsigned char *r) { reinterpret_cast<noltDevSDK_special_key_value *>(r)->key = -2; }, "enum",
         "key_value.key"},
        {"calendar value gmtime_r refuses", &kPlanDesc, sizeof(noltDevSDK_special_plan),
         [](unsigned char *r) {
             auto *plan = reinterpret_cast<noltDevSDK_special_plan *>(r);
             plan->special_work_mode_plan.time[3][1].begin =
                 sizeof(time_t) > 4 ? static_cast<time_t>(INT64_MAX) : 0;
         },
         sizeof(time_t) > 4 ? "calendar" : nullptr, "plan.time[3][1].begin"},
        {"field beyond len is not looked at", &k4GInfoDesc, offsetof(noltDevSDK_special_4G_Info_S, network),
         [](unsigned char *r) {
             std::memset(reinterpret_cast<noltDevSDK_special_4G_Info_S *>(r)->network, 'L', 32);
         },
         nullptr, nullptr},
    };
    for (const Filled &c : cases) {
        std::vector<unsigned char> record(sizeof(Cv), 0);
        c.fill(record.data());
        std::vector<Issue> issues;
        CheckFields(*c.desc, record.data(), c.len, &issues);
        if (c.fault == nullptr) {
            EXPECT_TRUE(issues.empty()) << c.name << ": " << (issues.empty() ? "" : issues[0].path);
            continue;
        }
        ASSERT_EQ(issues.size(), 1u) << c.name;
        EXPECT_STREQ(FaultClassName(issues[0].fault), c.fault) << c.name;
        EXPECT_EQ(issues[0].path, c.path) << c.name;
        EXPECT_EQ(issues[0].severity, Severity::Error) << c.name;
    }
}

TEST(GuardedCopy, FindsWritesOnEitherSideOnly) {
    struct Case {
        long offset; // from the record's start; the record is 16 bytes
        const char *path;
    } cases[] = {{0, nullptr},
                 {15, nullptr},
                 {16, "speaker_config[+16]"},
                 {23, "speaker_config[+16]"},
                 {-1, "speaker_config[-1]"},
                 {-64, "speaker_config[-64]"}};
    for (const Case &c : cases) {
        unsigned char record[16] = {1, 2, 3};
        GuardedCopy copy(record, sizeof record);
        static_cast<unsigned char *>(copy.Data())[c.offset] = 0;
        std::vector<Issue> issues;
        CheckGuards(copy, "speaker_config", sizeof record, &issues);
        if (c.path == nullptr) {
            EXPECT_TRUE(issues.empty()) << c.offset;
        } else {
            ASSERT_EQ(issues.size(), 1u) << c.offset;
            EXPECT_EQ(issues[0].fault, FaultClass::Overrun);
            EXPECT_EQ(issues[0].path, c.path);
        }
    }
}

// An overrun names the field the first foreign byte lands in (the module handed over
// part of the record), or how far past the record it went and after which field.
TEST(GuardedCopy, OverrunNamesTheField) {
    const struct {
        const RecordDesc *desc;
        size_t len;       // what the module handed over
        const char *says; // in the finding's text
    } cases[] = {
        {&kSpeakerConfigDesc, sizeof(noltDevSDK_special_speaker_config),
         "8 byte(s) past the end of the 16-byte record, after intel_index"},
        {&kTrusteeshipConnectDesc, sizeof(int) + sizeof(noltDevSDK_trusteeship_subserial),
         "the first foreign byte lands in subserial[1].subserial"},
        {&kCustomVoiceInfosDesc, offsetof(noltDevSDK_special_custom_voice_infos, voice_info),
         "lands in voice_info[0].index"},
    };
    for (const auto &c : cases) {
        std::vector<unsigned char> record(c.len, 0);
        GuardedCopy copy(record.data(), record.size());
        static_cast<unsigned char *>(copy.Data())[c.len + 7] = 1;
        std::vector<Issue> issues;
        CheckGuards(copy, c.desc->name, c.len, &issues, c.desc);
        ASSERT_EQ(issues.size(), 1u) << c.says;
        EXPECT_NE(issues[0].what.find(c.says), std::string::npos) << issues[0].what;
    }
    EXPECT_EQ(FieldAt(kSpeakerConfigDesc, sizeof(noltDevSDK_special_speaker_config)), "");
}

TEST(DeletionBlock, PresentAndLargeEnoughForItsUnits) {
    const size_t unit = sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
    const size_t head = offsetof(noltDevSDK_Special_DelTrusteeship_S, astUnit);
    DemoDevice::DeletionBlock block{};
    block.usNum = 2;
    struct Case {
        const void *data;
        int len;
        size_t usable;
        const char *fault;
    } cases[] = {
        {&block, static_cast<int>(head + 2 * unit), head + 2 * unit, nullptr},
        {nullptr, 0, 0, "block"},
        {&block, static_cast<int>(head + 2 * unit), head + unit + 16, "block"}, // allocated for one unit
        {&block, 0, head + 2 * unit, nullptr}, // len left at 0: the module does not read it
    };
    for (const Case &c : cases) {
        std::vector<Issue> issues;
        CheckDeletionBlock(c.data, c.len, c.usable, &issues);
        if (c.fault == nullptr) {
            EXPECT_TRUE(issues.empty());
        } else {
            ASSERT_EQ(issues.size(), 1u) << c.fault;
            EXPECT_STREQ(FaultClassName(issues[0].fault), c.fault);
        }
    }
}

class Observer : public CallbackObserver {
  public:
    void Received(const noltDevSDK_special_msg_to_dev *, int) override {}
    void Answered(const noltDevSDK_special_runtime_info *, int, int) override {}
    void Found(const std::string &text) override { found.push_back(text); }
    std::vector<std::string> found;
};

// A careless callback: too slow, writes past the record and hands back another len.
int CarelessAnswer(noltDevSDK_special_runtime_info *info) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    std::memset(info->data, 0, static_cast<size_t>(info->len) + 4);
    info->len = 99;
    return 0;
}

TEST(AppChecker, ShimsFindWhatTheCallbackDidAndCountRepeats) {
    Observer observer;
    CheckOptions options;
    options.slow_ms = 0;
    AppChecker checker(observer, options);
    checker.Install();
    checker.SetWhere("t.scn:7");
    noltDevSDK_special_callback cb = {nullptr, &CarelessAnswer};
    AppChecker::Wrap(&cb);
    ASSERT_TRUE(checker.Wrapped());
    noltDevSDK_special_ring_type ring{1, 2, 3};
    noltDevSDK_special_runtime_info info = {NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, &ring, sizeof ring};
    EXPECT_EQ(cb.get_runtime_info(&info), 0);
    EXPECT_EQ(info.len, static_cast<int>(sizeof ring)); // the module's own len is left alone
    EXPECT_EQ(cb.get_runtime_info(&info), 0);
    std::vector<Finding> findings = checker.Findings();
    ASSERT_EQ(findings.size(), 3u); // slow, overrun, len; the second call only repeats them
    for (const Finding &f : findings) {
        EXPECT_EQ(f.where, "t.scn:7");
        EXPECT_EQ(f.repeats, 1);
        EXPECT_EQ(f.type_name, "NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND");
    }
    EXPECT_EQ(observer.found.size(), 3u);
    EXPECT_EQ(checker.Count(Severity::Error), 3);
}

// A received record: writes inside it reach the module's copy, writes past it are found
// and never reach the module's memory.
int WritingReceiver(noltDevSDK_special_msg_to_dev *msg) {
    auto *ring = static_cast<noltDevSDK_special_ring_type *>(msg->data);
    ring->vol = 7;
    reinterpret_cast<unsigned char *>(msg->data)[msg->len] = 0xEE;
    return 5;
}

TEST(AppChecker, ReceivedRecordsAreGuardedAndCopiedBack) {
    struct Case {
        bool check;
        size_t findings;
    } cases[] = {{true, 1}, {false, 0}};
    AppChecker::SetThreadRole(nullptr); // a thread of the module's own
    for (const Case &c : cases) {
        Observer observer;
        CheckOptions options;
        options.check = c.check;
        AppChecker checker(observer, options);
        checker.Install();
        noltDevSDK_special_callback cb = {&WritingReceiver, nullptr};
        AppChecker::Wrap(&cb);
        struct {
            noltDevSDK_special_ring_type ring;
            unsigned char after;
        } module = {{1, 2, 3}, 0x11};
        noltDevSDK_special_msg_to_dev msg = {NOLTDEVSDK_SPECIAL_ON_RING_SOUND, &module.ring,
                                             sizeof module.ring};
        EXPECT_EQ(cb.recv_msg(&msg), 5);
        EXPECT_EQ(module.ring.vol, 7);
        EXPECT_EQ(module.after, 0x11);
        std::vector<Finding> findings = checker.Findings();
        ASSERT_EQ(findings.size(), c.findings);
        if (c.check) {
            EXPECT_EQ(DescribeFinding(findings[0]),
                      "error overrun recv_msg NOLTDEVSDK_SPECIAL_ON_RING_SOUND (17) ring_type[+12]: written "
                      "up to 1 "
                      "byte(s) past the end of the 12-byte record, after vol (, kernel message thread)");
        }
    }
}

// Two callbacks in at once: the second is reported as information, with both threads.
std::mutex g_mu;
std::condition_variable g_cv;
int g_inside = 0;
int MeetingAnswer(noltDevSDK_special_runtime_info *) {
    std::unique_lock<std::mutex> lock(g_mu);
    g_inside++;
    g_cv.notify_all();
    g_cv.wait(lock, [] { return g_inside == 2; });
    return 0;
}

TEST(AppChecker, CallbacksInAtOnceAreInformationNamingTheirThreads) {
    AppChecker::SetThreadRole(nullptr); // a thread of the module's own
    g_inside = 0;
    Observer observer;
    AppChecker checker(observer, CheckOptions());
    checker.Install();
    noltDevSDK_special_callback cb = {nullptr, &MeetingAnswer};
    AppChecker::Wrap(&cb);
    std::thread poller([&cb] {
        AppChecker::SetThreadRole("report-status poller");
        noltDevSDK_special_runtime_info info = {NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, nullptr, 0};
        cb.get_runtime_info(&info);
    });
    {
        std::unique_lock<std::mutex> lock(g_mu);
        g_cv.wait(lock, [] { return g_inside == 1; });
    }
    noltDevSDK_special_runtime_info info = {NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE, nullptr, 0};
    cb.get_runtime_info(&info); // on this thread, which has no role: the kernel's
    poller.join();
    std::vector<Finding> findings = checker.Findings();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].issue.fault, FaultClass::Concurrent);
    EXPECT_EQ(findings[0].issue.severity, Severity::Info);
    EXPECT_NE(findings[0].issue.what.find("entered on the kernel message thread while a callback runs on the "
                                          "report-status poller"),
              std::string::npos)
        << findings[0].issue.what;
    EXPECT_EQ(checker.Count(Severity::Error), 0);
}

// A suite run with the demo device, each row in a process of its own: a clean row
// passes, an unmet expectation fails its row (saying what came instead), and a row
// asking the application for something it cannot do is not exercised even though its
// expectations hold. Rows come from "# row:" sections, with the lines before the first
// one as every row's prologue. Each kind's rows that ran to their end run again together
// in its concurrency row; a kind with none is not applicable there.
TEST(Qualify, EachRowGetsItsVerdict) {
    char dir[] = "/tmp/special-sim-suite-XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    const struct {
        const char *name, *text;
    } files[] = {
        {"01-clean.scn", "# capability: online\nevent online\npoll\n"},
        {"01-clean.expect", "event result=0\n"},
        {"02-rows.scn", "event online\n# row: request unmet\npoll\n# row: custom hook\napp change 13\n"},
        {"02-rows.expect", "# row: request unmet\nevent result=1\n# row: custom hook\nevent result=0\n"},
        {"notes.txt", "not a scenario\n"},
    };
    for (const auto &f : files) {
        std::ofstream(std::string(dir) + "/" + f.name) << f.text;
    }
    std::vector<Finding> findings;
    QualifyOptions q;
    q.suite_dir = dir;
    q.concurrency_s = 1;
    FILE *out = std::fopen("/dev/null", "w");
    std::vector<QualifyRow> rows = RunQualify(q, RunOptions(), out, &findings);
    std::fclose(out);
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[0].capability, "online");
    EXPECT_EQ(rows[0].status, "passed");
    EXPECT_EQ(rows[1].capability, "request unmet");
    EXPECT_EQ(rows[1].kind, "request");
    EXPECT_EQ(rows[1].status, "FAILED");
    ASSERT_EQ(rows[1].problems.size(), 1u);
    EXPECT_NE(rows[1].problems[0].find("02-rows.expect:2: nothing matches"), std::string::npos);
    EXPECT_NE(rows[1].problems[0].find("instead: event"), std::string::npos) << rows[1].problems[0];
    EXPECT_NE(rows[1].rerun.find("--row \"request unmet\""), std::string::npos);
    EXPECT_EQ(rows[2].status, "not exercised");
    EXPECT_NE(rows[2].reason.find("02-rows.scn:5: the application has no noltdev_app_control"),
              std::string::npos)
        << rows[2].reason;
    const char *together[][3] = {
        {"concurrency online", "passed", ""},
        {"concurrency request", "passed", ""}, // its row failed alone: steps, no expectations
        {"concurrency custom", "not applicable", "no custom row ran alone"}};
    for (size_t i = 0; i < 3; i++) {
        EXPECT_EQ(rows[3 + i].capability, together[i][0]);
        EXPECT_EQ(rows[3 + i].status, together[i][1]) << rows[3 + i].capability;
        EXPECT_EQ(rows[3 + i].reason, together[i][2]);
    }
    EXPECT_TRUE(findings.empty());
    for (const auto &f : files) {
        std::remove((std::string(dir) + "/" + f.name).c_str());
    }
    rmdir(dir);
}

TEST(Record, ExpectationsHoldForTheSameRunAndFailForAChangedAnswer) {
    std::vector<std::string> run = {
        R"({"kind":"get_runtime_info","type":13,"len":12,"result":0,"record":{"type":2,"index":3,"vol":80},"line":4})",
        R"({"kind":"to_platform","command":18830,"seq":7,"response":1,"body":"<a/>","line":5})",
        R"({"kind":"recv_msg","type":3,"len":600,"result":0,"record":{"name":"a \"b\" c"},"line":6})",
    };
    std::string expect = RecordExpectations(run);
    EXPECT_TRUE(CheckExpectations(run, expect, "r.expect").empty()) << expect;
    std::vector<std::string> changed = run;
    changed[0].replace(changed[0].find("80"), 2, "81");
    EXPECT_EQ(CheckExpectations(changed, expect, "r.expect").size(), 1u);
    EXPECT_EQ(ExpectPathFor("dir.x/session.scn"), "dir.x/session.expect");
    EXPECT_EQ(ExpectPathFor("dir.x/session"), "dir.x/session.expect");
}

TEST(Report, JUnitHasOneCasePerRowWithFailuresAndSkips) {
    std::vector<QualifyRow> rows = {{"a & b", "k", "01.scn", "passed", {}, {"info <x>"}, "", ""},
                                    {"c", "k", "02.scn", "FAILED", {"error text <y>"}, {}, "", ""},
                                    {"d", "k", "03.scn", "not exercised", {}, {}, "no hook", ""},
                                    {"e", "k", "03.scn", "not applicable", {}, {}, "NOT_SUPPORT", ""}};
    std::string xml = JUnitXml(rows, "lib.so");
    EXPECT_NE(xml.find("tests=\"4\" failures=\"1\" skipped=\"2\""), std::string::npos) << xml;
    EXPECT_NE(xml.find("name=\"a &amp; b\""), std::string::npos);
    EXPECT_NE(xml.find("<failure message=\"1 problem(s)\">error text &lt;y&gt;"), std::string::npos);
    EXPECT_NE(xml.find("<skipped message=\"not exercised: no hook\">no hook"), std::string::npos);
    EXPECT_NE(xml.find("<skipped message=\"not applicable: NOT_SUPPORT\">"), std::string::npos);
    EXPECT_NE(xml.find("<property name=\"module.version\" value=\"" NOLTDEVSDK_SPECIAL_VERSION_STRING "\""),
              std::string::npos);
    EXPECT_NE(xml.find("<system-out>info &lt;x&gt;"), std::string::npos);
}

// What a CI server reads: well-formed XML whatever the texts hold, one case per row, and
// each row's verdict as the element JUnit readers look for.
TEST(Report, JUnitParsesBackRowByRow) {
    struct Row {
        QualifyRow row;
        const char *verdict; // the element under the case, "" for none
        const char *text;    // that element's text
    } rows[] = {
        {{"quotes \" and 'apostrophes'", "a & <b>", "01.scn", "passed", {}, {}, "", ""}, "", ""},
        {{"c", "a & <b>", "02.scn", "FAILED", {"a ]]> b", "second"}, {}, "", ""},
         "failure",
         "a ]]> b\nsecond\n"},
        {{"d", "a & <b>", "03.scn", "not exercised", {}, {"info"}, "no hook", ""}, "skipped", "no hook\n"},
    };
    std::vector<QualifyRow> qualify;
    for (const Row &r : rows) {
        qualify.push_back(r.row);
    }
    pugi::xml_document doc;
    ASSERT_TRUE(doc.load_string(JUnitXml(qualify, "lib<&>.so").c_str()));
    pugi::xml_node suite = doc.child("testsuites").child("testsuite");
    EXPECT_STREQ("special-sim qualify lib<&>.so a & <b>", suite.attribute("name").value());
    size_t i = 0;
    for (pugi::xml_node test : suite.children("testcase")) {
        ASSERT_LT(i, sizeof rows / sizeof rows[0]);
        const Row &r = rows[i++];
        EXPECT_EQ(r.row.capability, test.attribute("name").value());
        EXPECT_EQ("qualify." + r.row.kind, test.attribute("classname").value());
        pugi::xml_node verdict = test.first_child();
        EXPECT_STREQ(r.verdict, verdict.name()) << r.row.capability;
        EXPECT_STREQ(r.text, verdict.child_value()) << r.row.capability;
        EXPECT_EQ(!r.row.notes.empty(), !test.child("system-out").empty());
    }
    EXPECT_EQ(sizeof rows / sizeof rows[0], i);
}

} // namespace
} // namespace sim
