// Tests of the simulator's own logic: the scenario parser (accepted forms and the line
// named for each mistake), the record tables (path setting, counts, decoding bounds),
// the demo device's callbacks and the expectation checker.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "device_state.h"
#include "expect.h"
#include "names.h"
#include "noltdev_host.h"
#include "record_tables.h"
#include "scenario.h"
#include "step_table.h"
#include "transcript.h"

namespace sim {
namespace {

TEST(Names, ResolveFullShortTailOrNumber) {
    struct Case {
        const NameTable *table;
        const char *text;
        bool ok;
        long long value;
    } cases[] = {
        {&kCommands, "kCenPlt2PuWakeReq", true, 18863},
        {&kCommands, "0x49AF", true, 18863},
        {&kEvents, "online", true, 0},
        {&kReportIds, "SpeakerConfig", true, 124},
        {&kRuntimeTypes, "NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN", true, 14},
        {&kRuntimeTypes, "SPECIAL_PLAN", true, 14},
        {&kRuntimeTypes, "WORK_MODE", false, 0}, // battery and network work mode: ambiguous
        {&kResultCodes, "VOICE_IS_BUSY", true, static_cast<int>(0xD3999024)},
        {&kResultCodes, "-1", true, -1},
        {&kShadowTypes, "array", true, 4},
        {&kCommands, "kCenPlt2PuWakeReqX", false, 0},
    };
    for (const Case &c : cases) {
        long long value = 0;
        EXPECT_EQ(c.table->Lookup(c.text, &value), c.ok) << c.text;
        if (c.ok) {
            EXPECT_EQ(value, c.value) << c.text;
        }
    }
}

TEST(ScenarioWords, QuotesEscapesAndBlanks) {
    struct Case {
        const char *line;
        bool ok;
        std::vector<std::string> words;
    } cases[] = {
        {"", true, {}},
        {"  a\tb  c ", true, {"a", "b", "c"}},
        {"set \"a b\" c", true, {"set", "a b", "c"}},
        {"\"say \\\"hi\\\"\" \"back\\\\slash\"", true, {"say \"hi\"", "back\\slash"}},
        {"\"\"", true, {""}},
        {"x=\"y\"", true, {"x=\"y\""}}, // a quote inside a word is text
        {"a \"open", false, {"a"}},
    };
    for (const Case &c : cases) {
        std::vector<std::string> words;
        EXPECT_EQ(SplitWords(c.line, &words), c.ok) << c.line;
        EXPECT_EQ(words, c.words) << c.line;
    }
}

TEST(ScenarioParse, AcceptsEveryForm) {
    const char *text = "# comment\n"
                       "send kCenPlt2PuSetKeyValueReq seq 7 <<END\n"
                       "<Request>\n"
                       "  <Type>OneClickMute</Type>\n"
                       "END\n"
                       "post 18863 {\"subserial\":\"CH1\"}\n"
                       "send 19606\n"
                       "event reconnect_success\n"
                       "sleep on\n"
                       "set chime.ssid \"My Wifi\"\n"
                       "answer recv_msg OPERATE_CUSTOM_VOICE VOICE_IS_BUSY\n"
                       "call raw kCenPlt2PuAIMemberPicQueryRsp seq 9 response 1 {}\n"
                       "shadow read Trusteeship 64\n"
                       "force SpeakerConfig\n"
                       "poll 3\n";
    Scenario s = ParseScenario(text, "t.scn");
    ASSERT_TRUE(s.errors.empty()) << s.errors[0];
    ASSERT_EQ(s.steps.size(), 11u);
    EXPECT_EQ(s.steps[0].line, 2);
    EXPECT_EQ(s.steps[0].number, 18829);
    EXPECT_EQ(s.steps[0].seq, 7u);
    EXPECT_EQ(s.steps[0].body, "<Request>\n  <Type>OneClickMute</Type>");
    EXPECT_STREQ(s.steps[1].row->name, "post");
    EXPECT_EQ(s.steps[1].body, "{\"subserial\":\"CH1\"}");
    EXPECT_EQ(s.steps[1].seq, 1u); // commands without a seq are numbered 1, 2, ...
    EXPECT_EQ(s.steps[2].seq, 2u);
    EXPECT_EQ(s.steps[2].body, "");
    EXPECT_EQ(s.steps[3].number, 6);
    EXPECT_TRUE(s.steps[4].flag);
    EXPECT_EQ(s.steps[5].set.value, "My Wifi");
    EXPECT_EQ(s.steps[6].number, 3);
    EXPECT_EQ(static_cast<unsigned int>(s.steps[6].code), 0xD3999024u);
    EXPECT_STREQ(s.steps[7].call->name, "raw");
    EXPECT_EQ(s.steps[7].response, 1);
    EXPECT_EQ(s.steps[7].body, "{}");
    EXPECT_EQ(s.steps[8].number, 64);
    EXPECT_EQ(s.steps[9].number, 124);
    EXPECT_EQ(s.steps[10].number, 3);
}

TEST(ScenarioParse, NamesTheLineOfEachMistake) {
    struct Case {
        const char *text;
        const char *error;
    } cases[] = {
        {"sned 18829", "t.scn:1: unknown command 'sned'"},
        {"\nsend kNoSuchCommand", "t.scn:2: unknown command 'kNoSuchCommand'"},
        {"send 18829 seq x", "t.scn:1: sequence number 'x' is not a number"},
        {"send 18829 <<END\n<Request/>", "t.scn:1: body is not closed by a line 'END'"},
        {"send 18829 << A B", "t.scn:1: '<<' needs one terminator word"},
        {"event sunrise", "t.scn:1: unknown event 'sunrise'"},
        {"sleep maybe", "t.scn:1: expected on or off"},
        {"set ring.volume 3", "t.scn:1: no field 'volume' in ring_type"},
        {"set ring.vol loud", "t.scn:1: 'loud' is not a valid value for vol"},
        {"set plan.time.7.0.mode 1", "t.scn:1: 'time' needs two indexes (0 to 6)"},
        {"set plan.time.1.0 1", "t.scn:1: 'time' entries are records"},
        {"set wake.subserial 0123456789abcdef", "t.scn:1: text too long for subserial (at most 15"},
        {"set garage.door 1", "t.scn:1: unknown state path 'garage.door'"},
        {"call fly", "t.scn:1: unknown operation 'fly'"},
        {"answer recv_msg 3 sometimes", "t.scn:1: expected a result code"},
        {"poll 0", "t.scn:1: poll count '0' is not a number from 1 to 1000"},
        {"repeat 0", "t.scn:1: milliseconds '0' is not a number from 1 to 600000"},
        {"reset now", "t.scn:1: unexpected 'now' at the end of the line"},
        {"serial \"DS1", "t.scn:1: unterminated quote"},
        {"shadow write Trusteeship", "t.scn:1: expected 'shadow deliver KEY TYPE BODY'"},
        {"fail sending 1", "t.scn:1: unknown platform operation 'sending'"},
        {"fail malloc 1", "t.scn:1: 'malloc' fails only in the test suite"},
        {"fail send 0", "t.scn:1: call count '0' is not a number from 1"},
        {"fail send 2 often", "t.scn:1: expected a result code"},
        {"shadow read", "t.scn:1: shadow read needs a key"},
        {"shadow deliver K", "t.scn:1: missing shadow value type"},
        {"shadow deliver K strange x", "t.scn:1: unknown shadow value type 'strange'"},
        {"shadow read K 0", "t.scn:1: buffer size '0' is not a number from 1 to 1048576"},
        {"send", "t.scn:1: missing command"},
        {"send 18829 seq 4294967296",
         "t.scn:1: sequence number '4294967296' is not a number from 0 to 4294967295"},
        {"post 18829 seq", "t.scn:1: missing sequence number"},
        {"call verification-code", "t.scn:1: verification-code needs its text"},
        {"call mapped-port-query", "t.scn:1: mapped-port-query needs its text"},
        {"call raw", "t.scn:1: missing command"},
        {"call raw 20001 response 256 {}", "t.scn:1: response flag '256' is not a number from 0 to 255"},
        {"call unbind now", "t.scn:1: unexpected 'now' at the end of the line"},
        {"call", "t.scn:1: unknown operation '' (unbind, verification-code, mapped-port-query, 4g-flow, "
                 "flow-count, raw, trusteeship-report)"},
        {"answer sometimes", "t.scn:1: expected 'answer recv_msg|get_runtime_info TYPE CODE'"},
        {"answer recv_msg", "t.scn:1: missing type"},
        {"answer get_runtime_info SPECIAL_PLAN",
         "t.scn:1: expected a result code (ok, a NOLTDEVSDK_SPECIAL_CODE_ "
         "name or a number), got ''"},
        {"show garage", "t.scn:1: unknown state group 'garage'"},
        {"app", "t.scn:1: app needs a request"},
        {"serial", "t.scn:1: serial needs a text"},
        {"registered", "t.scn:1: expected on or off, got ''"},
        {"wait 600001", "t.scn:1: milliseconds '600001' is not a number from 0 to 600000"},
        {"force Nothing", "t.scn:1: unknown report id 'Nothing'"},
        {"event", "t.scn:1: missing event"},
        {"set", "t.scn:1: set needs a field path and a value"},
        {"set children.subserial.8.subserial X", "t.scn:1: 'subserial' needs an index (0 to 7)"},
        {"set children.num.1 2", "t.scn:1: 'num' is a single value, not a record"},
        {"send 18829 \"open {}", "t.scn:1: unterminated quote"},
    };
    for (const Case &c : cases) {
        Scenario s = ParseScenario(c.text, "t.scn");
        ASSERT_EQ(s.errors.size(), 1u) << c.text;
        EXPECT_EQ(s.errors[0].find(c.error), 0u) << c.text << "\n  gave: " << s.errors[0];
        EXPECT_TRUE(s.steps.empty()) << c.text;
    }
}

// What each form leaves in its step for the executor.
TEST(ScenarioParse, EachStepKeepsWhatItsExecutorNeeds) {
    struct Case {
        const char *text;
        const char *row;
        long long number;
        const char *arg;
        bool flag;
    } cases[] = {
        {"shadow deliver Trusteeship array []", "shadow", 4, "Trusteeship", true},
        {"shadow read Trusteeship", "shadow", 0, "Trusteeship", false},
        {"show", "show", 0, "all", false},
        {"show ring", "show", 0, "ring", false},
        {"poll", "poll", 1, "", false},
        {"wait", "wait", 0, "", false},
        {"wait 250", "wait", 250, "", false},
        {"answer get_runtime_info 13 ok", "answer", 13, "ok", false},
        {"sleep off", "sleep", 0, "", false},
        {"registered yes", "registered", 0, "", true},
        {"serial \"DS 1\"", "serial", 0, "DS 1", false},
        {"note  spaced   out  ", "note", 0, "spaced   out", false},
        {"app answer recv_msg 17 -1", "app", 0, "answer recv_msg 17 -1", false},
        {"call verification-code \"12 34\"", "call", 0, "12 34", false},
        {"event 99", "event", 99, "", false},
        {"force 124", "force", 124, "", false},
    };
    for (const Case &c : cases) {
        Scenario s = ParseScenario(c.text, "t.scn");
        ASSERT_TRUE(s.errors.empty()) << c.text << ": " << s.errors[0];
        ASSERT_EQ(s.steps.size(), 1u) << c.text;
        const Step &step = s.steps[0];
        EXPECT_STREQ(step.row->name, c.row) << c.text;
        EXPECT_EQ(step.number, c.number) << c.text;
        EXPECT_EQ(step.arg, c.arg) << c.text;
        EXPECT_EQ(step.flag, c.flag) << c.text;
    }
}

TEST(ScenarioParse, BodiesSequenceNumbersAndLineNumbers) {
    const char *text = "send 18829 <<END\r\n"
                       "  <A>\r\n"
                       "\n"
                       "  </A>\r\n"
                       "  END  \r\n"
                       "send 18829 seq 50 x\n"
                       "# send 18829 is a comment\n"
                       "post 18829\n"
                       "call raw 20001 <<EOF\n"
                       "{}\n"
                       "EOF\n"
                       "call raw 20001 seq 7 y\n";
    Scenario s = ParseScenario(text, "t.scn");
    ASSERT_TRUE(s.errors.empty()) << s.errors[0];
    ASSERT_EQ(s.steps.size(), 5u);
    struct Want {
        int line;
        unsigned int seq;
        const char *body;
    } want[] = {{1, 1, "  <A>\n\n  </A>"}, {6, 50, "x"}, {8, 2, ""}, {9, 3, "{}"}, {12, 7, "y"}};
    for (size_t i = 0; i < 5; i++) {
        EXPECT_EQ(s.steps[i].line, want[i].line) << i;
        EXPECT_EQ(s.steps[i].seq, want[i].seq) << i;
        EXPECT_EQ(s.steps[i].body, want[i].body) << i;
    }
    EXPECT_EQ(s.steps[0].text, "send 18829 <<END"); // echoed as written, without the body
}

TEST(ScenarioParse, AnOpenBodyEndsTheFile) {
    Scenario s = ParseScenario("poll\nsend 18829 <<END\nbogus\nreset\n", "t.scn");
    ASSERT_EQ(s.errors.size(), 1u); // the lines after it are body, not commands
    EXPECT_EQ(s.errors[0], "t.scn:2: body is not closed by a line 'END'");
    EXPECT_EQ(s.steps.size(), 1u);
}

TEST(ScenarioParse, FailTakesAnOperationACountAndACode) {
    Scenario s = ParseScenario("fail report_force 3\nfail send 1 SEND_DATA_ERROR\n", "t.scn");
    ASSERT_TRUE(s.errors.empty()) << s.errors[0];
    ASSERT_EQ(s.steps.size(), 2u);
    EXPECT_EQ(s.steps[0].number, NOLTDEV_HOST_FAULT_REPORT_FORCE);
    EXPECT_EQ(s.steps[0].count, 3);
    EXPECT_EQ(s.steps[0].code, -1);
    EXPECT_EQ(static_cast<unsigned int>(s.steps[1].code), 0xD3999020u);
}

TEST(ScenarioParse, GoesOnAfterAMistakeToReportTheNext) {
    Scenario s = ParseScenario("poll\nbogus\nreset\nwait x\n", "t.scn");
    ASSERT_EQ(s.errors.size(), 2u);
    EXPECT_EQ(s.errors[0].rfind("t.scn:2:", 0), 0u);
    EXPECT_EQ(s.errors[1].rfind("t.scn:4:", 0), 0u);
}

// Sets a path of the demo device and returns the group's decoded value.
std::string SetAndShow(DemoDevice &dev, const std::string &path, const std::string &value) {
    SetOp op;
    std::string error;
    EXPECT_TRUE(DemoDevice::PrepareSet(path, value, &op, &error)) << error;
    dev.Set(op);
    cJSON *json = dev.GroupJson(*op.group);
    char *text = cJSON_PrintUnformatted(json);
    std::string out = text;
    cJSON_free(text);
    cJSON_Delete(json);
    return out;
}

TEST(DeviceState, SettingPastTheCountRaisesIt) {
    DemoDevice dev;
    std::string children = SetAndShow(dev, "children.subserial.3.subserial", "CH9");
    EXPECT_NE(children.find("\"num\":4"), std::string::npos) << children;
    EXPECT_NE(children.find("\"subserial\":\"CH9\""), std::string::npos);
    std::string plan = SetAndShow(dev, "plan.time.6.4.begin", "23:30");
    EXPECT_NE(plan.find("\"6\":{\"4\":{\"mode\":0,\"begin\":84600"), std::string::npos) << plan;
    std::string rows = SetAndShow(dev, "flow4g.flow_info.0.incr", "0.1");
    EXPECT_NE(rows.find("\"incr\":0.1,"), std::string::npos) << rows;
}

TEST(DeviceState, AnswersAndAppliesThroughTheTables) {
    DemoDevice dev;
    noltDevSDK_special_switch_enable sw = {NOLTDEVSDK_SPECIAL_SWITCH_TYPE_FACE_RECOGNITION, 0, 0};
    noltDevSDK_special_msg_to_dev msg = {NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE, &sw, sizeof sw};
    EXPECT_EQ(dev.Apply(&msg), 0);

    struct Case {
        int type;
        int selector;
        int result;
        int value; // the third int of the answer
    } cases[] = {
        {NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, 2, 0, 0}, // just applied
        {NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, 4, 0, 1}, // default chime switch
        {NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, 9, NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT, 0},
        {NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE, 0, 0, 1},
        {NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE, 1, NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT, 0},
        {NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, 0, 0, 60},
    };
    for (const Case &c : cases) {
        int rec[3] = {c.selector, 0, 0};
        noltDevSDK_special_runtime_info info = {c.type, rec, sizeof rec};
        EXPECT_EQ(dev.Answer(&info), c.result) << c.type << "/" << c.selector;
        EXPECT_EQ(rec[2], c.value) << c.type << "/" << c.selector;
    }

    dev.SetRuntimeResult(NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, NOLTDEVSDK_SPECIAL_CODE_FAIL);
    int rec[3] = {0, 0, 0};
    noltDevSDK_special_runtime_info info = {NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, rec, sizeof rec};
    EXPECT_EQ(dev.Answer(&info), NOLTDEVSDK_SPECIAL_CODE_FAIL);
    EXPECT_EQ(rec[2], 0);
}

TEST(DeviceState, DeletionReleasesTheChildAndIsReadBackAsAFreshBlock) {
    DemoDevice dev;
    alignas(noltDevSDK_Special_DelTrusteeship_S) unsigned char
        buf[8 + 2 * sizeof(noltDevSDK_Special_DelTrusteeship_Param_S)] = {};
    auto *block = reinterpret_cast<noltDevSDK_Special_DelTrusteeship_S *>(buf);
    block->usNum = 2;
    std::strcpy(block->astUnit[0].acSubserial, "CH0000000002");
    std::strcpy(block->astUnit[1].acSubserial, "CH_UNKNOWN");
    noltDevSDK_special_msg_to_dev msg = {NOLTDEVSDK_SPECIAL_ON_DEL_TRUSTEESHIP, block,
                                         static_cast<int>(sizeof buf)};
    ASSERT_EQ(dev.Apply(&msg), 0);

    noltDevSDK_special_runtime_info info = {NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP, nullptr, 0};
    ASSERT_EQ(dev.Answer(&info), 0);
    auto *answer = static_cast<noltDevSDK_Special_DelTrusteeship_S *>(info.data);
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer->uiVersion, 1u);
    ASSERT_EQ(answer->usNum, 2);
    EXPECT_EQ(answer->astUnit[0].cResult, 0);
    EXPECT_EQ(answer->astUnit[1].cResult, 1);
    std::free(answer); // the module frees it in real life

