/* Module lifecycle (init, fini) and the operations the application starts. */
#include <string.h>

#include "app/special_app.h"
#include "app/special_enum.h"
#include "app/special_layout.h"
#include "bus/special_bus.h"
#include "handlers/special_requests.h"
#include "kernel/special_extern.h"
#include "log_ctrl.h"
#include "noltDevSDK_report_status.h"
#include "shadow/special_shadow.h"
#include "status/special_status_registry.h"

int noltDevSDK_special_init(noltDevSDK_special_init_info *info) {
    if (SpecialAppInited()) {
        return NOLTDEVSDK_SPECIAL_CODE_FAIL;
    }
    SpecialAppSetInited(true);
    noltdev_debug(LOG_DEBUG, "noltDevSDK_special_init enter\n");
    if (info == NULL) {
        /* the flag stays 1: every later init fails until fini */
        noltdev_debug(LOG_ERROR, "noltDevSDK_special_init param is error\n");
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    /* callbacks first, so the kernel's threads never see them NULL after init */
    SpecialAppStore(&info->cb);
    noltDevSDK_report_status_init();

    SpecialStatusRegisterAll();
    /* started twice on purpose; only the second start's result is looked at */
    (void)Special_Shadow_InitService(info->resetReportAll);
    if (Special_Shadow_InitService(info->resetReportAll) != 0) {
        noltdev_debug(LOG_DEBUG, "Special_Shadow_InitService  err\n");
    }

    int result = 0;
    if (special_extern_init() != 0) {
        /* the items, shadow service and callbacks stay; a later init sets them again */
        SpecialAppSetInited(false);
        result = NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL;
    }
    noltdev_debug(LOG_DEBUG, "noltDevSDK_special_init over\n");
    return result;
}

int noltDevSDK_special_fini(void) {
    if (!SpecialAppInited()) {
        return 0;
    }
    SpecialAppSetInited(false);
    SpecialStatusUnregisterAll();
    noltDevSDK_report_status_fini();
    Special_Shadow_FnitService();
    special_extern_fini();
    return 0;
}

/* ---- operations the application starts ------------------------------------------- */

int noltDevSDK_special_send_msg(noltDevSDK_special_msg *msg) {
    if (!SpecialAppInited()) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_INITED;
    }
    /* a null request has no type to dispatch on */
    if (msg == NULL) {
        noltdev_debug(LOG_ERROR, "noltDevSDK_special_send_msg: NULL msg\n");
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    int ret;
    /* a C application may put any int in msg_type: it is switched on as that int */
    switch (SpecialEnumValue(msg->msg_type)) {
    case NOLTDEVSDK_SPECIAL_UNBIND_USER:
        ret = SpecialUnbindUserReq();
        break;
    case NOLTDEVSDK_SPECIAL_SEND_VERIFICATION_CODE:
        ret = SpecialSendVerificationCodeReq(static_cast<char *>(msg->msg_struct_ptr));
        break;
    case NOLTDEVSDK_SPECIAL_QUERY_VODDNS_MAPPED_PORT:
        ret = SpecialQueryVoddnsMappedPortReq(static_cast<char *>(msg->msg_struct_ptr));
        break;
    case NOLTDEVSDK_SPECIAL_TRANS_4G_FLOW_INFO:
        ret = Special4GFlowReportReq(msg->msg_struct_ptr);
        break;
    default:
        return NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    }
    /* the request's own code is not passed on */
    return ret == 0 ? 0 : NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR;
}

int noltDevSDK_special_send_msg_to_platform(noltDevSDK_special_trans_cmd_msg *msg) {
    if (msg == NULL) {
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    /* the kernel copies content_len bytes: a body it cannot read is refused here */
    if (msg->content_len < 0 || (msg->content == NULL && msg->content_len != 0)) {
        noltdev_debug(LOG_ERROR, "send_msg_to_platform: no body of %d bytes\n", msg->content_len);
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    return SpecialPublish(msg->content, static_cast<size_t>(msg->content_len), static_cast<int>(msg->cmd_id),
                          SPECIAL_CMD_VERSION, msg->msg_type, msg->msg_seq);
}

int noltDevSDK_special_post_event(noltDevSDK_special_post_event_info_S *info) {
    (void)info; /* event posting is not supported */
    return -1;
}

int noltDevSDK_special_report_trusteeship(void) {
    if (!SpecialAppInited()) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_INITED;
    }
    return ReportTrusteeship_Immediately();
}

int noltDevSDK_special_report_flow_counting(noltDevSDK_special_flow_counting_seg_count *seg_info) {
    if (!SpecialAppInited()) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_INITED;
    }
    return ReportFlowCountReq(seg_info);
}
