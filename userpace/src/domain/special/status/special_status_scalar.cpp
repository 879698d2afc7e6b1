/* The scalar setting statuses: the key-value family (ICR, linkage mode, battery work
 * mode, network work mode, one-click mute), battery work status, ring type, speaker
 * configuration, and the flow-counting configuration reported only on demand. */
#include <stddef.h>
#include <stdio.h>
#include <string.h>

#include "bus/special_bus.h"
#include "bus/special_platform_keys.h"
#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "special_status.h"
#include "special_status_item.h"

static int g_key_value[1] = {-1};
static int linkage_mode_status = -1;
static noltDevSDK_special_battery_work_mode g_battery_work_mode = {-1};
static noltDevSDK_special_net_work_mode g_net_work_mode = {-1};
static noltDevSDK_special_one_click_mute g_one_click_mute = {-1};
/* starts at {-1, -1, 0} but resets to zeros: an all-zero status is reported at the first
 * poll only, and {-1, -1, 0} is not reported at the first poll */
static noltDevSDK_special_battery_workstatus g_battery_workstatus = {-1, -1, 0};
/* starts and resets at zero, so an all-zero ring type is reported only when forced */
static noltDevSDK_special_ring_type g_ring_type = {0, 0, 0};
static noltDevSDK_special_speaker_config g_speaker_config = {-1, -1, -1, -1};

/* ---- the key-value family: one int sent as "Status" Type/Value ---------------------- */

/* One key-value item: its int watch, sent as "Status" with its key. */
#define KEY_VALUE_ITEM(runtime_type, Record, field, cache, change_log, key)                                  \
    {                                                                                                        \
        SPECIAL_INT_WATCH(runtime_type, 0, Record, field, cache, change_log), kPu2CenPltReportKeyValueReq,   \
            SpecialStatusKeyValueBody, kSpecialReportUsual, NULL, key, 0                                     \
    }

static const SpecialStatusItem kICR =
    KEY_VALUE_ITEM(NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE, noltDevSDK_special_key_value, value, g_key_value[0],
                   "ICR CHANGED\n", "ICR");
static const SpecialStatusItem kLinkage =
    KEY_VALUE_ITEM(NOLTDEVSDK_SPECIAL_ON_GET_LINKAGE_MODE_STATUS, noltDevSDK_linkage_mode_status, enable,
                   linkage_mode_status, "linkage_mode_status is changed\n", "Route_LinkageStatus");
static const SpecialStatusItem kWorkMode =
    KEY_VALUE_ITEM(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE, noltDevSDK_special_battery_work_mode, mode,
                   g_battery_work_mode.mode, "work mode is changed\n", SPECIAL_KEY_BATTERY_WORK_MODE);
static const SpecialStatusItem kNetWorkMode =
    KEY_VALUE_ITEM(NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE, noltDevSDK_special_net_work_mode, mode,
                   g_net_work_mode.mode, "net work mode is changed\n", SPECIAL_KEY_NETWORK_MODE);
static const SpecialStatusItem kOneClickMute = KEY_VALUE_ITEM(
    NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE, noltDevSDK_special_one_click_mute, enable,
    g_one_click_mute.enable, "one click mute is changed\n", SPECIAL_KEY_ONE_CLICK_MUTE);

int SpecialICRIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_key_value>(kICR.watch);
}

int SpecialReportKeyValue(int) {
    return SpecialStatusReportItem(kICR);
}

int SpecialKeyValueReset(void) {
    return SpecialStatusReset(kICR.watch);
}

/* only the enable value is watched; the time and serials the application fills are not */
int SpecialLinkageModeStatusIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_linkage_mode_status>(kLinkage.watch);
}

int SpecialReportLinkageModeStatus(int) {
    return SpecialStatusReportItem(kLinkage);
}

int SpecialLinkageModeStatusReset(void) {
    return SpecialStatusReset(kLinkage.watch);
}

int SpecialBatteryWorkModeIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_battery_work_mode>(kWorkMode.watch);
}

int SpecialReportBatteryWorkMode(int) {
    return SpecialStatusReportItem(kWorkMode);
}

int SpecialBatteryWorkModeReset(void) {
    return SpecialStatusReset(kWorkMode.watch);
}

int SpecialNetWorkModeIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_net_work_mode>(kNetWorkMode.watch);
}

