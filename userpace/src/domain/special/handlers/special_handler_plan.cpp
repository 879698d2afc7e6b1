/* The work-mode plan command: a read-modify-write of the application's weekly plan. What
 * the request carries (enable flag, grid of days and segments) replaces the current
 * plan's values; the channel always comes from the request. */
#include <stdlib.h>
#include <string.h>

#include <string>

#include "app/special_app.h"
#include "app/special_capacity.h"
#include "bus/special_bus.h"
#include "bus/special_platform_keys.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_handler_util.h"
#include "special_handlers.h"

/* Fills one segment from a "Plan" element (the main element). */
static void ReadSegment(const CMarkupSTL *req, noltDevSDK_special_work_mode_time_segment *segment) {
    segment->begin = noltdev_ParseTimeHHMM(req->GetAttrib("B").c_str());
    segment->end = noltdev_ParseTimeHHMM(req->GetAttrib("E").c_str());
    /* "mode:<n>"; any other text is mode 0. Read as the device's scanf reads "%d": a
     * number too large for an int saturates. */
    static const char kModePrefix[] = "mode:";
    std::string event_arg = req->GetAttrib("EventArg");
    segment->mode = event_arg.compare(0, sizeof kModePrefix - 1, kModePrefix) == 0
                        ? SpecialAtoi(event_arg.c_str() + sizeof kModePrefix - 1)
                        : 0;
}

/* Reads the "Date" elements that follow the main element into the grid; true when the
 * request carried at least one, valid or not. */
static bool ReadWeek(CMarkupSTL *req, noltDevSDK_special_work_mode_plan *week) {
    int dates = 0;
    while (dates < kSpecialPlanDays && req->FindElem("Date", false)) {
        ++dates;
        /* as an unsigned byte, anything below '0' (an empty text too) is large and skipped */
        unsigned char day = static_cast<unsigned char>(req->GetAttrib("Weekday").c_str()[0] - '0');
        if (day >= kSpecialPlanDays) {
            continue;
        }
        req->IntoElem();
        for (int segment = 0; segment < kSpecialPlanSegments && req->FindElem("Plan", false); ++segment) {
            ReadSegment(req, &week->time[day][segment]);
        }
        req->OutOfElem();
    }
    return dates > 0;
}

static int PlanFailed(CMarkupSTL *rsp, const char *log) {
    noltdev_debug(LOG_ERROR, "%s", log);
    special_set_result(rsp, SPECIAL_RESULT_PLAN_FAIL);
    return -1;
}

int SpecialSetDevPlanReq(CMarkupSTL *req, CMarkupSTL *rsp) {
    noltdev_debug(LOG_DEBUG, "SpecialSetDevPlanReq\n");
    noltDevSDK_special_plan parsed;
    noltDevSDK_special_plan current;
    memset(&parsed, 0, sizeof parsed);
    memset(&current, 0, sizeof current);

    int enable = 0;
    bool has_enable = SpecialFindInt(req, "Enable", true, &enable);
    parsed.enable_plan = enable != 0 ? 1 : 0;
    if (!req->FindElem("Actor", true)) {
        return PlanFailed(rsp, "without actor element.\n");
    }
    parsed.channel = SpecialAttribInt(req, "Channel");
    if (SpecialAttribInt(req, "PlanType") != SPECIAL_PLAN_TYPE_WORK_MODE) {
        return PlanFailed(rsp, "unspport plan type \n");
    }
    current.type = NOLTDEVSDK_SPECIAL_WORK_MODE_PLAN;
    /* the days follow "Actor" */
    bool has_week = ReadWeek(req, &parsed.special_work_mode_plan);

    void *asked = &current;
    if (SpecialAppRuntimeInfo(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN, &asked, sizeof current,
                              SPECIAL_APP_NO_CALLBACK) != 0) {
        return PlanFailed(rsp, "Special SetDevplan get runtimeinfo error\n");
    }
    if (has_enable) {
        current.enable_plan = parsed.enable_plan;
    }
    if (has_week) {
        /* the whole grid: days and segments the request left out become empty */
        current.special_work_mode_plan = parsed.special_work_mode_plan;
    }
    current.channel = parsed.channel;

    int rc = SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_PLAN, &current, sizeof current,
                               SPECIAL_APP_NO_CALLBACK);
    if (rc != 0) {
        special_set_result(rsp, SPECIAL_RESULT_REFUSED);
    }
    SpecialForceReport(NOLTDEVSDK_ReportBatteryWorkModePlan);
    return rc;
}
