// The public header compiles as C99 and lays the records out as the module does.
#include <gtest/gtest.h>

#include <cstddef>
#include <ctime>
#include <string>

#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_def.h"
#include "noltDevSDK_special_protocol.h"

extern "C" int special_c_record_sizes(size_t *out, int max);
extern "C" int special_c_init_info_ok(void);

TEST(PublicHeader, CLayoutMatchesCpp) {
    const size_t expected[] = {
#define SPECIAL_RECORD(expr) expr,
#include "public_records.inc"
#undef SPECIAL_RECORD
    };
    size_t got[32] = {};
    int n = special_c_record_sizes(got, 32);
    ASSERT_EQ(n, static_cast<int>(sizeof expected / sizeof expected[0]));
    for (int i = 0; i < n; ++i) {
        EXPECT_EQ(got[i], expected[i]) << "record " << i;
    }
}

TEST(PublicHeader, CodesAreNegativeAndCallbacksUsableFromC) {
    EXPECT_TRUE(special_c_init_info_ok());
    const int codes[] = {NOLTDEVSDK_SPECIAL_CODE_FAIL, NOLTDEVSDK_SPECIAL_CODE_NOT_INITED,
                         NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR,
                         NOLTDEVSDK_SPECIAL_CODE_VOICE_COUNT_LIMITED};
    for (int code : codes) {
        EXPECT_LT(code, 0);
    }
    EXPECT_EQ(static_cast<unsigned>(NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR), 0xD3999020u);
}

