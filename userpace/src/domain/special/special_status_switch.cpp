/* The five feature-switch statuses: the enable value the application holds for each
 * switch, reported with the platform's switch code. */
#include <stddef.h>

#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "special.h"
#include "special_status.h"
#include "special_status_common.h"

static int flow_config_enable = -1;
static int g_lingerAlarm_config_enable = -1;
static int g_faceRecg_config_enable = -1;
static int g_distortion_config_enable = -1;
static int g_chimeIndicator_config_enable = -1;

typedef noltDevSDK_special_switch_enable SwitchRecord;

namespace {
struct SwitchItem {
    SpecialWatch watch;
    int platform_type;     /* the platform's code of the switch */
    const char *entry_log; /* written on every report */
};
} // namespace

/* The enable value of one switch type, kept in one int; the switches log no change line. */
#define SWITCH_WATCH(switch_type, cache)                                                                     \
    SPECIAL_INT_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, switch_type, SwitchRecord, enable, cache, NULL)

static const SwitchItem kFlow = {SWITCH_WATCH(NOLTDEVSDK_SPECIAL_SWITCH_TYPE_FLOW_COUNT, flow_config_enable),
                                 15, "SpecialReport Flow switchenable\n"};
static const SwitchItem kLingerAlarm = {
    SWITCH_WATCH(NOLTDEVSDK_SPECIAL_SWITCH_TYPE_LINGER_ALARM, g_lingerAlarm_config_enable), 613,
    "SpecialReport LingerAlarm switchenable\n"};
static const SwitchItem kFaceRecg = {
    SWITCH_WATCH(NOLTDEVSDK_SPECIAL_SWITCH_TYPE_FACE_RECOGNITION, g_faceRecg_config_enable), 614,
    "SpecialReport FaceRecg switchenable\n"};
static const SwitchItem kDistortion = {
    SWITCH_WATCH(NOLTDEVSDK_SPECIAL_SWITCH_TYPE_DISTORTION_CORRECTION, g_distortion_config_enable), 617,
    "SpecialReport Distortion switchenable\n"};
static const SwitchItem kChimeIndicator = {
    SWITCH_WATCH(NOLTDEVSDK_SPECIAL_SWITCH_TYPE_CHIME_INDICATOR_LIGHT, g_chimeIndicator_config_enable), 611,
    "SpecialReport ChimeIndicator switchenable\n"};

static bool SwitchBody(CMarkupSTL *doc, const void *ctx, int *) {
    const SwitchItem *item = static_cast<const SwitchItem *>(ctx);
    doc->AddElem("Params");
    doc->IntoElem();
    doc->AddElem("Switch");
    doc->SetAttrib("Channel", 0);
    doc->SetAttrib("Enable", *static_cast<const int *>(item->watch.cache));
    doc->SetAttrib("Type", item->platform_type);
    return true;
}

/* Sends the cached enable value; forced and change reports are the same message. */
static int ReportSwitch(const SwitchItem &item) {
    noltdev_debug(LOG_DEBUG, "%s", item.entry_log);
    if (GetSpecialCallback()->get_runtime_info == NULL) {
        return -1;
    }
    return SpecialStatusReport(kPu2CenPltReportDevSwitchEnableReq, SwitchBody, &item);
}

SPECIAL_STATUS_TRIO(SwitchRecord, SpecialSwitchEnableFlowIsChanged, SpecialReportSwitchEnableFlow,
                    SpecialSwitchEnableFlowReset, kFlow, ReportSwitch)

SPECIAL_STATUS_TRIO(SwitchRecord, SpecialSwitchEnableLingerAlarmIsChanged,
                    SpecialReportSwitchEnableLingerAlarm, SpecialSwitchEnableLingerAlarmReset, kLingerAlarm,
                    ReportSwitch)

SPECIAL_STATUS_TRIO(SwitchRecord, SpecialSwitchEnableFaceRecgIsChanged, SpecialReportSwitchEnableFaceRecg,
                    SpecialSwitchEnableFaceRecgReset, kFaceRecg, ReportSwitch)

SPECIAL_STATUS_TRIO(SwitchRecord, SpecialSwitchEnableDistortionIsChanged, SpecialReportSwitchEnableDistortion,
                    SpecialSwitchEnableDistortionReset, kDistortion, ReportSwitch)

SPECIAL_STATUS_TRIO(SwitchRecord, SpecialSwitchEnableChimeIndicatorIsChanged,
                    SpecialReportSwitchEnableChimeIndicator, SpecialSwitchEnableChimeIndicatorReset,
                    kChimeIndicator, ReportSwitch)
