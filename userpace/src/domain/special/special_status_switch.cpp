/* The five feature-switch statuses: the enable value the application holds for each
 * switch, reported with the platform's switch code. */
#include <stddef.h>

#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "special.h"
#include "special_platform_keys.h"
#include "special_status.h"
#include "special_status_detect.h"
#include "special_status_report.h"

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

/* Per switch: the enable value last seen (-1 until seen) and the item over it. */
#define SPECIAL_SWITCH_ITEM(code, Name, type, fail_log)                                                      \
    static int g_switch_##Name##_enable = -1;                                                                \
    static const SwitchItem kSwitch##Name = {SWITCH_WATCH(type, g_switch_##Name##_enable), code,             \
                                             "SpecialReport " #Name " switchenable\n"};
SPECIAL_SWITCHES(SPECIAL_SWITCH_ITEM)
#undef SPECIAL_SWITCH_ITEM

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

/* The trio of each switch: SpecialSwitchEnable<Name>IsChanged, SpecialReportSwitchEnable<Name>,
 * SpecialSwitchEnable<Name>Reset. */
#define SPECIAL_SWITCH_TRIO(code, Name, type, fail_log)                                                      \
    SPECIAL_STATUS_TRIO(SwitchRecord, SpecialSwitchEnable##Name##IsChanged, SpecialReportSwitchEnable##Name, \
                        SpecialSwitchEnable##Name##Reset, kSwitch##Name, ReportSwitch)
SPECIAL_SWITCHES(SPECIAL_SWITCH_TRIO)
#undef SPECIAL_SWITCH_TRIO
