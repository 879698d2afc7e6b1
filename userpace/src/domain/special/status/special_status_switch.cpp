/* The five feature-switch statuses: the enable value the application holds for each
 * switch, reported with the platform's switch code. */
#include <stddef.h>

#include "bus/special_platform_keys.h"
#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "special_status.h"
#include "special_status_item.h"

typedef noltDevSDK_special_switch_enable SwitchRecord;

static bool SwitchBody(CMarkupSTL *doc, const void *ctx, int *) {
    const SpecialStatusItem *item = static_cast<const SpecialStatusItem *>(ctx);
    doc->AddElem("Params");
    doc->IntoElem();
    doc->AddElem("Switch");
    doc->SetAttrib("Channel", 0);
    doc->SetAttrib("Enable", *static_cast<const int *>(item->watch.cache));
    doc->SetAttrib("Type", item->code);
    return true;
}

/* Per switch: the enable value last seen (-1 until seen; the switches log no change line)
 * and the item over it; forced and change reports are the same message, and none is
 * sent without the application's get_runtime_info. */
static int g_switch_enable[5] = {-1, -1, -1, -1, -1};

static const SpecialStatusItem kSwitchItems[] = {
    {SPECIAL_INT_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, kSpecialSwitchFlow.type, SwitchRecord, enable,
                       g_switch_enable[0], NULL),
     kPu2CenPltReportDevSwitchEnableReq, SwitchBody, kSpecialReportUsual | kSpecialReportNeedsApp,
     "SpecialReport Flow switchenable\n", NULL, kSpecialSwitchFlow.code},
    {SPECIAL_INT_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, kSpecialSwitchLingerAlarm.type, SwitchRecord,
                       enable, g_switch_enable[1], NULL),
     kPu2CenPltReportDevSwitchEnableReq, SwitchBody, kSpecialReportUsual | kSpecialReportNeedsApp,
     "SpecialReport LingerAlarm switchenable\n", NULL, kSpecialSwitchLingerAlarm.code},
    {SPECIAL_INT_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, kSpecialSwitchFaceRecg.type, SwitchRecord,
                       enable, g_switch_enable[2], NULL),
     kPu2CenPltReportDevSwitchEnableReq, SwitchBody, kSpecialReportUsual | kSpecialReportNeedsApp,
     "SpecialReport FaceRecg switchenable\n", NULL, kSpecialSwitchFaceRecg.code},
    {SPECIAL_INT_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, kSpecialSwitchChimeIndicator.type,
                       SwitchRecord, enable, g_switch_enable[3], NULL),
     kPu2CenPltReportDevSwitchEnableReq, SwitchBody, kSpecialReportUsual | kSpecialReportNeedsApp,
     "SpecialReport ChimeIndicator switchenable\n", NULL, kSpecialSwitchChimeIndicator.code},
    {SPECIAL_INT_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, kSpecialSwitchDistortion.type, SwitchRecord,
                       enable, g_switch_enable[4], NULL),
     kPu2CenPltReportDevSwitchEnableReq, SwitchBody, kSpecialReportUsual | kSpecialReportNeedsApp,
     "SpecialReport Distortion switchenable\n", NULL, kSpecialSwitchDistortion.code},
};

/* The common trio over one switch's item. */
static int SwitchIsChanged(int index) {
    const SpecialWatch &watch = kSwitchItems[index].watch;
    SwitchRecord record;
    int verdict;
    if (!SpecialStatusAsk(watch.runtime_type, &record, &verdict, watch.selector)) {
        return verdict;
    }
    return SpecialStatusKeep(watch, &record);
}
static int SwitchReport(int index) {
    return SpecialStatusReportItem(kSwitchItems[index]);
}
static int SwitchReset(int index) {
    return SpecialStatusReset(kSwitchItems[index].watch);
}

int SpecialSwitchEnableFlowIsChanged(void) {
    return SwitchIsChanged(0);
}
int SpecialReportSwitchEnableFlow(int) {
    return SwitchReport(0);
}
int SpecialSwitchEnableFlowReset(void) {
    return SwitchReset(0);
}

int SpecialSwitchEnableLingerAlarmIsChanged(void) {
    return SwitchIsChanged(1);
}
int SpecialReportSwitchEnableLingerAlarm(int) {
    return SwitchReport(1);
}
int SpecialSwitchEnableLingerAlarmReset(void) {
    return SwitchReset(1);
}

int SpecialSwitchEnableFaceRecgIsChanged(void) {
    return SwitchIsChanged(2);
}
int SpecialReportSwitchEnableFaceRecg(int) {
    return SwitchReport(2);
}
int SpecialSwitchEnableFaceRecgReset(void) {
    return SwitchReset(2);
}

int SpecialSwitchEnableChimeIndicatorIsChanged(void) {
    return SwitchIsChanged(3);
}
int SpecialReportSwitchEnableChimeIndicator(int) {
    return SwitchReport(3);
}
int SpecialSwitchEnableChimeIndicatorReset(void) {
    return SwitchReset(3);
}

int SpecialSwitchEnableDistortionIsChanged(void) {
    return SwitchIsChanged(4);
}
int SpecialReportSwitchEnableDistortion(int) {
    return SwitchReport(4);
}
int SpecialSwitchEnableDistortionReset(void) {
    return SwitchReset(4);
}