// The installed identifiers are the platform's numbers: the module and the application
// both build from them, so a wrong one would go unnoticed anywhere else.
TEST(ProtocolHeader, IdentifiersAreThePlatformsNumbers) {
    EXPECT_EQ(3999, NOLTDEVSDK_SPECIAL_DOMAIN_ID);
    const int pairs[][2] = {
        {kPu2CenPltQueryDevInfoByDomainReq, 10379},
        {kPu2CenPltQueryDevInfoByDomainRsp, 10380},
        {kPu2CenPltReportDevSwitchEnableReq, 12355},
        {kPu2CenPltReportPowerStatusReq, 12358},
        {kPu2CenPltReportDevicePlanReq, 12366},
        {kPu2CenPltReportFlowCountReq, 12374},
        {kPu2CenPltReportFlowCountConfigFReq, 12378},
        {kPu2CenPltReportKeyValueReq, 12382},
        {kPu2CenPltReportPortInfoReq, 12383},
        {kPu2CenPltReportTrusteeshipReq, 12449},
        {kPu2CenPltReportConnStatusReq, 12450},
        {kPu2CenPltSendVerificationCodeReq, 13450},
        {kPu2CenPltSendVerificationCodeRsp, 13451},
        {kPu2CenPltAIMemberPicModelDataReportReq, 13584},
        {kPu2CenPltAIMemberPicModelDataReportRsp, 13585},
        {kPu2CenPltReport4GFlowInfoReq, 13600},
        {kPu2CenPltUnBindUserReq, 19590},
        {kPu2CenPltUnBindUserRsp, 19591},
        {kCenPlt2PuSetSwitchEnableReq, 18699},
        {kCenPlt2PuSetSwitchEnableRsp, 18700},
        {kCenPlt2PuSetDevPlanReq, 18731},
        {kCenPlt2PuSetDevPlanRsp, 18732},
        {kCenPlt2PuSetFollowCountInfoReq, 18749},
        {kCenPlt2PuSetFollowCountInfoRsp, 18750},
        {kCenPlt2PuSetKeyValueReq, 18829},
        {kCenPlt2PuSetKeyValueRsp, 18830},
        {kCenPlt2PuSetCustomVoiceReq, 18843},
        {kCenPlt2PuSetCustomVoiceRsp, 18844},
        {kCenPlt2PuWakeReq, 18863},
        {kCenPlt2PuWakeRsp, 18864},
        {kCenPlt2PuSetDelaySleepReq, 19588},
        {kCenPlt2PuSetDelaySleepRsp, 19589},
        {kCenPlt2PuDelTrusteeshipReq, 19592},
        {kCenPlt2PuDelTrusteeshipRsp, 19593},
        {kCenPlt2PuAIMemberPicSynReq, 19596},
        {kCenPlt2PuAIMemberPicSynRsp, 19597},
        {kCenPlt2PuAIMemberPicEditReq, 19598},
        {kCenPlt2PuAIMemberPicEditRsp, 19599},
        {kCenPlt2PuAIMemberPicDeleteReq, 19600},
        {kCenPlt2PuAIMemberPicDeleteRsp, 19601},
        {kCenPlt2PuAIMemberPicQueryReq, 19602},
        {kCenPlt2PuAIMemberPicQueryRsp, 19603},
        {kCenPlt2PuProwlDriveOutReq, 19606},
        {kCenPlt2PuProwlDriveOutRsp, 19607},
        {kCenPlt2PuSetLinkageModeStatusReq, 19917},
        {kCenPlt2PuSetLinkageModeStatusRsp, 19918},
        {NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FLOW, 31},
        {NOLTDEVSDK_SPECIAL_ITEM_FLOW_COUNT_CONFIG, 32},
        {NOLTDEVSDK_SPECIAL_ITEM_KEY_VALUE, 33},
        {NOLTDEVSDK_SPECIAL_ITEM_POWER_STATUS, 36},
        {NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_STATUS, 37},
        {NOLTDEVSDK_SPECIAL_ITEM_CUSTOM_VOICE, 38},
        {NOLTDEVSDK_SPECIAL_ITEM_LINKAGE_MODE_STATUS, 39},
        {NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP, 40},
        {NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP_CONNECT, 42},
        {NOLTDEVSDK_SPECIAL_ITEM_VODDNS_MAPPED_PORT, 45},
        {NOLTDEVSDK_SPECIAL_ITEM_ASSOCIATED_DEVICE_CONN_STATUS, 92},
        {NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE, 96},
        {NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_LINGER_ALARM, 101},
        {NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FACE_RECG, 102},
        {NOLTDEVSDK_SPECIAL_ITEM_RING_TYPE, 103},
        {NOLTDEVSDK_SPECIAL_ITEM_DISTORTION_CORRECTION, 104},
        {NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_CHIME_INDICATOR, 105},
        {NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE_PLAN, 118},
        {NOLTDEVSDK_SPECIAL_ITEM_NETWORK_MODE, 119},
        {NOLTDEVSDK_SPECIAL_ITEM_4G_INFO, 122},
        {NOLTDEVSDK_SPECIAL_ITEM_ONE_CLICK_MUTE, 123},
        {NOLTDEVSDK_SPECIAL_ITEM_SPEAKER_CONFIG, 124},
    };
    for (const auto &pair : pairs) {
        EXPECT_EQ(pair[1], pair[0]);
    }
    EXPECT_EQ(22, NOLTDEVSDK_SPECIAL_STATUS_ITEM_COUNT);
}

// The version macros and the recorded layout come from the build.
TEST(ProtocolHeader, VersionAndLayoutOfTheBuild) {
    EXPECT_EQ(std::to_string(NOLTDEVSDK_SPECIAL_VERSION_MAJOR) + "." +
                  std::to_string(NOLTDEVSDK_SPECIAL_VERSION_MINOR) + "." +
                  std::to_string(NOLTDEVSDK_SPECIAL_VERSION_PATCH),
              NOLTDEVSDK_SPECIAL_VERSION_STRING);
    EXPECT_EQ((NOLTDEVSDK_SPECIAL_VERSION_MAJOR << 16) | (NOLTDEVSDK_SPECIAL_VERSION_MINOR << 8) |
                  NOLTDEVSDK_SPECIAL_VERSION_PATCH,
              NOLTDEVSDK_SPECIAL_VERSION);
    EXPECT_EQ(sizeof(time_t), size_t(NOLTDEVSDK_SPECIAL_BUILT_TIME_T_SIZE));
    EXPECT_EQ(sizeof(void *), size_t(NOLTDEVSDK_SPECIAL_BUILT_POINTER_SIZE));
}

