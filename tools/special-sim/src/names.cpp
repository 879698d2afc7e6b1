// The name tables, built from the platform's own enumerations so that a renamed or
// renumbered identifier fails to compile here instead of drifting.
#include "names.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "consts.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_shadow.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_sdk_kernel_struct.h"

#define NV(x)                                                                                                \
    { #x, (long long)(x) }

namespace sim {

bool ParseInteger(const std::string &text, long long *value) {
    if (text.empty()) {
        return false;
    }
    errno = 0;
    char *end = nullptr;
    long long v = std::strtoll(text.c_str(), &end, 0);
    if (errno != 0 || *end != '\0' || v < -2147483648LL || v > 0xFFFFFFFFLL) {
        return false;
    }
    *value = v;
    return true;
}

bool NameTable::Lookup(const std::string &text, long long *value) const {
    // A name matches in full, without the table's prefix, or by a unique tail that starts
    // after an underscore ("GET_SPECIAL_PLAN", "SPECIAL_PLAN").
    const NamedValue *found = nullptr;
    int tails = 0;
    size_t plen = std::strlen(prefix_);
    for (size_t i = 0; i < count_; i++) {
        std::string name = entries_[i].name;
        if (text == name || (plen > 0 && name.compare(0, plen, prefix_) == 0 && text == name.substr(plen))) {
            *value = entries_[i].value;
            return true;
        }
        if (!text.empty() && name.size() > text.size() && name[name.size() - text.size() - 1] == '_' &&
            name.compare(name.size() - text.size(), text.size(), text) == 0) {
            found = &entries_[i];
            tails++;
        }
    }
    if (tails == 1) {
        *value = found->value;
        return true;
    }
    return ParseInteger(text, value);
}

const char *NameTable::Name(long long value) const {
    for (size_t i = 0; i < count_; i++) {
        if (entries_[i].value == value) {
            return entries_[i].name;
        }
    }
    return "";
}

std::string NameTable::Describe(long long value) const {
    const char *name = Name(value);
    return name[0] ? std::string(name) + " (" + std::to_string(value) + ")" : std::to_string(value);
}

std::string NameTable::List() const {
    std::string out;
    for (size_t i = 0; i < count_; i++) {
        out += (i ? ", " : "") + std::string(entries_[i].name);
    }
    return out;
}

static const NamedValue kCommandEntries[] = {
    NV(kPu2CenPltQueryDevInfoByDomainReq),
    NV(kPu2CenPltQueryDevInfoByDomainRsp),
    NV(kPu2CenPltReportDevSwitchEnableReq),
    NV(kPu2CenPltReportPowerStatusReq),
    NV(kPu2CenPltReportDevicePlanReq),
    NV(kPu2CenPltReportFlowCountReq),
    NV(kPu2CenPltReportFlowCountConfigFReq),
    NV(kPu2CenPltReportKeyValueReq),
    NV(kPu2CenPltReportPortInfoReq),
    NV(kPu2CenPltReportTrusteeshipReq),
    NV(kPu2CenPltReportConnStatusReq),
    NV(kPu2CenPltSendVerificationCodeReq),
    NV(kPu2CenPltSendVerificationCodeRsp),
    NV(kPu2CenPltAIMemberPicModelDataReportReq),
    NV(kPu2CenPltAIMemberPicModelDataReportRsp),
    NV(kPu2CenPltReport4GFlowInfoReq),
    NV(kPu2CenPltUnBindUserReq),
    NV(kPu2CenPltUnBindUserRsp),
    NV(kCenPlt2PuSetSwitchEnableReq),
    NV(kCenPlt2PuSetSwitchEnableRsp),
    NV(kCenPlt2PuSetDevPlanReq),
    NV(kCenPlt2PuSetDevPlanRsp),
    NV(kCenPlt2PuSetFollowCountInfoReq),
    NV(kCenPlt2PuSetFollowCountInfoRsp),
    NV(kCenPlt2PuSetKeyValueReq),
    NV(kCenPlt2PuSetKeyValueRsp),
    NV(kCenPlt2PuSetCustomVoiceReq),
    NV(kCenPlt2PuSetCustomVoiceRsp),
    NV(kCenPlt2PuWakeReq),
    NV(kCenPlt2PuWakeRsp),
    NV(kCenPlt2PuSetDelaySleepReq),
    NV(kCenPlt2PuSetDelaySleepRsp),
    NV(kCenPlt2PuDelTrusteeshipReq),
    NV(kCenPlt2PuDelTrusteeshipRsp),
    NV(kCenPlt2PuAIMemberPicSynReq),
    NV(kCenPlt2PuAIMemberPicSynRsp),
    NV(kCenPlt2PuAIMemberPicEditReq),
    NV(kCenPlt2PuAIMemberPicEditRsp),
    NV(kCenPlt2PuAIMemberPicDeleteReq),
    NV(kCenPlt2PuAIMemberPicDeleteRsp),
    NV(kCenPlt2PuAIMemberPicQueryReq),
    NV(kCenPlt2PuAIMemberPicQueryRsp),
    NV(kCenPlt2PuProwlDriveOutReq),
    NV(kCenPlt2PuProwlDriveOutRsp),
    NV(kCenPlt2PuSetLinkageModeStatusReq),
    NV(kCenPlt2PuSetLinkageModeStatusRsp),
};
const NameTable kCommands(kCommandEntries, "");

static const NamedValue kEventEntries[] = {
    NV(sdk_kernel_event_online),
    NV(sdk_kernel_event_break),
    NV(sdk_kernel_event_register_success),
    NV(sdk_kernel_event_register_fail),
    NV(sdk_kernel_event_token_update),
    NV(sdk_kernel_event_time_sync),
    NV(sdk_kernel_event_reconnect_success),
    NV(sdk_kernel_event_heartbeat_interval_changed),
};
const NameTable kEvents(kEventEntries, "sdk_kernel_event_");

static const NamedValue kReportEntries[] = {
    NV(NOLTDEVSDK_ReportSpecialSwitchEnableFlow),
    NV(NOLTDEVSDK_ReportFlowCountConfig),
    NV(NOLTDEVSDK_ReportSpecialKeyValue),
    NV(NOLTDEVSDK_ReportPowerStatus),
    NV(NOLTDEVSDK_ReportBatteryWorkStatus),
    NV(NOLTDEVSDK_ReportCustomVoice),
    NV(NOLTDEVSDK_ReportLinkageModeStatus),
    NV(NOLTDEVSDK_ReportTrusteeship),
    NV(NOLTDEVSDK_ReportTrusteeshipConnect),
    NV(NOLTDEVSDK_ReportVoddnsMappedPort),
    NV(NOLTDEVSDK_ReportAssociatedDeviceConnStatus),
    NV(NOLTDEVSDK_ReportBatteryWorkMode),
    NV(NOLTDEVSDK_ReportSpecialSwitchEnableLingerAlarm),
    NV(NOLTDEVSDK_ReportSpecialSwitchEnableFaceRecg),
    NV(NOLTDEVSDK_ReportSpecialRingType),
    NV(NOLTDEVSDK_ReportSpecialDistortionCorrection),
    NV(NOLTDEVSDK_ReportSpecialSwitchEnableChimeIndicator),
    NV(NOLTDEVSDK_ReportBatteryWorkModePlan),
    NV(NOLTDEVSDK_ReportBatteryNetWorkMode),
    NV(NOLTDEVSDK_Report4GInfo),
    NV(NOLTDEVSDK_ReportOneClickMute),
    NV(NOLTDEVSDK_ReportSpeakerConfig),
};
const NameTable kReportIds(kReportEntries, "NOLTDEVSDK_Report");

static const NamedValue kMsgTypeEntries[] = {
    NV(NOLTDEVSDK_SPECIAL_ON_SET_FLOW_COUNTING_CFG),
    NV(NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE),
    NV(NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP),
    NV(NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE),
    NV(NOLTDEVSDK_SPECIAL_ON_SET_LINKAGE_MODE_STATUS),
    NV(NOLTDEVSDK_SPECIAL_ON_WAKE),
    NV(NOLTDEVSDK_SPECIAL_ON_DEL_TRUSTEESHIP),
    NV(NOLTDEVSDK_SPECIAL_ON_TRANS_CMD_MSG),
    NV(NOLTDEVSDK_SPECIAL_ON_UNBINDUSER),
    NV(NOLTDEVSDK_SPECIAL_ON_SET_VODDNS_MAPPED_PORT),
    NV(NOLTDEVSDK_SPECIAL_ON_SAVE_FACE_DET_INFO),
    NV(NOLTDEVSDK_SPECIAL_ON_EDIT_FACE_DET_INFO),
    NV(NOLTDEVSDK_SPECIAL_ON_DELETE_FACE_DET_INFO),
    NV(NOLTDEVSDK_SPECIAL_ON_QUERY_FACE_DET_INFO),
    NV(NOLTDEVSDK_SPECIAL_ON_PROWL_DRIVE_OUT),
    NV(NOLTDEVSDK_SPECIAL_ON_DRIVE_OUT_RADIO_UPDATE),
    NV(NOLTDEVSDK_SPECIAL_ON_BATTERY_WORK_MODE),
    NV(NOLTDEVSDK_SPECIAL_ON_RING_SOUND),
    NV(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_PLAN),
    NV(NOLTDEVSDK_SPECIAL_ON_NET_WORK_MODE),
    NV(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_ONE_CLICK_MUTE),
    NV(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG),
};
const NameTable kMsgTypes(kMsgTypeEntries, "NOLTDEVSDK_SPECIAL_ON_");

static const NamedValue kRuntimeTypeEntries[] = {
    NV(NOLTDEVSDK_SPECIAL_ON_GET_FLOW_COUNTING_CFG),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_LINKAGE_MODE_STATUS),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_POWERSTATUS),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE),
    NV(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG),
};
const NameTable kRuntimeTypes(kRuntimeTypeEntries, "NOLTDEVSDK_SPECIAL_ON_GET_");

