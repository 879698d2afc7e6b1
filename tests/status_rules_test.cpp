// The particular rules of single status items: initial and reset values that differ,
// the speaker's log lines, the plan's shape, counts beyond the module's arrays, the
// trusteeship items, the tolerant 4G rule, and the two time rules driven by test clocks.
#include "special_fixture.h"

#include "status/special_status.h"
#include "status/special_status_registry.h"
#include "status_support.h"

namespace special_test {
namespace {

TEST_F(StatusTest, InitialAndResetValuesDecideWhatPollingReports) {
    ASSERT_EQ(0, Init());
    SetRuntime(13, noltDevSDK_special_ring_type{0, 0, 0});
    SetRuntime(5, noltDevSDK_special_battery_workstatus{-1, -1, 0});
    EXPECT_TRUE(PollSent().empty()); // both equal their load-time caches
    SetRuntime(5, noltDevSDK_special_battery_workstatus{0, 0, 0});
    EXPECT_EQ(1u, PollSent().size());
    ResetAll();
    EXPECT_TRUE(PollSent().empty()); // both reset to zeros
    Force(103);
    std::vector<Sent> forced = PollSent();
    ASSERT_EQ(1u, forced.size());
    Status("device_bell", R"({"Type":0,"CustomRingIndex":0,"Volume":0})")(forced[0]);
}

// The count-first caches hold count -1 from load, so an application with no voices, no
// held children and no powered children is reported once at the first poll.
TEST_F(StatusTest, EmptyListsAreReportedAtTheFirstPollAfterLoad) {
    ASSERT_EQ(0, Init());
    SetRuntime(3, noltDevSDK_special_custom_voice_infos{});
    SetRuntime(7, ChildList<noltDevSDK_trusteeship_subserial>{});
    SetRuntime(8, ChildList<noltDevSDK_PowerStatus_subserial>{});
    std::vector<uint32_t> commands;
    for (const Sent &s : PollSent()) {
        commands.push_back(s.command);
    }
    EXPECT_EQ((std::vector<uint32_t>{kPu2CenPltReportKeyValueReq, kPu2CenPltReportPowerStatusReq,
                                     kPu2CenPltReportConnStatusReq}),
              commands);
    EXPECT_TRUE(PollSent().empty());
}

TEST_F(StatusTest, SpeakerLogsEachChangedFieldAndAlwaysReturnsZero) {
    ASSERT_EQ(0, Init());
    SetRuntime(18, noltDevSDK_special_speaker_config{1, 2, 0, 5});
    ClearLogs();
    ASSERT_EQ(1u, PollSent().size());
    EXPECT_TRUE(HasLog(1, "ring_enable is changed\n"));
    EXPECT_TRUE(HasLog(1, "ring_index is changed\n"));
    EXPECT_EQ(2u, CountLog("intel_enable is changed\n")); // the index has no line of its own
    SetRuntime(18, noltDevSDK_special_speaker_config{1, 2, 0, 6});
    ClearLogs();
    EXPECT_EQ(1, SpecialSpeakerConfigIsChanged());
    EXPECT_EQ(1u, CountLog("intel_enable is changed\n"));
    EXPECT_EQ(0u, CountLog("ring_enable is changed\n"));
    SetSendResult(-1);
    EXPECT_EQ(0, SpecialReportSpeakerConfig(0));
    EXPECT_NE(0, SpecialReportKeyValue(0));
}

// While the link is down a changed item's report fails, and the module does not retry
// it (its cache already holds the value); coming back online forces three reports only.
TEST_F(StatusTest, ALinkDownLosesAChangeAndOnlineForcesThreeReports) {
    ASSERT_EQ(0, Init());
    SetRuntime(0, noltDevSDK_special_flow_counting_cfg{});
    PollSent();
    ASSERT_EQ(1, noltdev_host_set_link(0));
    SetRuntime(5, noltDevSDK_special_battery_workstatus{7, 7, 0});
    EXPECT_TRUE(PollSent().empty()); // the report fails
    EXPECT_TRUE(PollSent().empty());
    ASSERT_EQ(1, noltdev_host_set_link(1));
    std::vector<uint32_t> commands;
    for (const Sent &s : PollSent()) {
        commands.push_back(s.command);
    }
    EXPECT_EQ((std::vector<uint32_t>{kPu2CenPltReportFlowCountConfigFReq, kPu2CenPltReportConnStatusReq,
                                     kPu2CenPltReportPortInfoReq}),
              commands);
}

// Without get_runtime_info nothing is asked: no change is seen, and the reports that need
// the application refuse while the others send their caches.
TEST_F(StatusTest, WithoutTheApplicationNothingIsAsked) {
    ASSERT_EQ(0, Init(false));
    EXPECT_TRUE(PollSent().empty());
    for (int id : {31, 32, 33}) {
        Force(id);
    }
    std::vector<Sent> sent = PollSent();
    ASSERT_EQ(1u, sent.size());
    Status("ICR", "-1")(sent[0]);
    EXPECT_EQ(-1, noltDevSDK_special_report_trusteeship());
    EXPECT_TRUE(HasLog(1, "get_runtime_info, has not been registered!\n"));
}

// Never detected as changed: read afresh and sent only when forced, without the interval.
TEST_F(StatusTest, FlowCountConfigIsReadAfreshOnlyWhenForced) {
    ASSERT_EQ(0, Init());
    SetRuntime(0, noltDevSDK_special_flow_counting_cfg{300, 90, 0.5f, 0.25f, 1, 2, -0.5f, 0, 3, 4});
    EXPECT_TRUE(PollSent().empty());
    Force(32);
    std::vector<Sent> sent = PollSent();
    ASSERT_EQ(1u, sent.size());
    EXPECT_EQ(uint32_t(kPu2CenPltReportFlowCountConfigFReq), sent[0].command);
    All({Text("Request/Type", "FlowCountConfig"), Text("Request/Params/Position", "90"),
         Attr("Request/Params/Line", "X1", "0.5000000"), Attr("Request/Params/Line", "Y2", "2.0000000"),
         Attr("Request/Params/Direction", "X1", "-0.5000000"),
         Attr("Request/Params/Direction", "Y2", "4.0000000"),
         Text("Request/Params/Interval", "<none>")})(sent[0]);
    SetRuntimeError(0, NOLTDEVSDK_SPECIAL_CODE_FAIL);
    Force(32);
    EXPECT_TRUE(PollSent().empty()); // a failed read sends nothing
}

TEST_F(StatusTest, PlanSendsForceOnlyWhenEmptyAndSkipsSegmentsWithoutTimes) {
    ASSERT_EQ(0, Init());
    struct Row {
        const char *name;
        int day, seg, mode;
        time_t begin, end;
        const char *force;
        const char *plans; // "B-E:EventArg" of the day's "Plan" elements
    } rows[] = {
        {"empty week", 0, 0, 7, 0, 0, "1", ""},
        {"end only", 4, 2, 3, 0, 1800, "0", "00:00-00:30:mode:3"},
        {"after a skipped slot", 1, 1, 1, 3600, 7200, "0", "01:00-02:00:mode:1"},
    };
    for (const Row &r : rows) {
        noltDevSDK_special_plan plan = {1, 3, 1, {}};
        plan.special_work_mode_plan.time[r.day][r.seg] = {r.mode, r.begin, r.end};
        plan.special_work_mode_plan.time[r.day][0].mode = 9; // a slot without times is skipped
        SetRuntime(14, plan);
        std::vector<Sent> sent = PollSent();
        ASSERT_EQ(1u, sent.size()) << r.name;
        EXPECT_EQ(r.force, sent[0].Text("Request/Params/Force")) << r.name;
        All({Attr("Request/Params/Actor", "Channel", "0"), Attr("Request/Params/Actor", "PlanType", "17"),
             Attr("Request/Params/Actor", "EventType", "0"), Text("Request/Params/Actor", "D")})(sent[0]);
        std::string want, got; // "Weekday:B-E:EventArg..." of each "Date"
        for (int day = 0; day < 7; day++) {
            want += std::to_string(day) + ":" + (day == r.day ? r.plans : "") + ";";
        }
        for (pugi::xml_node d = sent[0].Node("Request/Params").child("Date"); d; d = d.next_sibling("Date")) {
            got += std::string(d.attribute("Weekday").value()) + ":";
            for (pugi::xml_node p = d.child("Plan"); p; p = p.next_sibling("Plan")) {
                got += std::string(p.attribute("B").value()) + "-" + p.attribute("E").value() + ":" +
                       p.attribute("EventArg").value();
            }
            got += ";";
        }
        EXPECT_EQ(want, got) << r.name;
    }
}

TEST_F(StatusTest, CountsBeyondTheModulesArraysAreWalkedOnlyAsFarAsTheArrays) {
    ASSERT_EQ(0, Init());
    noltDevSDK_special_custom_voice_infos voices = {};
    for (int i = 0; i < 16; i++) {
        voices.voice_info[i].index = i;
    }
    ChildList<noltDevSDK_trusteeship_subserial> connect = {20, {}};
    ChildList<noltDevSDK_PowerStatus_subserial> power = {20, {}};
    auto voice_count = [](int num, noltDevSDK_special_custom_voice_infos v) {
        v.num = num;
        return v;
    };
    struct Row {
        const char *name;
        int type;
        std::vector<unsigned char> bytes;
        Check check;
    } rows[] = {
        {"no voices", 3, Bytes(voice_count(0, voices)), ValueJson("CustomVoice", "", "[0]")},
        {"40 voices", 3, Bytes(voice_count(40, voices)), ValueJson("CustomVoice", "", "[16]")},
        {"20 held children", 7, Bytes(connect), DocJson("list", "[8]")},
        {"the count alone changed", 7, Bytes(ChildList<noltDevSDK_trusteeship_subserial>{1, {}}),
         DocJson("list", "[1]")},
        {"20 powered children", 8, Bytes(power),
         Children("Request/Params", "Power", "Type", "0 0 0 0 0 0 0 0")},
        {"negative count", 8, Bytes(ChildList<noltDevSDK_PowerStatus_subserial>{-3, {}}),
         Children("Request/Params", "Power", "Type", "")},
    };
    for (const Row &r : rows) {
        SetRuntime(r.type, r.bytes.data(), r.bytes.size());
        std::vector<Sent> sent = PollSent();
        ASSERT_EQ(1u, sent.size()) << r.name;
        r.check(sent[0]);
    }
}

TEST_F(StatusTest, TrusteeshipStartsAsNineZerosAndResetsToEmpty) {
    ASSERT_EQ(0, Init());
    SetRuntime(6, noltDevSDK_Trusteeship{""});
    std::vector<Sent> sent = PollSent();
    ASSERT_EQ(1u, sent.size());
    All({DocJson("operateType", "2"), DocJson("baseserial", ""), DocJson("subserial", "DS0000000000")})(
        sent[0]);
    ResetAll();
    EXPECT_TRUE(PollSent().empty());
}

TEST_F(StatusTest, ImmediateTrusteeshipReadsAfreshAndLeavesTheCache) {
    ASSERT_EQ(0, Init());
    EXPECT_EQ(-1, ReportTrusteeship_Immediately());
    EXPECT_TRUE(HasLog(1, "get_runtime_info: trusteeship error\n"));
    SetRuntime(6, noltDevSDK_Trusteeship{"BASE02"});
    EXPECT_EQ(0, ReportTrusteeship_Immediately());
    ASSERT_EQ(1u, SentCount());
    DocJson("baseserial", "BASE02")(SentMessages()[0]);
    EXPECT_EQ(1, SpecialTrusteeshipIsChanged()); // the cache still holds its load-time value
}

struct RepeatCase {
    const char *name;
    int second_status;
    std::vector<int> expected; // at +600, +601, +1201 and +1202 seconds
};

void PrintTo(const RepeatCase &c, std::ostream *os) {
    *os << c.name;
}

class ConnectRepeatTest : public StatusTest, public ::testing::WithParamInterface<RepeatCase> {};

TEST_P(ConnectRepeatTest, ReReportsEveryTenMinutesWhileAllAreConnected) {
    UseTestClocks();
    ASSERT_EQ(0, Init());
    SetRuntime(7, ChildList<noltDevSDK_trusteeship_subserial>{
                      2, {{"S1", 1, 0}, {"S2", GetParam().second_status, 1}}});
    const time_t start = wall_;
    EXPECT_EQ(1, SpecialTrusteeshipConnectIsChanged());
    std::vector<int> got;
    for (time_t later : {600, 601, 1201, 1202}) {
        wall_ = start + later;
        got.push_back(SpecialTrusteeshipConnectIsChanged());
    }
    EXPECT_EQ(GetParam().expected, got);
}

INSTANTIATE_TEST_SUITE_P(Connect, ConnectRepeatTest,
                         ::testing::Values(RepeatCase{"AllConnected", 1, {0, 1, 0, 1}},
                                           RepeatCase{"OneDisconnected", 0, {0, 0, 0, 0}}),
                         ParamName<RepeatCase>);

TEST_F(StatusTest, FourGIgnoresSmallSignalDriftAndTextsAlone) {
    ASSERT_EQ(0, Init());
    struct Step {
        int sigal, type;
        const char *imei;
        bool reported;
    } steps[] = {{-70, 2, "A", true},  {-74, 2, "A", false}, {-75, 2, "A", true},
                 {-71, 2, "A", false}, {-71, 2, "B", false}, {-71, 3, "B", true}};
    for (const Step &s : steps) {
        noltDevSDK_special_4G_Info_S info = {1, s.sigal, s.type, "LTE", "ICC", ""};
        std::strcpy(info.IMEI, s.imei);
        SetRuntime(16, info);
        std::vector<Sent> sent = PollSent();
        ASSERT_EQ(s.reported ? 1u : 0u, sent.size()) << s.sigal << " " << s.imei;
        if (s.reported) {
            ValueJson("4G_Info", "sigal", std::to_string(s.sigal))(sent[0]);
            EXPECT_EQ(0u, sent[0].seq);
        }
    }
    SetSendResult(-1);
    EXPECT_NE(0, SpecialDev4GInfoReport(0));
    std::vector<LogLine> logs = Logs();
    EXPECT_TRUE(std::any_of(logs.begin(), logs.end(), [](const LogLine &l) {
        return l.text.rfind("Failed to send msg to platform:domain[0x", 0) == 0 &&
               l.text.find("], cmd[0x305e].\n") != std::string::npos;
    }));
}

TEST_F(StatusTest, MappedPortsGoOutAtMostAHundredTimesAnHour) {
    UseTestClocks();
    ASSERT_EQ(0, Init());
    const timespec start = mono_;
    auto forced_reports = [this](int n) {
        size_t sent = 0;
        for (int i = 0; i < n; i++) {
            Force(45);
            sent += PollSent().size();
        }
        return sent;
    };
    EXPECT_EQ(100u, forced_reports(100));
    EXPECT_EQ(0u, forced_reports(1)); // the 101st
    EXPECT_EQ(0, SpecialReportVoddnsLocalMappedPort(0));
    mono_.tv_sec = start.tv_sec + 3599;
    EXPECT_EQ(0u, forced_reports(5));
    mono_.tv_sec = start.tv_sec + 3600;
    EXPECT_EQ(1u, forced_reports(1)); // the hour is over: sent, and the count starts again
    mono_.tv_sec += 10;
    EXPECT_EQ(100u, forced_reports(101));
    ResetAll();
    EXPECT_EQ(1u, forced_reports(1));
    EXPECT_EQ(0u, SentMessages()[0].seq);
}

} // namespace
} // namespace special_test
