/* The registry of the 22 status items: handed to the report-status service at start in
 * this order, and taken back at the end (all but the associated-device item). */
#include <string.h>

#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_protocol.h"
#include "special.h"
#include "special_status.h"
#include "special_status_common.h"

/* The application knows the items by the installed protocol header's ids; the
 * report-status service by its own. They must be the same numbers. */
#define SPECIAL_SAME_ITEM(service_id, public_id)                                                             \
    static_assert(static_cast<int>(service_id) == static_cast<int>(public_id),                               \
                  #public_id " must be " #service_id)
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportSpecialSwitchEnableFlow, NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FLOW);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportFlowCountConfig, NOLTDEVSDK_SPECIAL_ITEM_FLOW_COUNT_CONFIG);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportSpecialKeyValue, NOLTDEVSDK_SPECIAL_ITEM_KEY_VALUE);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportPowerStatus, NOLTDEVSDK_SPECIAL_ITEM_POWER_STATUS);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportBatteryWorkStatus, NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_STATUS);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportCustomVoice, NOLTDEVSDK_SPECIAL_ITEM_CUSTOM_VOICE);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportLinkageModeStatus, NOLTDEVSDK_SPECIAL_ITEM_LINKAGE_MODE_STATUS);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportTrusteeship, NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportTrusteeshipConnect, NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP_CONNECT);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportVoddnsMappedPort, NOLTDEVSDK_SPECIAL_ITEM_VODDNS_MAPPED_PORT);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportAssociatedDeviceConnStatus,
                  NOLTDEVSDK_SPECIAL_ITEM_ASSOCIATED_DEVICE_CONN_STATUS);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportBatteryWorkMode, NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportSpecialSwitchEnableLingerAlarm,
                  NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_LINGER_ALARM);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportSpecialSwitchEnableFaceRecg,
                  NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FACE_RECG);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportSpecialRingType, NOLTDEVSDK_SPECIAL_ITEM_RING_TYPE);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportSpecialDistortionCorrection,
                  NOLTDEVSDK_SPECIAL_ITEM_DISTORTION_CORRECTION);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportSpecialSwitchEnableChimeIndicator,
                  NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_CHIME_INDICATOR);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportBatteryWorkModePlan, NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE_PLAN);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportBatteryNetWorkMode, NOLTDEVSDK_SPECIAL_ITEM_NETWORK_MODE);
SPECIAL_SAME_ITEM(NOLTDEVSDK_Report4GInfo, NOLTDEVSDK_SPECIAL_ITEM_4G_INFO);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportOneClickMute, NOLTDEVSDK_SPECIAL_ITEM_ONE_CLICK_MUTE);
SPECIAL_SAME_ITEM(NOLTDEVSDK_ReportSpeakerConfig, NOLTDEVSDK_SPECIAL_ITEM_SPEAKER_CONFIG);
#undef SPECIAL_SAME_ITEM

namespace {
struct StatusItem {
    NOLTDEVSDK_REPORT_STATUS_E id;
    int (*is_changed)(void);
    int (*report)(int b_force);
    int (*reset)(void);
};
} // namespace

