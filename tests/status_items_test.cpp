// The status items as the report-status service drives them, one table row per item:
// a change is reported once, and again after a reset; an unsupported item is quiet and
// keeps its cache; a forced report before any poll sends the not-seen value.
#include "special_fixture.h"

#include "status/special_status.h"
#include "status_support.h"

namespace special_test {
namespace {

struct ItemCase {
    const char *name;
    uint32_t id;
    int (*detect)(void);
    int runtime_type;
    Hook answer;
    uint32_t command;
    bool zero_seq;  // sent with sequence number 0, leaving the counter alone
    Check check;    // the report of the answer
    Check not_seen; // the report forced before any poll
};

void PrintTo(const ItemCase &c, std::ostream *os) {
    *os << c.name;
}

std::vector<ItemCase> Items() {
    std::vector<ItemCase> rows;
    const std::string sw = "Request/Params/Switch";
    auto switch_row = [&](const char *name, uint32_t id, int (*detect)(void), int type, const char *code) {
        rows.push_back({name, id, detect, 1, SwitchAnswer(type, 1), kPu2CenPltReportDevSwitchEnableReq, false,
                        All({Attr(sw, "Channel", "0"), Attr(sw, "Enable", "1"), Attr(sw, "Type", code)}),
                        Attr(sw, "Enable", "-1")});
    };
    switch_row("FlowSwitch", 31, SpecialSwitchEnableFlowIsChanged, 0, "15");
    switch_row("LingerAlarm", 101, SpecialSwitchEnableLingerAlarmIsChanged, 1, "613");
    switch_row("FaceRecg", 102, SpecialSwitchEnableFaceRecgIsChanged, 2, "614");
    switch_row("Distortion", 104, SpecialSwitchEnableDistortionIsChanged, 3, "617");
    switch_row("ChimeIndicator", 105, SpecialSwitchEnableChimeIndicatorIsChanged, 4, "611");
    auto value_row = [&](const char *name, uint32_t id, int (*detect)(void), int type,
                         std::vector<unsigned char> bytes, const char *key, const char *value,
                         const char *initial) {
        rows.push_back({name, id, detect, type, Answer(bytes), kPu2CenPltReportKeyValueReq, false,
                        Status(key, value), Status(key, initial)});
    };
    value_row("ICR", 33, SpecialICRIsChanged, 2, Bytes(noltDevSDK_special_key_value{0, 0, 1}), "ICR", "1",
              "-1");
    value_row("Linkage", 39, SpecialLinkageModeStatusIsChanged, 4,
              Bytes(noltDevSDK_linkage_mode_status{1, 30, "CONN", "CODE"}), "Route_LinkageStatus", "1", "-1");
    value_row("WorkMode", 96, SpecialBatteryWorkModeIsChanged, 12,
              Bytes(noltDevSDK_special_battery_work_mode{2}), "batteryCameraWorkMode", "2", "-1");
    value_row("NetWorkMode", 119, SpecialNetWorkModeIsChanged, 15, Bytes(noltDevSDK_special_net_work_mode{1}),
              "networkingMode", "1", "-1");
    value_row("OneClickMute", 123, SpecialOneClickMuteIsChanged, 17,
              Bytes(noltDevSDK_special_one_click_mute{1}), "OneClickMute", "1", "-1");
    value_row("WorkStatus", 37, SpecialBatteryWorkStatusIsChanged, 5,
              Bytes(noltDevSDK_special_battery_workstatus{1, 30, 0}), "Battery_WorkStatus",
              R"({"KeepAlive":1,"WorkTime":30,"SpecialBusiness":0})",
              R"({"KeepAlive":-1,"WorkTime":-1,"SpecialBusiness":0})");
    value_row("RingType", 103, SpecialRingTypeIsChanged, 13, Bytes(noltDevSDK_special_ring_type{1, 2, 3}),
              "device_bell", R"({"Type":1,"CustomRingIndex":2,"Volume":3})",
              R"({"Type":0,"CustomRingIndex":0,"Volume":0})");
    rows.push_back({"Speaker", 124, SpecialSpeakerConfigIsChanged, 18,
                    Answer(Bytes(noltDevSDK_special_speaker_config{1, 2, 0, 5})), kPu2CenPltReportKeyValueReq,
                    false,
                    All({ValueJson("SpeakerConfig", "RingSwitch", "1"),
                         ValueJson("SpeakerConfig", "IntelligentIndex", "5")}),
                    ValueJson("SpeakerConfig", "IntelligentIndex", "-1")});

    noltDevSDK_special_plan plan = {};
    plan.enable_plan = 1;
    plan.special_work_mode_plan.time[2][3] = {2, 0, 3600};
    rows.push_back({"Plan", 118, SpecialBatteryWorkModePlanIsChanged, 14, Answer(Bytes(plan)),
                    kPu2CenPltReportDevicePlanReq, false,
                    All({Text("Request/Type", "DevicePlan"), Text("Request/Params/Force", "0"),
                         Text("Request/DevSerial", "<none>")}),
                    All({Text("Request/Params/Enable", "0"), Text("Request/Params/Force", "1")})});

    noltDevSDK_special_custom_voice_infos voices = {};
    voices.num = 1;
    voices.voice_info[0] = {3, 1, "bell", "http://v/3", 1700000000, 1};
    rows.push_back({"CustomVoice", 38, SpecialCustomVoiceIsChanged, 3, Answer(Bytes(voices)),
                    kPu2CenPltReportKeyValueReq, false,
                    All({ValueJson("CustomVoice", "[0]index", "3"),
                         ValueJson("CustomVoice", "[0]createtime", "1700000000")}),
                    ValueJson("CustomVoice", "", "[0]")});

    rows.push_back({"Trusteeship", 40, SpecialTrusteeshipIsChanged, 6,
                    Answer(Bytes(noltDevSDK_Trusteeship{"BASE01"})), kPu2CenPltReportTrusteeshipReq, false,
                    All({DocJson("operateType", "1"), DocJson("baseserial", "BASE01")}),
                    All({DocJson("operateType", "1"), DocJson("baseserial", "000000000")})});

    ChildList<noltDevSDK_trusteeship_subserial> connect = {2, {{"S1", 1, 0}, {"S2", 1, 1}}};
    rows.push_back({"TrusteeshipConnect", 42, SpecialTrusteeshipConnectIsChanged, 7, Answer(Bytes(connect)),
                    kPu2CenPltReportConnStatusReq, false,
                    All({DocJson("devseral", "DS0000000000"), DocJson("list", "[2]")}),
                    DocJson("list", "[0]")});

    ChildList<noltDevSDK_PowerStatus_subserial> power = {
        2, {{"S1", 1, 80, "ok", 5, "B1", 1}, {"S2", 1, 70, "", 4, "", 0}}};
    rows.push_back({"Power", 36, SpecialPowerStatusIsChanged, 8, Answer(Bytes(power)),
                    kPu2CenPltReportPowerStatusReq, false,
                    All({Text("Request/Type", "PowerStatus"),
                         Children("Request/Params", "Power", "SubSerial", "B1-S1 S2")}),
                    Children("Request/Params", "Power", "SubSerial", "")});

    noltDevSDK_special_associated_device_conn_status chime = {1234,       -100,        "ssid",     "wlan0",
                                                              "10.0.0.2", "255.0.0.0", "10.0.0.1", "DB1"};
    rows.push_back({"Associated", 92, SpecialAssociatedDeviceConnStatusIsChanged, 11, Answer(Bytes(chime)),
                    kPu2CenPltReportKeyValueReq, false,
                    All({ValueJson("DB_Chime_ConnInfo", "Conn", "123"),
                         ValueJson("DB_Chime_ConnInfo", "Signal", "-10")}),
                    ValueJson("DB_Chime_ConnInfo", "Conn", "-1")});

    noltDevSDK_special_voddns_local_mapped_infos ports = {"1.2.3.4", "10.0.0.2", {}};
    ports.mapped_port_infos[0] = {"http", 80, 8080};
    ports.mapped_port_infos[2] = {"rtsp", 554, 5554};
    rows.push_back(
        {"MappedPorts", 45, SpecialVoddnsLocalMappedInfosIsChanged, 10, Answer(Bytes(ports)),
         kPu2CenPltReportPortInfoReq, true,
         All({Text("Request/NatIP", "1.2.3.4"), Children("Request", "PortMap", "Type", "http rtsp")}),
         Children("Request", "PortMap", "Type", "")});

    noltDevSDK_special_4G_Info_S modem = {1, -70, 2, "LTE", "ICC1", "IMEI1"};
    rows.push_back({"4G", 122, SpecialDev4GInfoIsChanged, 16, Answer(Bytes(modem)),
                    kPu2CenPltReportKeyValueReq, true,
                    All({ValueJson("4G_Info", "sigal", "-70"), ValueJson("4G_Info", "IMEI", "IMEI1")}),
                    ValueJson("4G_Info", "sigal", "0")});
    return rows;
}

class StatusItemTest : public StatusTest, public ::testing::WithParamInterface<ItemCase> {};

TEST_P(StatusItemTest, ReportsAChangeOnceAndAgainAfterReset) {
    const ItemCase &c = GetParam();
    ASSERT_EQ(0, Init());
    SetRuntimeHook(c.runtime_type, c.answer);
    std::vector<Sent> first = PollSent();
    ASSERT_EQ(1u, first.size());
    EXPECT_EQ(c.command, first[0].command);
    c.check(first[0]);
    EXPECT_TRUE(PollSent().empty());
    ResetAll();
    std::vector<Sent> again = PollSent();
    ASSERT_EQ(1u, again.size());
    EXPECT_EQ(first[0].body, again[0].body);
    EXPECT_EQ(c.zero_seq ? 0u : 1u, again[0].seq);
}

TEST_P(StatusItemTest, UnsupportedOrFailingAnswersLeaveTheCache) {
    const ItemCase &c = GetParam();
    ASSERT_EQ(0, Init());
    SetRuntimeHook(c.runtime_type, c.answer);
    EXPECT_EQ(1, c.detect());
    const struct {
        int rc;
        int verdict;
    } errors[] = {{NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT, -1},
                  {0x1004, -1},
                  {NOLTDEVSDK_SPECIAL_CODE_FAIL, 0},
                  {0x104, 0}};
    for (const auto &e : errors) {
        SetRuntimeError(c.runtime_type, e.rc);
        EXPECT_EQ(e.verdict, c.detect()) << std::hex << e.rc;
    }
    SetRuntimeHook(c.runtime_type, c.answer);
    EXPECT_EQ(0, c.detect());
}

TEST_P(StatusItemTest, ForcedBeforeAnyPollSendsTheNotSeenValue) {
    const ItemCase &c = GetParam();
    ASSERT_EQ(0, Init());
    Force(c.id);
    std::vector<Sent> sent = PollSent();
    ASSERT_EQ(1u, sent.size());
    EXPECT_EQ(c.command, sent[0].command);
    c.not_seen(sent[0]);
}

INSTANTIATE_TEST_SUITE_P(Items, StatusItemTest, ::testing::ValuesIn(Items()),
                         [](const ::testing::TestParamInfo<ItemCase> &i) {
                             return std::string(i.param.name);
                         });

TEST_F(StatusTest, RegistersTheItemsInOrderAndLeavesTheChimeItemAtTheEnd) {
    ASSERT_EQ(0, Init());
    uint32_t ids[64];
    int n = noltdev_host_report_registered(ids, 64);
    EXPECT_EQ((std::vector<uint32_t>{31, 101, 102, 105, 32,  33,  37,  38,  39,  40,  36,
                                     42, 45,  92,  96,  118, 103, 104, 119, 123, 124, 122}),
              std::vector<uint32_t>(ids, ids + n));
    EXPECT_EQ(0, noltdev_host_report_has_reset(32));
    EXPECT_EQ(1, noltdev_host_report_has_reset(92));
    noltdev_host_report_clear_unregister_log();
    noltDevSDK_special_fini();
    n = noltdev_host_report_unregister_log(ids, 64);
    EXPECT_EQ((std::vector<uint32_t>{31,  32,  33,  37,  38,  39,  40,  36,  42,  45, 96,
                                     101, 102, 103, 104, 118, 119, 105, 122, 123, 124}),
              std::vector<uint32_t>(ids, ids + n));
}

} // namespace
} // namespace special_test