    cJSON *json = dev.GroupJson(*DemoDevice::FindGroup("children"));
    char *children = cJSON_PrintUnformatted(json);
    cJSON_Delete(json);
    EXPECT_NE(std::string(children).find("\"num\":1"), std::string::npos) << children;
    EXPECT_EQ(std::string(children).find("CH0000000002"), std::string::npos);
    cJSON_free(children);
}

TEST(RecordDecode, CountsAreBoundedByTheBufferAndTheCapacity) {
    struct {
        int num;
        noltDevSDK_trusteeship_subserial e[8];
    } list = {};
    list.num = 99; // an application that overstates its count
    std::strcpy(list.e[0].subserial, "A");
    std::strcpy(list.e[1].subserial, "B");
    struct Case {
        size_t len;
        int shown;
    } cases[] = {{sizeof list, 8}, {4 + 24, 1}, {4, 0}};
    for (const Case &c : cases) {
        cJSON *json = RecordToJson(kTrusteeshipConnectDesc, &list, c.len);
        EXPECT_EQ(cJSON_GetArraySize(cJSON_GetObjectItem(json, "subserial")), c.shown) << c.len;
        cJSON_Delete(json);
    }
}

// Where a path lands: the leaf's offset, and the count it raises (if any).
TEST(RecordPath, ResolvesToTheLeafAndItsCount) {
    using Cl = DemoDevice::ChildList;
    using Pl = noltDevSDK_special_plan;
    struct Case {
        const RecordDesc *desc;
        const char *path;
        size_t offset;
        bool counted;
        int index;
    } cases[] = {
        {&kTrusteeshipConnectDesc, "num", offsetof(Cl, num), false, 0},
        {&kTrusteeshipConnectDesc, "subserial.2.connect_status", offsetof(Cl, subserial[2].connect_status),
         true, 2},
        {&kTrusteeshipConnectDesc, "subserial[7].iChannel", offsetof(Cl, subserial[7].iChannel), true, 7},
        {&kTrusteeshipConnectDesc, "subserial[0][subserial]", offsetof(Cl, subserial[0].subserial), true, 0},
        {&kPlanDesc, "time.6.4.end", offsetof(Pl, special_work_mode_plan.time[6][4].end), false, 0},
        {&kPlanDesc, "time[1][0].begin", offsetof(Pl, special_work_mode_plan.time[1][0].begin), false, 0},
    };
    for (const Case &c : cases) {
        FieldRef ref;
        std::string error;
        ASSERT_TRUE(ResolvePath(*c.desc, c.path, &ref, &error)) << c.path << ": " << error;
        EXPECT_EQ(ref.offset, c.offset) << c.path;
        EXPECT_EQ(ref.counter != nullptr, c.counted) << c.path;
        if (c.counted) {
            EXPECT_EQ(ref.counter_offset, offsetof(Cl, num)) << c.path;
            EXPECT_EQ(ref.index, c.index) << c.path;
        }
    }
}

TEST(RecordPath, NamesWhatIsWrongWithAPath) {
    struct Case {
        const RecordDesc *desc;
        const char *path;
        const char *error;
    } cases[] = {
        {&kTrusteeshipConnectDesc, "", "empty field path"},
        {&kTrusteeshipConnectDesc, "..", "empty field path"},
        {&kTrusteeshipConnectDesc, "count",
         "no field 'count' in Trusteeship_connect (fields: num, subserial)"},
        {&kTrusteeshipConnectDesc, "subserial", "'subserial' needs an index (0 to 7)"},
        {&kTrusteeshipConnectDesc, "subserial.-1.iChannel", "'subserial' needs an index (0 to 7)"},
        {&kTrusteeshipConnectDesc, "subserial.x.iChannel", "'subserial' needs an index (0 to 7)"},
        {&kTrusteeshipConnectDesc, "subserial.1", "'subserial' entries are records; name a field"},
        {&kTrusteeshipConnectDesc, "subserial.1.nope", "no field 'nope' in"},
        {&kTrusteeshipConnectDesc, "num.value", "'num' is a single value, not a record"},
        {&kPlanDesc, "time.3", "'time' needs two indexes (0 to "},
        {&kPlanDesc, "time.7.0.begin", "'time' needs two indexes (0 to 6)"},
        {&kTransCmdDesc, "content", "'content' cannot be set"},
    };
    for (const Case &c : cases) {
        FieldRef ref;
        std::string error;
        EXPECT_FALSE(ResolvePath(*c.desc, c.path, &ref, &error)) << c.path;
        EXPECT_EQ(error.find(c.error), 0u) << c.path << "\n  gave: " << error;
        EXPECT_EQ(ref.field, nullptr) << c.path; // untouched on failure
    }
}

TEST(RecordPath, ChecksAValueAgainstItsField) {
    struct Case {
        const RecordDesc *desc;
        const char *path;
        const char *value;
        bool ok;
    } cases[] = {
        {&kTrusteeshipConnectDesc, "num", "-2147483648", true},
        {&kTrusteeshipConnectDesc, "num", "0xFFFFFFFF", true}, // what an int holds, as its bits
        {&kTrusteeshipConnectDesc, "num", "0x100000000", false},
        {&kTrusteeshipConnectDesc, "num", "", false},
        {&kTrusteeshipConnectDesc, "subserial.0.subserial", "", true},
        {&kFlowCountingCfgDesc, "cross_line_x1", "0.25", true},
        {&kFlowCountingCfgDesc, "cross_line_x1", "1/4", false},
        {&kFlowCountingCfgDesc, "cross_line_x1", "", false},
        {&kPlanDesc, "time.0.0.begin", "23:59", true},
        {&kPlanDesc, "time.0.0.begin", "24:00", false},
        {&kPlanDesc, "time.0.0.begin", "86399", true},
        {&kPlanDesc, "time.0.0.begin", "noon", false},
    };
    for (const Case &c : cases) {
        FieldRef ref;
        std::string error;
        ASSERT_TRUE(ResolvePath(*c.desc, c.path, &ref, &error)) << c.path;
        EXPECT_EQ(CheckValue(*ref.field, c.value, &error), c.ok) << c.path << " = '" << c.value << "'";
    }
}

TEST(Expectations, EachConditionForm) {
    const std::vector<std::string> lines = {
        R"({"kind":"note","text":"two words here","line":2})",
        R"({"kind":"recv_msg","type":3,"record":{"num":2,"voice_info":[{"name":"a"},{"name":"b"}],"f":0.5},"line":5})",
    };
    struct Case {
        const char *expect;
        bool holds;
    } cases[] = {
        {"note \"text=two words here\"", true},
        {"note text~words", true},
        {"note text=two", false}, // = is the whole text
        {"note line=2", true},
        {"note line=3", false},
        {"recv_msg record.voice_info.1.name=b", true},
        {"recv_msg record.voice_info.2.name=c", false}, // past the array
        {"recv_msg record.f=0.5 type=3", true},
        {"recv_msg record.num=2 record.missing=1", false},   // every condition on the same line
        {"recv_msg record.voice_info~\"name\":\"a\"", true}, // a member that is an object, printed
        {"get_runtime_info type=3", false},                  // the kind must match
        {"note", true},
        {"# only a comment", true},
        {"", true},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(CheckExpectations(lines, c.expect, "e").empty(), c.holds) << c.expect;
    }
}

TEST(Expectations, MalformedLinesAreProblemsWithTheirLine) {
    struct Case {
        const char *expect;
        const char *problem;
    } cases[] = {
        {"note =x", "e:1: conditions are path=value or path~text"},
        {"note text", "e:1: conditions are path=value or path~text"},
        {"\nnote \"text=open", "e:2: unterminated quote"},
        {"note\n\nnote text=none", "e:3: nothing matches: note text=none\n        instead: note text=t"},
    };
    for (const Case &c : cases) {
        std::vector<std::string> problems =
            CheckExpectations({R"({"kind":"note","text":"t","line":1})"}, c.expect, "e");
        ASSERT_EQ(problems.size(), 1u) << c.expect;
        EXPECT_EQ(problems[0], c.problem) << c.expect;
    }
}

// An unmet expectation says what the device did instead: the nearest event of the same
// kind and name, with the values it had, or that there was none.
TEST(Expectations, SayWhatHappenedInstead) {
    std::vector<std::string> run = {
        R"({"kind":"to_platform","command":12367,"name":"kCenPlt2PuSetDevPlanRsp","seq":8,"body":"<Response><Result>131</Result></Response>"})",
        R"({"kind":"to_platform","command":12367,"name":"kCenPlt2PuSetDevPlanRsp","seq":9,"body":"{\"a\":1}"})",
        R"({"kind":"recv_msg","type":3,"name":"NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE","result":-744910844})",
    };
    const struct {
        const char *expect, *instead;
    } cases[] = {
        {"to_platform name=kCenPlt2PuSetDevPlanRsp seq=8 body~<Result>0</Result>",
         "instead: to_platform name=kCenPlt2PuSetDevPlanRsp seq=8 body=<Result>131</Result>"},
        {"to_platform name=kCenPlt2PuSetDevPlanRsp seq=9 body~x", "body={\"a\":1}"},
        {"to_platform name=kCenPlt2PuWakeRsp", "instead: no message with this name was sent"},
        {"recv_msg type=3 result=0",
         "instead: recv_msg type=3 result=-744910844 (answered NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT"},
        {"get_runtime_info type=14", "instead: no get_runtime_info with this type happened"},
    };
    for (const auto &c : cases) {
        std::vector<std::string> problems = CheckExpectations(run, c.expect, "e");
        ASSERT_EQ(problems.size(), 1u) << c.expect;
        EXPECT_NE(problems[0].find(c.instead), std::string::npos) << problems[0];
    }
}