int SpecialReportNetWorkMode(int) {
    return SpecialStatusReportItem(kNetWorkMode);
}

int SpecialNetWorkModeReset(void) {
    return SpecialStatusReset(kNetWorkMode.watch);
}

int SpecialOneClickMuteIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_one_click_mute>(kOneClickMute.watch);
}

int SpecialReportOneClickMute(int) {
    return SpecialStatusReportItem(kOneClickMute);
}

int SpecialOneClickMuteReset(void) {
    return SpecialStatusReset(kOneClickMute.watch);
}

/* ---- battery work status: a hand-made JSON text ------------------------------------- */

static bool WorkStatusBody(CMarkupSTL *doc, const void *, int *) {
    char text[256];
    snprintf(text, sizeof text, "{\"KeepAlive\":%d,\"WorkTime\":%d,\"SpecialBusiness\":%d}",
             g_battery_workstatus.keep_alive, g_battery_workstatus.work_time,
             g_battery_workstatus.special_business);
    SpecialStatusAddStatus(doc, "Battery_WorkStatus", text);
    return true;
}

static const SpecialStatusItem kWorkStatus = {
    SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS, g_battery_workstatus, 0, LOG_ERROR,
                         "work status is changed\n"),
    kPu2CenPltReportKeyValueReq,
    WorkStatusBody,
    kSpecialReportUsual,
    NULL,
    NULL,
    0};

int SpecialBatteryWorkStatusIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_battery_workstatus>(kWorkStatus.watch);
}

int SpecialReportBateryWorkStatus(int) {
    return SpecialStatusReportItem(kWorkStatus);
}

int SpecialBateryWorkStatusReset(void) {
    return SpecialStatusReset(kWorkStatus.watch);
}

/* ---- ring type: compact JSON ------------------------------------------------------------ */

static bool RingTypeBody(CMarkupSTL *doc, const void *, int *result);
static const SpecialStatusItem kRingType = {SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND,
                                                                 g_ring_type, 0, LOG_ERROR,
                                                                 "ring type changed\n"),
                                            kPu2CenPltReportKeyValueReq,
                                            RingTypeBody,
                                            kSpecialReportUsual,
                                            NULL,
                                            NULL,
                                            0};

static bool RingTypeBody(CMarkupSTL *doc, const void *, int *result) {
    const SpecialJsonMember members[] = {{"Type", NULL, g_ring_type.type},
                                         {"CustomRingIndex", NULL, g_ring_type.index},
                                         {"Volume", NULL, g_ring_type.vol}};
    SpecialStatusAddStatus(doc, SPECIAL_KEY_RING_TYPE, NULL);
    return SpecialStatusJsonValue(doc, members, SPECIAL_COUNT_OF(members), false,
                                  "[SpecialReportRingType] create json failed.\n",
                                  "[SpecialReportRingType ]convert json to string faild\n", result);
}

int SpecialRingTypeIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_ring_type>(kRingType.watch);
}

int SpecialReportRingType(int) {
    return SpecialStatusReportItem(kRingType);
}

int SpecialRingTypeReset(void) {
    return SpecialStatusReset(kRingType.watch);
}

/* ---- speaker configuration: each field watched and logged by itself ---------------------- */

#define SPEAKER_WATCH(field, change_log)                                                                     \
    SPECIAL_INT_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG, 0,                                   \
                      noltDevSDK_special_speaker_config, field, g_speaker_config.field, change_log)

static const SpecialWatch kSpeakerFields[] = {
    SPEAKER_WATCH(ring_enable, "ring_enable is changed\n"),
    SPEAKER_WATCH(ring_index, "ring_index is changed\n"),
    SPEAKER_WATCH(intel_enable, "intel_enable is changed\n"),
    /* the platform's log has no line of its own for the index: it shares the enable's */
    SPEAKER_WATCH(intel_index, "intel_enable is changed\n"),
};

static int SpeakerConfigDetect(const SpecialStatusItem &item) {
    noltDevSDK_special_speaker_config fresh;
    int verdict;
    if (!SpecialStatusAsk(item.watch.runtime_type, &fresh, &verdict)) {
        return verdict;
    }
    int changed = 0;
    for (size_t i = 0; i < SPECIAL_COUNT_OF(kSpeakerFields); i++) {
        changed |= SpecialStatusKeep(kSpeakerFields[i], &fresh);
    }
    return changed;
}

