/* The registry of the 22 status items, one row each: handed to the report-status service
 * at start in the table's order, and taken back at the end in each row's unregister
 * order (all but the associated-device item, which stays registered). */
#include <string.h>

#include "app/special_capacity.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_protocol.h"
#include "special_status.h"
#include "special_status_registry.h"

namespace {
struct StatusItem {
    int id; /* the installed protocol header's NOLTDEVSDK_SPECIAL_ITEM_<id> */
    int (*is_changed)(void);
    int (*report)(int b_force);
    int (*reset)(void);   /* NULL: reported only when forced, no reset */
    int unregister_order; /* 1 first; 0 stays registered after the module ends */
};
} // namespace

static const StatusItem kStatusItems[] = {
    /* id, detector, report, reset, place in the unregister order */
    {NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FLOW, SpecialSwitchEnableFlowIsChanged,
     SpecialReportSwitchEnableFlow, SpecialSwitchEnableFlowReset, 1},
    {NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_LINGER_ALARM, SpecialSwitchEnableLingerAlarmIsChanged,
     SpecialReportSwitchEnableLingerAlarm, SpecialSwitchEnableLingerAlarmReset, 12},
    {NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FACE_RECG, SpecialSwitchEnableFaceRecgIsChanged,
     SpecialReportSwitchEnableFaceRecg, SpecialSwitchEnableFaceRecgReset, 13},
    {NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_CHIME_INDICATOR, SpecialSwitchEnableChimeIndicatorIsChanged,
     SpecialReportSwitchEnableChimeIndicator, SpecialSwitchEnableChimeIndicatorReset, 18},
    {NOLTDEVSDK_SPECIAL_ITEM_FLOW_COUNT_CONFIG, SpecialFlowCountConfigIsChanged, SpecialReportFlowCountConfig,
     NULL, 2},
    {NOLTDEVSDK_SPECIAL_ITEM_KEY_VALUE, SpecialICRIsChanged, SpecialReportKeyValue, SpecialKeyValueReset, 3},
    {NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_STATUS, SpecialBatteryWorkStatusIsChanged,
     SpecialReportBateryWorkStatus, SpecialBateryWorkStatusReset, 4},
    {NOLTDEVSDK_SPECIAL_ITEM_CUSTOM_VOICE, SpecialCustomVoiceIsChanged, SpecialReportCustomVoice,
     SpecialCustomVoiceReset, 5},
    {NOLTDEVSDK_SPECIAL_ITEM_LINKAGE_MODE_STATUS, SpecialLinkageModeStatusIsChanged,
     SpecialReportLinkageModeStatus, SpecialLinkageModeStatusReset, 6},
    {NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP, SpecialTrusteeshipIsChanged, SpecialReportTrusteeship,
     SpecialTrusteeshipReset, 7},
    {NOLTDEVSDK_SPECIAL_ITEM_POWER_STATUS, SpecialPowerStatusIsChanged, SpecialReportPowerStatus,
     SpecialPowerStatusReset, 8},
    {NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP_CONNECT, SpecialTrusteeshipConnectIsChanged,
     SpecialReportTrusteeshipConnect, SpecialTrusteeshipConnectReset, 9},
    {NOLTDEVSDK_SPECIAL_ITEM_VODDNS_MAPPED_PORT, SpecialVoddnsLocalMappedInfosIsChanged,
     SpecialReportVoddnsLocalMappedPort, SpecialVoddnsLocalMappedInfosReset, 10},
    {NOLTDEVSDK_SPECIAL_ITEM_ASSOCIATED_DEVICE_CONN_STATUS, SpecialAssociatedDeviceConnStatusIsChanged,
     SpecialReportAssociatedDeviceConnStatus, SpecialAssociatedDeviceConnStatusReset, 0},
    {NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE, SpecialBatteryWorkModeIsChanged, SpecialReportBatteryWorkMode,
     SpecialBatteryWorkModeReset, 11},
    {NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE_PLAN, SpecialBatteryWorkModePlanIsChanged,
     SpecialReportBatteryWorkModePlan, SpecialBatteryWorkModePlanReset, 16},
    {NOLTDEVSDK_SPECIAL_ITEM_RING_TYPE, SpecialRingTypeIsChanged, SpecialReportRingType, SpecialRingTypeReset,
     14},
    {NOLTDEVSDK_SPECIAL_ITEM_DISTORTION_CORRECTION, SpecialSwitchEnableDistortionIsChanged,
     SpecialReportSwitchEnableDistortion, SpecialSwitchEnableDistortionReset, 15},
    {NOLTDEVSDK_SPECIAL_ITEM_NETWORK_MODE, SpecialNetWorkModeIsChanged, SpecialReportNetWorkMode,
     SpecialNetWorkModeReset, 17},
    {NOLTDEVSDK_SPECIAL_ITEM_ONE_CLICK_MUTE, SpecialOneClickMuteIsChanged, SpecialReportOneClickMute,
     SpecialOneClickMuteReset, 20},
    {NOLTDEVSDK_SPECIAL_ITEM_SPEAKER_CONFIG, SpecialSpeakerConfigIsChanged, SpecialReportSpeakerConfig,
     SpecialSpeakerConfigReset, 21},
    {NOLTDEVSDK_SPECIAL_ITEM_4G_INFO, SpecialDev4GInfoIsChanged, SpecialDev4GInfoReport,
     SpecialDev4GInfoReset, 19},
};

static_assert(SPECIAL_COUNT_OF(kStatusItems) == NOLTDEVSDK_SPECIAL_STATUS_ITEM_COUNT,
              "the module registers every status item of the protocol header");

void SpecialStatusRegisterAll(void) {
    /* one record for every item: the service copies what it keeps */
    noltDevSDK_report_status_info info;
    memset(&info, 0, sizeof info);
    for (size_t i = 0; i < SPECIAL_COUNT_OF(kStatusItems); i++) {
        info.status_value = static_cast<NOLTDEVSDK_REPORT_STATUS_E>(kStatusItems[i].id);
        info.status_is_changed = kStatusItems[i].is_changed;
        info.report_status = kStatusItems[i].report;
        info.status_reset = kStatusItems[i].reset;
        noltDevSDK_report_status_register(&info);
    }
}

/* The row with this place in the unregister order, or NULL. */
static const StatusItem *StatusItemUnregisteredAt(int order) {
    for (size_t i = 0; i < SPECIAL_COUNT_OF(kStatusItems); i++) {
        if (kStatusItems[i].unregister_order == order) {
            return &kStatusItems[i];
        }
    }
    return NULL;
}

void SpecialStatusUnregisterAll(void) {
    noltDevSDK_report_status_info info;
    memset(&info, 0, sizeof info);
    const StatusItem *item;
    for (int order = 1; (item = StatusItemUnregisteredAt(order)) != NULL; order++) {
        info.status_value = static_cast<NOLTDEVSDK_REPORT_STATUS_E>(item->id);
        noltDevSDK_report_status_unregister(&info);
    }
}