TEST(Expectations, MatchKindAndConditions) {
    std::vector<std::string> lines = {
        R"({"kind":"to_platform","command":18830,"seq":7,"body":"<Result>0</Result>","line":3})",
        R"({"kind":"recv_msg","record":{"mode":2,"list":[{"a":"x"}]},"line":4})",
    };
    std::string expect = "# all of these hold\n"
                         "to_platform command=18830 seq=7 body~<Result>0\n"
                         "recv_msg record.mode=2 record.list.0.a=x\n"
                         "to_platform command=18830 seq=8\n"
                         "recv_msg record.mode\n";
    std::vector<std::string> problems = CheckExpectations(lines, expect, "e.txt");
    ASSERT_EQ(problems.size(), 2u);
    EXPECT_EQ(problems[0], "e.txt:4: nothing matches: to_platform command=18830 seq=8\n"
                           "        instead: to_platform command=18830 seq=7");
    EXPECT_EQ(problems[1].rfind("e.txt:5: conditions are", 0), 0u);

    problems = CheckExpectations({"not json"}, "", "e.txt");
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0], "output line 1: not a JSON object with a kind");
}

TEST(Transcript, PrettyPrintsEachKindOfBody) {
    struct Case {
        const char *body;
        const char *format;
        const char *contains;
    } cases[] = {
        {"", "empty", ""},
        {"<a><b>1</b></a>", "xml", "<a>\n  <b>1</b>\n</a>"},
        {"<?xml version=\"1.0\"?><a/>", "xml", "<?xml version=\"1.0\"?>\n<a />"},
        {"{\"a\":1}", "json", "\"a\":\t1"},
        {"<R><S Value=\"{&quot;K&quot;:1}\"/></R>", "xml", "S@Value as JSON:\n{\n\t\"K\":\t1\n}"},
        {"<R><V>[1,2]</V></R>", "xml", "V as JSON:\n[1, 2]"},
        {"<broken", "text", "<broken"},
        {"{not json", "text", "{not json"},
    };
    for (const Case &c : cases) {
        std::string format;
        std::string pretty = PrettyBody(c.body, &format);
        EXPECT_EQ(format, c.format) << c.body;
        EXPECT_NE(pretty.find(c.contains), std::string::npos) << c.body << "\n  gave: " << pretty;
    }
}

