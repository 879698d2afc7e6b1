/* The custom-voice command: the request is copied into a heap block and answered from a
 * detached worker thread, because the application may take long to fetch the voice. */
#include <pthread.h>
#include <stdlib.h>
#include <string.h>

#include "app/special_app.h"
#include "bus/special_bus.h"
#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_handler_util.h"
#include "special_handlers.h"

namespace {
/* The block a custom-voice request hands to its worker thread. */
struct special_custom_voice_ifno {
    int seq;
    int index;
    int type;
    char name[64];
    char url[512];
    int customVoice;
};
} // namespace

static void *SpecialSetCustomVoiceRsp(void *arg);

int SpecialSetCustomVoiceReq(CMarkupSTL *req, CMarkupSTL *rsp) {
    (void)rsp; /* the worker answers; the frame sends nothing for this command */
    special_custom_voice_ifno *info = static_cast<special_custom_voice_ifno *>(calloc(1, sizeof *info));
    if (info == NULL) {
        return -1;
    }
    /* the frame stamped the platform's sequence number here; the answer must carry it */
    if (req->FindElem("UserDefine", true)) {
        info->seq = SpecialAttribInt(req, "MsgSeq");
    }
    if (req->FindElem("Info", true)) {
        info->index = SpecialAttribInt(req, "Index");
        info->type = SpecialAttribInt(req, "Type");
        SpecialAttribText(req, "Name", info->name, sizeof info->name);
        SpecialAttribText(req, "Url", info->url, sizeof info->url);
        info->customVoice = SpecialAttribInt(req, "CustomVoice");
    }
    noltdev_debug(LOG_INFO, "url:%s\n", info->url);

    pthread_t worker;
    if (pthread_create(&worker, NULL, SpecialSetCustomVoiceRsp, info) != 0) {
        noltdev_debug(LOG_ERROR, "pthread creaete error\n");
        free(info);
        return 0;
    }
    pthread_detach(worker);
    return 0;
}

/* The platform's result for an application failure code. */
static int VoiceResultCode(int rc) {
    switch (rc) {
    case NOLTDEVSDK_SPECIAL_CODE_VOICE_DOWNLOAD_FAILED:
        return 0x170000;
    case NOLTDEVSDK_SPECIAL_CODE_VOICE_NOT_EXIST:
        return 0x170001;
    case NOLTDEVSDK_SPECIAL_CODE_VOICE_IS_BUSY:
        return 0x170002;
    case NOLTDEVSDK_SPECIAL_CODE_VOICE_COUNT_LIMITED:
        return 0x170003;
    default:
        return SPECIAL_RESULT_REFUSED;
    }
}

static void *SpecialSetCustomVoiceRsp(void *arg) {
    special_custom_voice_ifno *info = static_cast<special_custom_voice_ifno *>(arg);
    if (info == NULL) {
        noltdev_debug(LOG_ERROR, "SpecialSetCustomVoiceRsp arg is not valid\n");
        return NULL;
    }
    unsigned int seq = static_cast<unsigned int>(info->seq);
    CMarkupSTL rsp;
    noltdev_xml_init_rsp(rsp);

    if (!SpecialAppHasRecvMsg(SPECIAL_APP_NO_CALLBACK)) {
        special_set_result(&rsp, SPECIAL_RESULT_APP_FAIL);
    } else {
        noltDevSDK_special_operate_custom_voice record;
        memset(&record, 0, sizeof record);
        record.index = info->index;
        record.type = info->type;
        SpecialCopyText(record.name, sizeof record.name, info->name);
        SpecialCopyText(record.url, sizeof record.url, info->url);
        record.customVoice = info->customVoice;
        int rc = SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE, &record, sizeof record,
                                   SPECIAL_APP_NO_CALLBACK);
        SpecialForceReport(NOLTDEVSDK_ReportCustomVoice);
        if (rc == 0) {
            rsp.AddElem("Info");
            rsp.SetAttrib("Index", info->index);
        } else {
            special_set_result(&rsp, VoiceResultCode(rc));
        }
    }
    free(info);
    special_send_msg_to_platform(rsp, kCenPlt2PuSetCustomVoiceRsp, SPECIAL_CMD_VERSION, 1, seq, NULL);
    return NULL;
}