static const StatusItem kStatusItems[] = {
    {NOLTDEVSDK_ReportSpecialSwitchEnableFlow, SpecialSwitchEnableFlowIsChanged,
     SpecialReportSwitchEnableFlow, SpecialSwitchEnableFlowReset},
    {NOLTDEVSDK_ReportSpecialSwitchEnableLingerAlarm, SpecialSwitchEnableLingerAlarmIsChanged,
     SpecialReportSwitchEnableLingerAlarm, SpecialSwitchEnableLingerAlarmReset},
    {NOLTDEVSDK_ReportSpecialSwitchEnableFaceRecg, SpecialSwitchEnableFaceRecgIsChanged,
     SpecialReportSwitchEnableFaceRecg, SpecialSwitchEnableFaceRecgReset},
    {NOLTDEVSDK_ReportSpecialSwitchEnableChimeIndicator, SpecialSwitchEnableChimeIndicatorIsChanged,
     SpecialReportSwitchEnableChimeIndicator, SpecialSwitchEnableChimeIndicatorReset},
    /* reported only when forced; nothing to reset */
    {NOLTDEVSDK_ReportFlowCountConfig, SpecialFlowCountConfigIsChanged, SpecialReportFlowCountConfig, NULL},
    {NOLTDEVSDK_ReportSpecialKeyValue, SpecialICRIsChanged, SpecialReportKeyValue, SpecialKeyValueReset},
    {NOLTDEVSDK_ReportBatteryWorkStatus, SpecialBatteryWorkStatusIsChanged, SpecialReportBateryWorkStatus,
     SpecialBateryWorkStatusReset},
    {NOLTDEVSDK_ReportCustomVoice, SpecialCustomVoiceIsChanged, SpecialReportCustomVoice,
     SpecialCustomVoiceReset},
    {NOLTDEVSDK_ReportLinkageModeStatus, SpecialLinkageModeStatusIsChanged, SpecialReportLinkageModeStatus,
     SpecialLinkageModeStatusReset},
    {NOLTDEVSDK_ReportTrusteeship, SpecialTrusteeshipIsChanged, SpecialReportTrusteeship,
     SpecialTrusteeshipReset},
    {NOLTDEVSDK_ReportPowerStatus, SpecialPowerStatusIsChanged, SpecialReportPowerStatus,
     SpecialPowerStatusReset},
    {NOLTDEVSDK_ReportTrusteeshipConnect, SpecialTrusteeshipConnectIsChanged, SpecialReportTrusteeshipConnect,
     SpecialTrusteeshipConnectReset},
    {NOLTDEVSDK_ReportVoddnsMappedPort, SpecialVoddnsLocalMappedInfosIsChanged,
     SpecialReportVoddnsLocalMappedPort, SpecialVoddnsLocalMappedInfosReset},
    {NOLTDEVSDK_ReportAssociatedDeviceConnStatus, SpecialAssociatedDeviceConnStatusIsChanged,
     SpecialReportAssociatedDeviceConnStatus, SpecialAssociatedDeviceConnStatusReset},
    {NOLTDEVSDK_ReportBatteryWorkMode, SpecialBatteryWorkModeIsChanged, SpecialReportBatteryWorkMode,
     SpecialBatteryWorkModeReset},
    {NOLTDEVSDK_ReportBatteryWorkModePlan, SpecialBatteryWorkModePlanIsChanged,
     SpecialReportBatteryWorkModePlan, SpecialBatteryWorkModePlanReset},
    {NOLTDEVSDK_ReportSpecialRingType, SpecialRingTypeIsChanged, SpecialReportRingType, SpecialRingTypeReset},
    {NOLTDEVSDK_ReportSpecialDistortionCorrection, SpecialSwitchEnableDistortionIsChanged,
     SpecialReportSwitchEnableDistortion, SpecialSwitchEnableDistortionReset},
    {NOLTDEVSDK_ReportBatteryNetWorkMode, SpecialNetWorkModeIsChanged, SpecialReportNetWorkMode,
     SpecialNetWorkModeReset},
    {NOLTDEVSDK_ReportOneClickMute, SpecialOneClickMuteIsChanged, SpecialReportOneClickMute,
     SpecialOneClickMuteReset},
    {NOLTDEVSDK_ReportSpeakerConfig, SpecialSpeakerConfigIsChanged, SpecialReportSpeakerConfig,
     SpecialSpeakerConfigReset},
    {NOLTDEVSDK_Report4GInfo, SpecialDev4GInfoIsChanged, SpecialDev4GInfoReport, SpecialDev4GInfoReset},
};

static_assert(SPECIAL_COUNT_OF(kStatusItems) == NOLTDEVSDK_SPECIAL_STATUS_ITEM_COUNT,
              "the module registers every status item of the protocol header");

/* The associated-device item (92) stays registered after the module ends. */
static const NOLTDEVSDK_REPORT_STATUS_E kUnregisterOrder[] = {
    NOLTDEVSDK_ReportSpecialSwitchEnableFlow,
    NOLTDEVSDK_ReportFlowCountConfig,
    NOLTDEVSDK_ReportSpecialKeyValue,
    NOLTDEVSDK_ReportBatteryWorkStatus,
    NOLTDEVSDK_ReportCustomVoice,
    NOLTDEVSDK_ReportLinkageModeStatus,
    NOLTDEVSDK_ReportTrusteeship,
    NOLTDEVSDK_ReportPowerStatus,
    NOLTDEVSDK_ReportTrusteeshipConnect,
    NOLTDEVSDK_ReportVoddnsMappedPort,
    NOLTDEVSDK_ReportBatteryWorkMode,
    NOLTDEVSDK_ReportSpecialSwitchEnableLingerAlarm,
    NOLTDEVSDK_ReportSpecialSwitchEnableFaceRecg,
    NOLTDEVSDK_ReportSpecialRingType,
    NOLTDEVSDK_ReportSpecialDistortionCorrection,
    NOLTDEVSDK_ReportBatteryWorkModePlan,
    NOLTDEVSDK_ReportBatteryNetWorkMode,
    NOLTDEVSDK_ReportSpecialSwitchEnableChimeIndicator,
    NOLTDEVSDK_Report4GInfo,
    NOLTDEVSDK_ReportOneClickMute,
    NOLTDEVSDK_ReportSpeakerConfig,
};

void SpecialStatusRegisterAll(void) {
    /* one record for every item: the service copies what it keeps */
    noltDevSDK_report_status_info info;
    memset(&info, 0, sizeof info);
    for (size_t i = 0; i < SPECIAL_COUNT_OF(kStatusItems); i++) {
        info.status_value = kStatusItems[i].id;
        info.status_is_changed = kStatusItems[i].is_changed;
        info.report_status = kStatusItems[i].report;
        info.status_reset = kStatusItems[i].reset;
        noltDevSDK_report_status_register(&info);
    }
}

void SpecialStatusUnregisterAll(void) {
    noltDevSDK_report_status_info info;
    memset(&info, 0, sizeof info);
    for (size_t i = 0; i < SPECIAL_COUNT_OF(kUnregisterOrder); i++) {
        info.status_value = kUnregisterOrder[i];
        noltDevSDK_report_status_unregister(&info);
    }
}