static const NamedValue kCodeEntries[] = {
    NV(NOLTDEVSDK_SPECIAL_SUCESS),
    NV(NOLTDEVSDK_SPECIAL_CODE_FAIL),
    NV(NOLTDEVSDK_SPECIAL_CODE_NOT_INITED),
    NV(NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM),
    NV(NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT),
    NV(NOLTDEVSDK_SPECIAL_CODE_NOT_ENOUGH_MEMERY),
    NV(NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL),
    NV(NOLTDEVSDK_SPECIAL_CODE_THREAD_CREATE_FAIL),
    NV(NOLTDEVSDK_SPECIAL_CODE_RSP_TIMEOUT),
    NV(NOLTDEVSDK_SPECIAL_CODE_MSG_DATA_INVAILD),
    NV(NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR),
    NV(NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR),
    NV(NOLTDEVSDK_SPECIAL_CODE_VOICE_DOWNLOAD_FAILED),
    NV(NOLTDEVSDK_SPECIAL_CODE_VOICE_NOT_EXIST),
    NV(NOLTDEVSDK_SPECIAL_CODE_VOICE_IS_BUSY),
    NV(NOLTDEVSDK_SPECIAL_CODE_VOICE_COUNT_LIMITED),
};
const NameTable kResultCodes(kCodeEntries, "NOLTDEVSDK_SPECIAL_CODE_");

static const NamedValue kShadowTypeEntries[] = {
    NV(shd_data_type_bool),  NV(shd_data_type_int),    NV(shd_data_type_double), NV(shd_data_type_string),
    NV(shd_data_type_array), NV(shd_data_type_object), NV(shd_data_type_null),
};
const NameTable kShadowTypes(kShadowTypeEntries, "shd_data_type_");

} // namespace sim
