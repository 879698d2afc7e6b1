/* The domain inside the microkernel: loading the extension with the command table's
 * redirect keys, the kernel's start, stop and event callbacks, and the router of incoming
 * messages over the command table. */
#include <stddef.h>
#include <string.h>

#include "app/special_app.h"
#include "app/special_enum.h"
#include "bus/special_bus.h"
#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_Common_Module_Def.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_def.h"
#include "special_commands.h"
#include "special_extern.h"

int special_extern_init(void) {
    noltdev_debug(LOG_DEBUG, "special_extern_init enter\n");
    noltdev_sdk_kernel_extend ext;
    memset(&ext, 0, sizeof(ext));
    ext.domain_id = SPECIAL_DOMAIN_ID;
    ext.noltdev_sdk_kernel_extend_start = special_extend_start_cb;
    ext.noltdev_sdk_kernel_extend_stop = special_extend_stop_cb;
    ext.noltdev_sdk_kernel_extend_data_route = special_extend_data_route_cb;
    ext.noltdev_sdk_kernel_extend_event = special_extend_event_cb;
    ext.pUser = NULL;
    strncpy(ext.extend_module_name, "special", sizeof(ext.extend_module_name));
    strncpy(ext.extend_module_version, "V2.0.0", sizeof(ext.extend_module_version));
    int rc = noltdev_sdk_kernel_extend_load(&ext);
    if (rc != 0) {
        noltdev_debug(LOG_ERROR, "microkernel load special doamin error\n");
        return rc;
    }
    SpecialCommandRegisterRedirects();
    noltdev_timer_init();
    return 0;
}

/* The kernel offers no unload: the domain stays loaded. */
int special_extern_fini(void) {
    return 0;
}

void special_extend_start_cb(NOLTDEV_SDK_PTR pUser) {
    (void)pUser;
    noltdev_debug(LOG_DEBUG, "special_extend_start_cb\n");
}

void special_extend_stop_cb(NOLTDEV_SDK_PTR pUser) {
    (void)pUser;
    noltdev_debug(LOG_DEBUG, "special_extend_stop_cb\n");
}

void special_extend_event_cb(noltdev_sdk_kernel_event *event, NOLTDEV_SDK_PTR pUser) {
    (void)pUser;
    if (event == NULL) {
        return;
    }
    /* on every (re)connection the platform is given these items afresh */
    /* the kernel is C: its event type is read as the int it holds */
    const int type = static_cast<int>(SpecialEnumValue(event->event_type));
    switch (type) {
    case sdk_kernel_event_online:
        noltdev_debug(LOG_DEBUG, "special_extend_data_route_cb %d\n", type);
        noltDevSDK_report_set_force_report(NOLTDEVSDK_ReportFlowCountConfig);
        noltDevSDK_report_set_force_report(NOLTDEVSDK_ReportTrusteeshipConnect);
        noltDevSDK_report_set_force_report(NOLTDEVSDK_ReportVoddnsMappedPort);
        break;
    case sdk_kernel_event_reconnect_success:
        noltdev_debug(LOG_DEBUG, "special_extend_data_route_cb %d\n", type);
        noltDevSDK_report_set_force_report(NOLTDEVSDK_ReportVoddnsMappedPort);
        break;
    default:
        break;
    }
}

/* A command outside the table goes to the application as it came; the application
 * answers it, if at all, with the sequence number it is given here. */
static void SpecialPassRaw(const noltdev_sdk_kernel_submsg *msg) {
    noltDevSDK_special_trans_cmd_msg trans;
    memset(&trans, 0, sizeof(trans));
    trans.content = static_cast<char *>(msg->buf);
    trans.content_len = static_cast<int>(msg->buf_len);
    trans.cmd_id = static_cast<unsigned int>(msg->msg_command_id);
    trans.msg_type = 0;
    trans.msg_seq = msg->msg_seq;
    if (!SpecialAppHasRecvMsg(NULL)) {
        return;
    }
    const int rc = SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_TRANS_CMD_MSG, &trans, sizeof trans, NULL);
    if (rc != 0) {
        noltdev_debug(LOG_ERROR, "result_code %d\n", rc);
    }
}

void special_extend_data_route_cb(noltdev_sdk_kernel_submsg *msg, NOLTDEV_SDK_PTR pUser) {
    (void)pUser;
    if (msg == NULL) {
        return;
    }
    noltdev_debug(LOG_ERROR, "R:%x\n", static_cast<unsigned int>(msg->msg_command_id));
    if (noltdev_get_sleep_status() != 0) {
        noltdev_debug(LOG_DEBUG, "preview: device sleep!\n");
        return;
    }
    const special_command *command = SpecialCommandFind(msg->msg_command_id);
    if (command == NULL) {
        SpecialPassRaw(msg);
    } else if (command->handler != NULL) {
        SpecialFrameRun(msg->buf, command->rsp_cmd, command->form, SPECIAL_CMD_VERSION, msg->msg_seq,
                        command->handler, NULL);
    } else if (command->raw_handler != NULL) {
        command->raw_handler(msg->buf, static_cast<int>(msg->buf_len));
    } else {
        noltdev_debug(LOG_ERROR, "special recv ignore msg%d\n", msg->msg_command_id);
    }
}
