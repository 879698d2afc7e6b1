// Registration of the domain with the kernel and routing of what the platform sends it,
// played through the host kernel.
#include "kernel/special_extern.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_protocol.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_fixture.h"

namespace special_test {
namespace {

using RoutingTest = SpecialFixture;

// The last raw command as the application saw it during the call.
noltDevSDK_special_msg_to_dev g_raw_msg;
noltDevSDK_special_trans_cmd_msg g_raw;
std::string g_raw_body;

int RecordRaw(noltDevSDK_special_msg_to_dev *msg) {
    g_raw_msg = *msg;
    g_raw = *static_cast<const noltDevSDK_special_trans_cmd_msg *>(msg->data);
    g_raw_body.assign(g_raw.content, g_raw.content_len);
    return 5;
}

const struct {
    uint32_t cmd;
    const char *type, *fail_log;
} kRedirects[] = {
    {kCenPlt2PuSetSwitchEnableReq, "15", "special register switch type error\n"},
    {kCenPlt2PuSetSwitchEnableReq, "611", "special register 611 switch type error\n"},
    {kCenPlt2PuSetSwitchEnableReq, "613", "special register 613 switch type error\n"},
    {kCenPlt2PuSetSwitchEnableReq, "614", "special register 614 switch type error\n"},
    {kCenPlt2PuSetSwitchEnableReq, "617", "special register 617 switch type error\n"},
    {kCenPlt2PuSetKeyValueReq, "batteryCameraWorkMode",
     "special register key value batteryCameraWorkMode error\n"},
    {kCenPlt2PuSetKeyValueReq, "device_bell", "special register key value CustomRing error\n"},
    {kCenPlt2PuSetKeyValueReq, "networkingMode", "special register key value networkingMode error\n"},
    {kCenPlt2PuSetKeyValueReq, "OneClickMute", "special register key value error\n"},
    {kCenPlt2PuSetKeyValueReq, "SpeakerConfig", "special register key value error\n"},
    {kCenPlt2PuSetDevPlanReq, "17", "special register dev plan error\n"},
};

TEST_F(RoutingTest, RedirectRowsAreRegisteredInOrderAndFailuresOnlyLogged) {
    noltdev_host_set_redirect_result(NOLTDEV_SDK_KERNEL_ERR_REFUSED);
    ASSERT_EQ(Init(), 0);
    std::vector<std::string> failures;
    for (const LogLine &l : Logs()) {
        if (l.level == 1 && l.text.rfind("special register", 0) == 0) {
            failures.push_back(l.text);
        }
    }
    ASSERT_EQ(noltdev_host_redirect_count(), 11);
    ASSERT_EQ(failures.size(), 11u);
    for (int i = 0; i < 11; ++i) {
        uint32_t cmd = 0, domain = 0;
        char type[32];
        ASSERT_EQ(noltdev_host_redirect_get(i, &cmd, &domain, type), 0);
        EXPECT_EQ(cmd, kRedirects[i].cmd);
        EXPECT_EQ(domain, uint32_t(kDomain));
        std::string padded = kRedirects[i].type; // NUL-padded: no tail of a longer key
        EXPECT_EQ(std::string(type, sizeof type), padded.append(sizeof type - padded.size(), '\0'));
        EXPECT_EQ(failures[i], kRedirects[i].fail_log);
    }
    EXPECT_EQ(noltdev_host_timer_init_count(), 1);
}

TEST_F(RoutingTest, RawCommandReachesTheApplication) {
    noltDevSDK_special_init_info info{};
    info.cb.recv_msg = RecordRaw;
    ASSERT_EQ(noltDevSDK_special_init(&info), 0);
    const std::string body("<Raw>1</Raw>\0tail", 17);
    ASSERT_EQ(Inject(20000, 0x80000001u, body), 0);
    EXPECT_EQ(g_raw_msg.type, NOLTDEVSDK_SPECIAL_ON_TRANS_CMD_MSG);
    EXPECT_EQ(g_raw_msg.len, static_cast<int>(sizeof(noltDevSDK_special_trans_cmd_msg)));
    EXPECT_EQ(g_raw_body, body);
    EXPECT_EQ(g_raw.cmd_id, 20000u);
    EXPECT_EQ(g_raw.msg_seq, 0x80000001u);
    EXPECT_EQ(g_raw.msg_type, 0);
    EXPECT_TRUE(HasLog(1, "R:4e20\n"));
    EXPECT_TRUE(HasLog(1, "result_code 5\n"));
    EXPECT_EQ(SentCount(), 0u);
}

// Nothing to hand a raw command to, or nothing handed over: dropped after the "R:" line.
TEST_F(RoutingTest, WithoutAnApplicationOrAMessageNothingHappens) {
    ASSERT_EQ(Init(false), 0);
    ASSERT_EQ(Inject(20000, 1, "<Raw/>"), 0);
    EXPECT_TRUE(HasLog(1, "R:4e20\n"));
    ClearLogs();
    special_extend_data_route_cb(nullptr, nullptr);
    special_extend_event_cb(nullptr, nullptr);
    special_extend_stop_cb(nullptr);
    EXPECT_EQ(Logs().size(), 1u);
    EXPECT_TRUE(HasLog(3, "special_extend_stop_cb\n"));
    EXPECT_EQ(SentCount(), 0u);
}

TEST_F(RoutingTest, SleepDropsEveryCommandAndTheCodeAnswerIsIgnored) {
    ASSERT_EQ(Init(), 0);
    const int commands[] = {kCenPlt2PuSetKeyValueReq, kCenPlt2PuSetCustomVoiceReq,
                            kPu2CenPltSendVerificationCodeRsp, 20000};
    noltdev_host_set_sleep(1);
    for (int cmd : commands) {
        Inject(cmd, 9, "<Request><Open>");
    }
    EXPECT_EQ(CountLog("preview: device sleep!\n"), 4u);
    EXPECT_FALSE(HasLog("special recv ignore msg13451\n"));
    noltdev_host_set_sleep(0);
    Inject(kPu2CenPltSendVerificationCodeRsp, 9, "<Response><Result>0</Result></Response>");
    EXPECT_TRUE(HasLog(1, "special recv ignore msg13451\n"));
    EXPECT_TRUE(Deliveries().empty());
    EXPECT_EQ(SentCount(), 0u);
}

// Report functions that record which item the service reported, and how.
std::vector<std::pair<int, int>> g_reports;
template <int Id> int RecordReport(int b_force) {
    g_reports.push_back({Id, b_force});
    return 0;
}
int Unchanged() {
    return 0;
}

TEST_F(RoutingTest, ConnectionEventsForceTheirReports) {
    ASSERT_EQ(Init(), 0);
    const struct {
        int id;
        int (*report)(int);
    } items[] = {{32, RecordReport<32>}, {42, RecordReport<42>}, {45, RecordReport<45>}};
    for (const auto &it : items) {
        noltDevSDK_report_status_info item{};
        item.status_value = it.id;
        item.status_is_changed = Unchanged;
        item.report_status = it.report;
        noltDevSDK_report_status_register(&item);
    }
    struct Case {
        int event;
        std::vector<std::pair<int, int>> forced;
    } cases[] = {
        {sdk_kernel_event_online, {{32, 1}, {42, 1}, {45, 1}}},
        {sdk_kernel_event_reconnect_success, {{45, 1}}},
        {sdk_kernel_event_break, {}},
        {sdk_kernel_event_time_sync, {}},
        {sdk_kernel_event_heartbeat_interval_changed, {}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.event);
        g_reports.clear();
        ClearLogs();
        RaiseEvent(c.event);
        Poll();
        EXPECT_EQ(g_reports, c.forced);
        EXPECT_EQ(HasLog(3, "special_extend_data_route_cb " + std::to_string(c.event) + "\n"),
                  !c.forced.empty());
    }
}

} // namespace
} // namespace special_test