TEST(Transcript, WritesOneParsableJsonObjectPerLine) {
    char *buf = nullptr;
    size_t size = 0;
    FILE *mem = open_memstream(&buf, &size);
    {
        Transcript out(mem, true, true);
        out.BeginStep("t.scn", 4, "send 18829", true);
        out.Message(false, 18830, 7, 1, "<Response>\n<Result>0</Result></Response>");
        out.Callback("recv_msg", 19, "NOLTDEVSDK_SPECIAL_ON_NET_WORK_MODE", 4, 0,
                     cJSON_Parse("{\"mode\":2}"));
        std::fflush(mem);
        EXPECT_EQ(out.Lines().size(), 3u);
    }
    std::fclose(mem);
    std::vector<std::string> lines = SplitLines(std::string(buf, size));
    std::free(buf);
    ASSERT_EQ(lines.size(), 4u); // three objects and the empty tail after the last newline
    std::string expect =
        "step file=t.scn line=4\n"
        "to_platform command=18830 name=kCenPlt2PuSetKeyValueRsp seq=7 response=1 format=xml line=4 "
        "body~<Result>0\n"
        "recv_msg type=19 record.mode=2 result=0\n";
    EXPECT_TRUE(CheckExpectations({lines[0], lines[1], lines[2]}, expect, "e").empty());
}