// The application knows the items by the installed ids, the report-status service by
// its own enum: the two must name the same numbers.
TEST(ProtocolHeader, ItemIdsAreTheReportStatusServicesIds) {
    const int pairs[][2] = {
        {NOLTDEVSDK_ReportSpecialSwitchEnableFlow, NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FLOW},
        {NOLTDEVSDK_ReportFlowCountConfig, NOLTDEVSDK_SPECIAL_ITEM_FLOW_COUNT_CONFIG},
        {NOLTDEVSDK_ReportSpecialKeyValue, NOLTDEVSDK_SPECIAL_ITEM_KEY_VALUE},
        {NOLTDEVSDK_ReportPowerStatus, NOLTDEVSDK_SPECIAL_ITEM_POWER_STATUS},
        {NOLTDEVSDK_ReportBatteryWorkStatus, NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_STATUS},
        {NOLTDEVSDK_ReportCustomVoice, NOLTDEVSDK_SPECIAL_ITEM_CUSTOM_VOICE},
        {NOLTDEVSDK_ReportLinkageModeStatus, NOLTDEVSDK_SPECIAL_ITEM_LINKAGE_MODE_STATUS},
        {NOLTDEVSDK_ReportTrusteeship, NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP},
        {NOLTDEVSDK_ReportTrusteeshipConnect, NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP_CONNECT},
        {NOLTDEVSDK_ReportVoddnsMappedPort, NOLTDEVSDK_SPECIAL_ITEM_VODDNS_MAPPED_PORT},
        {NOLTDEVSDK_ReportAssociatedDeviceConnStatus, NOLTDEVSDK_SPECIAL_ITEM_ASSOCIATED_DEVICE_CONN_STATUS},
        {NOLTDEVSDK_ReportBatteryWorkMode, NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE},
        {NOLTDEVSDK_ReportSpecialSwitchEnableLingerAlarm, NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_LINGER_ALARM},
        {NOLTDEVSDK_ReportSpecialSwitchEnableFaceRecg, NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FACE_RECG},
        {NOLTDEVSDK_ReportSpecialRingType, NOLTDEVSDK_SPECIAL_ITEM_RING_TYPE},
        {NOLTDEVSDK_ReportSpecialDistortionCorrection, NOLTDEVSDK_SPECIAL_ITEM_DISTORTION_CORRECTION},
        {NOLTDEVSDK_ReportSpecialSwitchEnableChimeIndicator,
         NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_CHIME_INDICATOR},
        {NOLTDEVSDK_ReportBatteryWorkModePlan, NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE_PLAN},
        {NOLTDEVSDK_ReportBatteryNetWorkMode, NOLTDEVSDK_SPECIAL_ITEM_NETWORK_MODE},
        {NOLTDEVSDK_Report4GInfo, NOLTDEVSDK_SPECIAL_ITEM_4G_INFO},
        {NOLTDEVSDK_ReportOneClickMute, NOLTDEVSDK_SPECIAL_ITEM_ONE_CLICK_MUTE},
        {NOLTDEVSDK_ReportSpeakerConfig, NOLTDEVSDK_SPECIAL_ITEM_SPEAKER_CONFIG},
    };
    ASSERT_EQ(size_t(NOLTDEVSDK_SPECIAL_STATUS_ITEM_COUNT), sizeof pairs / sizeof pairs[0]);
    for (const auto &pair : pairs) {
        EXPECT_EQ(pair[0], pair[1]);
    }
}
