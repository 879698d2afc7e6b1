/* The two table-valued statuses: the battery work-mode plan (a week of up to five
 * segments a day) and the list of custom voices stored on the device. */
#include <stdio.h>
#include <string.h>

#include "bus/special_platform_keys.h"
#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_status.h"
#include "special_status_item.h"

static noltDevSDK_special_plan g_battery_work_mode_plan;
/* zero-filled at build time (no flash for 9.5 KB) and put in its not-seen state, num -1,
 * as the library loads: see g_custom_voice_load */
static noltDevSDK_special_custom_voice_infos g_custom_voice_infos;

/* ---- work-mode plan -------------------------------------------------------------------- */

static bool PlanBody(CMarkupSTL *doc, const void *, int *);
/* the plan report carries no "DevSerial" */
static const SpecialStatusItem kPlan = {SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN,
                                                             g_battery_work_mode_plan, 3, LOG_DEBUG,
                                                             "special work mode plan IsChanged\n"),
                                        kPu2CenPltReportDevicePlanReq,
                                        PlanBody,
                                        kSpecialReportSequenced,
                                        "start to report Work Mode plan\n",
                                        NULL,
                                        0};

static bool SegmentIsSet(const noltDevSDK_special_work_mode_time_segment &segment) {
    return segment.begin != 0 || segment.end != 0;
}

/* An empty plan (no segment with a time anywhere in the week) is sent with "Force" 1. */
static bool PlanIsEmpty(const noltDevSDK_special_plan &plan) {
    for (int day = 0; day < kSpecialPlanDays; day++) {
        for (int seg = 0; seg < kSpecialPlanSegments; seg++) {
            if (SegmentIsSet(plan.special_work_mode_plan.time[day][seg])) {
                return false;
            }
        }
    }
    return true;
}

static void AddSegment(CMarkupSTL *doc, const noltDevSDK_special_work_mode_time_segment &segment) {
    char begin[8] = "";
    char end[8] = "";
    char arg[256];
    noltdev_MakeTimeString(segment.begin, begin, sizeof begin);
    noltdev_MakeTimeString(segment.end, end, sizeof end);
    snprintf(arg, sizeof arg, "mode:%d", segment.mode);
    doc->AddElem("Plan");
    doc->SetAttrib("B", begin);
    doc->SetAttrib("E", end);
    doc->SetAttrib("EventArg", arg);
}

static bool PlanBody(CMarkupSTL *doc, const void *, int *) {
    const noltDevSDK_special_plan &plan = g_battery_work_mode_plan;
    doc->AddElem("Type", "DevicePlan");
    doc->AddElem("Params");
    doc->IntoElem();
    doc->AddElem("Enable", plan.enable_plan);
    doc->AddElem("Force", PlanIsEmpty(plan) ? 1 : 0);
    /* the actor is constant: the plan's own type and channel are not sent */
    doc->AddElem("Actor", "D");
    doc->SetAttrib("Channel", 0);
    doc->SetAttrib("PlanType", SPECIAL_PLAN_TYPE_WORK_MODE);
    doc->SetAttrib("EventType", 0);
    for (int day = 0; day < kSpecialPlanDays; day++) {
        doc->AddElem("Date");
        doc->SetAttrib("Weekday", day);
        doc->IntoElem();
        for (int seg = 0; seg < kSpecialPlanSegments; seg++) {
            const noltDevSDK_special_work_mode_time_segment &segment =
                plan.special_work_mode_plan.time[day][seg];
            if (SegmentIsSet(segment)) {
                AddSegment(doc, segment);
            }
        }
        doc->OutOfElem();
    }
    return true;
}

int SpecialBatteryWorkModePlanIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_plan>(kPlan.watch);
}

int SpecialReportBatteryWorkModePlan(int) {
    return SpecialStatusReportItem(kPlan);
}

int SpecialBatteryWorkModePlanReset(void) {
    return SpecialStatusReset(kPlan.watch);
}

/* ---- custom voices: a JSON array under the key-value report ----------------------------- */

static bool CustomVoiceBody(CMarkupSTL *doc, const void *, int *result);
static const SpecialStatusItem kCustomVoice = {
    SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS, g_custom_voice_infos, 1, LOG_ERROR,
                         "custom voice status is changed\n"),
    kPu2CenPltReportKeyValueReq,
    CustomVoiceBody,
    kSpecialReportUsual,
    NULL,
    NULL,
    0};

static const SpecialResetAtLoad g_custom_voice_load(kCustomVoice.watch);

static void TidyCustomVoices(noltDevSDK_special_custom_voice_infos *infos) {
    for (int i = 0; i < kSpecialVoices; i++) {
        SPECIAL_TERMINATE(infos->voice_info[i].name);
        SPECIAL_TERMINATE(infos->voice_info[i].url);
    }
}

static bscJSON *CustomVoiceJson(const noltDevSDK_special_custom_voice_info &voice) {
    char index[64], status[64], create_time[64], custom[64];
    snprintf(index, sizeof index, "%d", voice.index);
    snprintf(status, sizeof status, "%d", voice.status);
    snprintf(create_time, sizeof create_time, "%ld", static_cast<long>(voice.create_time));
    snprintf(custom, sizeof custom, "%d", voice.customVoice);
    const SpecialJsonMember members[] = {
        {"index", index, 0},   {"name", voice.name, 0},        {"url", voice.url, 0},
        {"status", status, 0}, {"createtime", create_time, 0}, {"CustomVoice", custom, 0}};
    return SpecialStatusJsonObject(members, SPECIAL_COUNT_OF(members));
}

static bool CustomVoiceBody(CMarkupSTL *doc, const void *, int *result) {
    SpecialStatusAddStatus(doc, "CustomVoice", NULL);
    bscJSON *list = bscJSON_CreateArray();
    if (list == NULL) {
        return SpecialStatusGiveUp(result, "bscJSON create array error\n");
    }
    /* num is the application's; the walk still never leaves the 16 cached entries */
    int count = SpecialStatusBound(g_custom_voice_infos.num, kSpecialVoices);
    for (int i = 0; i < count; i++) {
        bscJSON *obj = CustomVoiceJson(g_custom_voice_infos.voice_info[i]);
        if (obj == NULL) {
            noltdev_debug(LOG_ERROR, "bscJSON create object error\n");
            break;
        }
        bscJSON_AddItemToArray(list, obj);
    }
    SpecialStatusSetJsonValue(doc, list, true);
    return true;
}

int SpecialCustomVoiceIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_custom_voice_infos>(kCustomVoice.watch, TidyCustomVoices);
}

int SpecialReportCustomVoice(int) {
    return SpecialStatusReportItem(kCustomVoice);
}

int SpecialCustomVoiceReset(void) {
    return SpecialStatusReset(kCustomVoice.watch);
}
