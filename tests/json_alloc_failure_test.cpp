// Every JSON text the module builds or parses, with each of its allocations failing in
// turn: the module must not crash, must free every JSON allocation on every path, and must
// still work once allocations succeed again.
#include <functional>

#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_protocol.h"
#include "special_fixture.h"
#include "status_support.h"

namespace special_test {
namespace {

struct Operation {
    const char *name;
    std::function<void()> run;
};

class JsonAllocFailureTest : public SpecialFixture, public ::testing::WithParamInterface<Operation> {
  protected:
    void SetUp() override {
        SpecialFixture::SetUp();
        // a sink that keeps nothing: the fixture's parses every body with cJSON
        noltdev_host_set_sink(&JsonAllocFailureTest::Count, nullptr);
        AnswerEveryJsonItem();
        ASSERT_EQ(0, Init());
        Poll(); // fills the caches the reports send
        noltdev_host_fault_json_hooks(1);
    }
    void TearDown() override {
        noltdev_host_fault_json_hooks(0);
        SpecialFixture::TearDown();
    }
    static int Count(const noltdev_host_message *, void *) { return 0; }
    void AnswerEveryJsonItem() {
        noltDevSDK_special_custom_voice_infos voices = {};
        voices.num = 3;
        for (int i = 0; i < 3; ++i) {
            voices.voice_info[i] = {i, 1, "bell", "http://v/1", 1700000000, 1};
        }
        SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS, voices);
        SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, noltDevSDK_Trusteeship{"BASE01"});
        SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT,
                   ChildList<noltDevSDK_trusteeship_subserial>{2, {{"S1", 1, 0}, {"S2", 0, 1}}});
        SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS,
                   noltDevSDK_special_associated_device_conn_status{1, -60, "ssid", "wlan0", "10.0.0.2",
                                                                    "255.0.0.0", "10.0.0.1", "DB1"});
        SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, noltDevSDK_special_ring_type{1, 2, 3});
        SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG,
                   noltDevSDK_special_speaker_config{1, 2, 3, 4});
        SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO,
                   noltDevSDK_special_4G_Info_S{1, -70, 2, "LTE", "I", "M"});
        SetRuntimeHook(
            NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP, [](noltDevSDK_special_runtime_info *info) {
                size_t size = sizeof(noltDevSDK_Special_DelTrusteeship_S) +
                              2 * sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
                auto *block = static_cast<noltDevSDK_Special_DelTrusteeship_S *>(std::calloc(1, size));
                block->usNum = 2;
                block->astUnit[1].cResult = 1;
                info->data = block;
                return 0;
            });
    }
};

TEST_P(JsonAllocFailureTest, EachAllocationMayFailWithoutACrashOrALeak) {
    const Operation &op = GetParam();
    int turn = 0;
    for (; turn < 500; ++turn) {
        SCOPED_TRACE("allocation " + std::to_string(turn) + " fails");
        long live = noltdev_host_fault_json_live();
        noltdev_host_fault_set(NOLTDEV_HOST_FAULT_JSON_ALLOC, turn, 1, 0, 0);
        op.run();
        bool failed = noltdev_host_fault_injected(NOLTDEV_HOST_FAULT_JSON_ALLOC) > 0;
        noltdev_host_fault_clear();
        EXPECT_EQ(live, noltdev_host_fault_json_live()) << "JSON memory left behind";
        if (!failed) {
            break; // the operation ran through without reaching that allocation
        }
    }
    EXPECT_GT(turn, 0) << "the operation allocates no JSON at all";
    EXPECT_LT(turn, 500);
}

void Forced(int id) {
    noltDevSDK_report_set_force_report(id);
    noltdev_host_report_poll();
}

void Inject(int command, const std::string &body) {
    noltdev_host_inject(kDomain, command, 1, body.data(), static_cast<uint32_t>(body.size()));
}

void Shadow(const std::string &text) {
    noltdev_host_shadow_deliver(kDomain, "Trusteeship", 4, text.c_str(), static_cast<int>(text.size()));
}

std::string KeyValue(const char *type, const char *value) {
    return std::string("<Request><Type>") + type + "</Type><Value>" + value + "</Value></Request>";
}

const Operation kOperations[] = {
    {"TrusteeshipReport", [] { Forced(40); }},
    {"TrusteeshipNow", [] { noltDevSDK_special_report_trusteeship(); }},
    {"TrusteeshipConnect", [] { Forced(42); }},
    {"CustomVoices", [] { Forced(38); }},
    {"RingType", [] { Forced(103); }},
    {"Speaker", [] { Forced(124); }},
    {"AssociatedDevice", [] { Forced(92); }},
    {"FourG", [] { Forced(122); }},
    {"ShadowRead",
     [] {
         char out[512];
         noltdev_host_shadow_read(kDomain, "Trusteeship", 0, out, sizeof out, nullptr, nullptr);
     }},
    {"ShadowCommand",
     [] {
         Shadow(
             R"([{"channel":1,"subserial":"S1","baseserial":"B1","newbase":"N","pwd":"p"},{"channel":2,"subserial":"S2","baseserial":"B1"}])");
     }},
    {"DriveOut",
     [] { Inject(kCenPlt2PuProwlDriveOutReq, R"({"operType":2,"channel":3,"videoUrl":["u1","u2"]})"); }},
    {"Wake", [] { Inject(kCenPlt2PuWakeReq, R"({"subserial":"SUB1"})"); }},
    {"Bell", [] { Inject(kCenPlt2PuSetKeyValueReq, KeyValue("device_bell", R"({"Type":1,"Volume":60})")); }},
    {"SpeakerSetting",
     [] {
         Inject(kCenPlt2PuSetKeyValueReq, KeyValue("SpeakerConfig", R"({"RingSwitch":1,"RingIndex":2})"));
     }},
    {"UnbindAnswer", [] { Inject(kPu2CenPltUnBindUserRsp, R"({"Result":0})"); }},
};

INSTANTIATE_TEST_SUITE_P(Json, JsonAllocFailureTest, ::testing::ValuesIn(kOperations),
                         [](const ::testing::TestParamInfo<Operation> &info) { return info.param.name; });

} // namespace
} // namespace special_test
