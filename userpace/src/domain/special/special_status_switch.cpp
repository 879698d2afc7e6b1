/* The five feature-switch statuses: the enable value the application holds for each
 * switch, reported with the platform's switch code. */
#include <stddef.h>

#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "special.h"
#include "special_platform_keys.h"
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
#define SPECIAL_SWITCH_ITEM(code, Name, type, fail_log)                                                      \
    static int g_switch_##Name##_enable = -1;                                                                \
    static const SpecialStatusItem kSwitch##Name = {                                                         \
        SPECIAL_INT_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, type, SwitchRecord, enable,               \
                          g_switch_##Name##_enable, NULL),                                                   \
        kPu2CenPltReportDevSwitchEnableReq,                                                                  \
        SwitchBody,                                                                                          \
        kSpecialReportUsual | kSpecialReportNeedsApp,                                                        \
        "SpecialReport " #Name " switchenable\n",                                                            \
        NULL,                                                                                                \
        code};
SPECIAL_SWITCHES(SPECIAL_SWITCH_ITEM)
#undef SPECIAL_SWITCH_ITEM

/* The trio of each switch: SpecialSwitchEnable<Name>IsChanged, SpecialReportSwitchEnable<Name>,
 * SpecialSwitchEnable<Name>Reset. */
#define SPECIAL_SWITCH_TRIO(code, Name, type, fail_log)                                                      \
    SPECIAL_DESCRIBED_TRIO(SwitchRecord, SpecialSwitchEnable##Name##IsChanged,                               \
                           SpecialReportSwitchEnable##Name, SpecialSwitchEnable##Name##Reset, kSwitch##Name, \
                           NULL, kSpecialCommonHooks)
SPECIAL_SWITCHES(SPECIAL_SWITCH_TRIO)
#undef SPECIAL_SWITCH_TRIO