TEST(RecordDecode, PrintsThePathsSetTakes) {
    noltDevSDK_special_plan plan = {};
    plan.special_work_mode_plan.time[2][1].begin = 27000;
    noltDevSDK_special_flow_counting_cfg cfg = {};
    cfg.cross_line_x1 = 0.1f;
    char content[] = "abcdef";
    noltDevSDK_special_trans_cmd_msg raw = {content, 3, 20001, 0, 9};
    struct Case {
        const RecordDesc *desc;
        const void *data;
        size_t len;
        const char *line;
    } cases[] = {
        {&kPlanDesc, &plan, sizeof plan, "  time.2.1.begin = 27000\n"},
        {&kFlowCountingCfgDesc, &cfg, sizeof cfg, "  cross_line_x1 = 0.1\n"},
        {&kTransCmdDesc, &raw, sizeof raw, "  content = \"abc\"\n"},
        {&kFlowCountingCfgDesc, &cfg, 8, "  angle_vectical = 0\n"}, // a short record stops at len
    };
    for (const Case &c : cases) {
        cJSON *json = RecordToJson(*c.desc, c.data, c.len);
        std::string lines = JsonToLines(json, "  ");
        cJSON_Delete(json);
        EXPECT_NE(lines.find(c.line), std::string::npos) << c.desc->name << "\n  gave: " << lines;
        if (c.len == 8) {
            EXPECT_EQ(lines.find("cross_line_x1"), std::string::npos);
        }
    }
}

} // namespace
} // namespace sim
