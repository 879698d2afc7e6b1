/* Platform commands that set a feature switch and the people-flow counting geometry. */
#include <stdlib.h>
#include <string.h>

#include "app/special_app.h"
#include "bus/special_bus.h"
#include "bus/special_platform_keys.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "special_handler_util.h"
#include "special_handlers.h"

/* The platform numbers its switches; the application sees the module's own enum. */
static const SpecialSwitch kSwitchTypes[] = {kSpecialSwitchFlow, kSpecialSwitchChimeIndicator,
                                             kSpecialSwitchLingerAlarm, kSpecialSwitchFaceRecg,
                                             kSpecialSwitchDistortion};

static bool SwitchTypeFromPlatform(int platform, int *type) {
    for (size_t i = 0; i < sizeof kSwitchTypes / sizeof kSwitchTypes[0]; ++i) {
        if (kSwitchTypes[i].code == platform) {
            *type = kSwitchTypes[i].type;
            return true;
        }
    }
    return false;
}

int SpecialSetSwitchEnableReq(CMarkupSTL *req, CMarkupSTL *rsp) {
    (void)rsp; /* the application's refusal goes back to the frame, not into the answer */
    if (!SpecialHandlerCanDeliver("SpecialSetSwitchEnableReq\n")) {
        return -1;
    }
    noltDevSDK_special_switch_enable record;
    memset(&record, 0, sizeof record);
    /* an unknown switch leaves the whole record zero and is still delivered */
    if (req->FindElem("Switch", true) &&
        SwitchTypeFromPlatform(SpecialAttribInt(req, "Type"), &record.type)) {
        record.enable = SpecialAttribInt(req, "Enable");
        record.channel = SpecialAttribInt(req, "Channel");
    }
    return SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE, &record, sizeof record, NULL);
}

/* Reads the four coordinates of a line element into x1, y1, x2, y2. */
static void ReadLine(CMarkupSTL *req, const char *name, float *x1, float *y1, float *x2, float *y2) {
    if (!req->FindElem(name, true)) {
        return;
    }
    *x1 = static_cast<float>(atof(req->GetAttrib("X1").c_str()));
    *y1 = static_cast<float>(atof(req->GetAttrib("Y1").c_str()));
    *x2 = static_cast<float>(atof(req->GetAttrib("X2").c_str()));
    *y2 = static_cast<float>(atof(req->GetAttrib("Y2").c_str()));
}

int SetFlowCountInfoReq(CMarkupSTL *req, CMarkupSTL *rsp) {
    if (!SpecialHandlerCanDeliver("SET FLOW COUNT INFO REQ\n")) {
        special_set_result(rsp, SPECIAL_RESULT_APP_FAIL);
        return NOLTDEVSDK_SPECIAL_CODE_NOT_INITED;
    }
    /* value-initialised: every field, the float line ends included, starts at zero */
    noltDevSDK_special_flow_counting_cfg record = noltDevSDK_special_flow_counting_cfg();

    SpecialFindInt(req, "Position", true, &record.angle_vectical);
    ReadLine(req, "Line", &record.cross_line_x1, &record.cross_line_y1, &record.cross_line_x2,
             &record.cross_line_y2);
    ReadLine(req, "Direction", &record.vector_line_x1, &record.vector_line_y1, &record.vector_line_x2,
             &record.vector_line_y2);
    int minutes = 0;
    if (SpecialFindInt(req, "Interval", true, &minutes)) {
        /* minutes on the wire, seconds in the record; wraps like the target's int
         * instead of overflowing */
        record.interval = static_cast<int>(static_cast<unsigned int>(minutes) * 60u);
    }

    int rc = SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_SET_FLOW_COUNTING_CFG, &record, sizeof record, NULL);
    if (rc != 0) {
        noltdev_debug(LOG_ERROR, "on_recv_msg: set_flow_count error\n");
        special_set_result(rsp, SPECIAL_RESULT_APP_FAIL);
    } else {
        noltdev_debug(LOG_ERROR, "on_recv_msg: set_flow_count success\n");
    }
    SpecialForceReport(NOLTDEVSDK_ReportFlowCountConfig);
    return rc;
}
