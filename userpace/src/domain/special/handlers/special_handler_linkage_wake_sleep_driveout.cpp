/* Linkage mode, wake, delayed sleep and drive-out: small commands that each hand one
 * record to the application. Wake and drive-out carry a JSON object as the whole body. */
#include <string.h>

#include <string>

#include "app/special_app.h"
#include "bscJSON.h"
#include "bus/special_bus.h"
#include "bus/special_json.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_handler_util.h"
#include "special_handlers.h"

int SpecialSetLinkageModeStatusReq(CMarkupSTL *req, CMarkupSTL *rsp) {
    (void)rsp;
    if (!SpecialHandlerCanDeliver("SpecialSetLinkageModeStatusReq\n")) {
        return -1;
    }
    noltDevSDK_linkage_mode_status record;
    memset(&record, 0, sizeof record);
    SpecialFindInt(req, "Enable", true, &record.enable);
    SpecialFindInt(req, "Time", true, &record.time);
    SpecialFindText(req, "DevSerial", true, record.acConnSerial, sizeof record.acConnSerial);
    SpecialFindText(req, "Pwd", true, record.acVerifyCode, sizeof record.acVerifyCode);

    int rc = SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_SET_LINKAGE_MODE_STATUS, &record, sizeof record, NULL);
    if (rc != 0) {
        return rc;
    }
    SpecialForceReport(NOLTDEVSDK_ReportLinkageModeStatus);
    return 0;
}

/* Copies a JSON string into dst, bounded; a missing item or another kind: untouched. */
static void CopyJsonString(const bscJSON *string_item, char *dst, size_t size) {
    if (string_item != NULL && bscJSON_IsString(string_item)) {
        SpecialCopyText(dst, size, string_item->valuestring);
    }
}

/* The integer value of a member, 0 when absent. */
static int JsonInt(const bscJSON *obj, const char *name) {
    const bscJSON *item = bscJSON_GetObjectItem(obj, name);
    return item != NULL ? item->valueint : 0;
}

int SpecialWakeReq(CMarkupSTL *req, CMarkupSTL *rsp) {
    (void)rsp;
    if (!SpecialHandlerCanDeliver("SpecialWakeReq\n")) {
        return -1;
    }
    bscJSON *root = bscJSON_Parse(req->GetDoc().c_str());
    if (root == NULL) {
        return 0;
    }
    noltDevSDK_wake record;
    memset(&record, 0, sizeof record);
    CopyJsonString(bscJSON_GetObjectItem(root, "subserial"), record.subserial, sizeof record.subserial);
    bscJSON_Delete(root);
    return SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_WAKE, &record, sizeof record, NULL);
}

int SetDelaySleepReq(CMarkupSTL *req, CMarkupSTL *rsp) {
    (void)rsp;
    if (!SpecialHandlerCanDeliver("SpecialDelaySleepReq\n")) {
        return -1;
    }
    noltDevSDK_special_delay_sleep_type record;
    memset(&record, 0, sizeof record);
    if (req->FindElem("Info", true)) {
        record.channel = SpecialAttribInt(req, "Channel");
        record.type = SpecialAttribInt(req, "Type");
    }
    return SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP, &record, sizeof record, NULL);
}

/* Delivers a drive-out of the given operType; returns the channel for the answer (0 for
 * an operType that delivers nothing). */
static int DeliverDriveOut(const bscJSON *root, int oper_type) {
    if (oper_type == 1) {
        noltDevSDK_special_prowl_drive_out record;
        memset(&record, 0, sizeof record);
        record.channel = JsonInt(root, "channel");
        SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_PROWL_DRIVE_OUT, &record, sizeof record,
                          SPECIAL_APP_NO_CALLBACK);
        return record.channel;
    }
    if (oper_type == 2) {
        noltDevSDK_special_drive_out_radio_update record;
        memset(&record, 0, sizeof record);
        record.channel = JsonInt(root, "channel");
        const bscJSON *urls = bscJSON_GetObjectItem(root, "videoUrl");
        if (urls != NULL) {
            CopyJsonString(bscJSON_GetArrayItem(urls, 0), record.url, sizeof record.url);
        }
        SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_DRIVE_OUT_RADIO_UPDATE, &record, sizeof record,
                          SPECIAL_APP_NO_CALLBACK);
        return record.channel;
    }
    return 0;
}

int SpecialProwlDriveOutReq(CMarkupSTL *req, CMarkupSTL *rsp) {
    bscJSON *root = bscJSON_Parse(req->GetDoc().c_str());
    bscJSON *answer = bscJSON_CreateObject();
    if (root == NULL || answer == NULL) {
        bscJSON_Delete(root);
        bscJSON_Delete(answer);
        return 0;
    }
    int channel = 0;
    const bscJSON *oper_type = bscJSON_GetObjectItem(root, "operType");
    if (oper_type != NULL) {
        channel = DeliverDriveOut(root, oper_type->valueint);
    }

    /* a notification: the platform is told "success" whatever the application said */
    bscJSON_AddStringToObject(answer, "devSerial", SpecialDevSerial());
    SpecialJsonAddInt(answer, "channel", channel);
    SpecialJsonAddInt(answer, "resultCode", 1);
    bscJSON_AddStringToObject(answer, "resultMsg", "success");
    char *text = bscJSON_Print(answer);
    if (text != NULL) {
        rsp->SetDoc(text);
        bscJSON_free(text);
    }
    bscJSON_Delete(answer);
    bscJSON_Delete(root);
    return 0;
}