static bool SpeakerConfigBody(CMarkupSTL *doc, const void *, int *result) {
    const SpecialJsonMember members[] = {{"RingSwitch", NULL, g_speaker_config.ring_enable},
                                         {"RingIndex", NULL, g_speaker_config.ring_index},
                                         {"IntelligentSwitch", NULL, g_speaker_config.intel_enable},
                                         {"IntelligentIndex", NULL, g_speaker_config.intel_index}};
    SpecialStatusAddStatus(doc, SPECIAL_KEY_SPEAKER_CONFIG, NULL);
    /* failures here are silent, and the report says 0 whatever happens */
    return SpecialStatusJsonValue(doc, members, SPECIAL_COUNT_OF(members), true, NULL, NULL, result);
}

/* Always 0, whatever the send gives. */
static int SpeakerConfigReport(const SpecialStatusItem &item) {
    SpecialStatusReportItem(item);
    return 0;
}

/* the whole record is the four ints, all -1 when not seen */
static_assert(sizeof(noltDevSDK_special_speaker_config) == SPECIAL_COUNT_OF(kSpeakerFields) * sizeof(int),
              "the speaker configuration must be its four watched ints");
static const SpecialStatusItem kSpeaker = {
    SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG, g_speaker_config, 4, LOG_ERROR,
                         NULL),
    kPu2CenPltReportKeyValueReq,
    SpeakerConfigBody,
    kSpecialReportUsual,
    NULL,
    NULL,
    0};

int SpecialSpeakerConfigIsChanged(void) {
    return SpeakerConfigDetect(kSpeaker);
}

int SpecialReportSpeakerConfig(int) {
    return SpeakerConfigReport(kSpeaker);
}

int SpecialSpeakerConfigReset(void) {
    return SpecialStatusReset(kSpeaker.watch);
}

/* ---- flow-counting configuration: read afresh, only when forced ---------------------- */

/* An element whose "X1", "Y1", "X2", "Y2" attributes are the two end points of a line. */
static void AddLine(CMarkupSTL *doc, const char *name, const float (&points)[4]) {
    static const char *const kKeys[4] = {"X1", "Y1", "X2", "Y2"};
    char text[64];
    doc->AddElem(name);
    for (int i = 0; i < 4; i++) {
        doc->SetAttrib(kKeys[i], FloatToChar(points[i], text));
    }
}

static bool FlowCountConfigBody(CMarkupSTL *doc, const void *ctx, int *) {
    const noltDevSDK_special_flow_counting_cfg *cfg =
        static_cast<const noltDevSDK_special_flow_counting_cfg *>(ctx);
    const float cross[4] = {cfg->cross_line_x1, cfg->cross_line_y1, cfg->cross_line_x2, cfg->cross_line_y2};
    const float vector[4] = {cfg->vector_line_x1, cfg->vector_line_y1, cfg->vector_line_x2,
                             cfg->vector_line_y2};
    doc->AddElem("Type", "FlowCountConfig");
    doc->AddElem("Params");
    doc->IntoElem();
    doc->AddElem("Position", cfg->angle_vectical);
    AddLine(doc, "Line", cross);
    AddLine(doc, "Direction", vector);
    return true;
}

/* Never a change: the item goes out only when a report is forced. */
static int FlowCountConfigDetect(const SpecialStatusItem &) {
    return 0;
}

/* The configuration is read afresh for each report and not kept. */
static int FlowCountConfigReport(const SpecialStatusItem &item) {
    noltDevSDK_special_flow_counting_cfg cfg;
    int verdict;
    if (!SpecialStatusAsk(item.watch.runtime_type, &cfg, &verdict)) {
        return -1;
    }
    return SpecialStatusReport(item.cmd, item.body, &cfg, item.flags);
}

/* nothing is watched or cached: the watch names only the record asked for */
static const SpecialStatusItem kFlowCount = {
    SPECIAL_ASK_ONLY_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_FLOW_COUNTING_CFG),
    kPu2CenPltReportFlowCountConfigFReq,
    FlowCountConfigBody,
    kSpecialReportUsual,
    NULL,
    NULL,
    0};

int SpecialFlowCountConfigIsChanged(void) {
    return FlowCountConfigDetect(kFlowCount);
}

int SpecialReportFlowCountConfig(int) {
    return FlowCountConfigReport(kFlowCount);
}
