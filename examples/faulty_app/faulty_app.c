/* A deliberately careless application, for special-sim --qualify to catch: one fault of
 * each class the contract checker knows. Never copy from it. Each fault is marked FAULT
 * with the class the checker reports it under. */
#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

#include <noltDevSDK_special_def.h>

/* FAULT concurrent: a scratch buffer shared by every custom-voice worker, without a lock. */
static noltDevSDK_special_operate_custom_voice g_scratch;

static int on_recv_msg(noltDevSDK_special_msg_to_dev *msg) {
    if (msg->type == NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP) {
        usleep(700 * 1000); /* FAULT slow: blocks the kernel's message thread */
    } else if (msg->type == NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE) {
        memcpy(&g_scratch, msg->data, sizeof(g_scratch));
        usleep(100 * 1000); /* "downloading" while the other workers overwrite g_scratch */
    }
    return 0;
}

/* The trusteeship deletion results. */
static int answer_deletion(noltDevSDK_special_runtime_info *info) {
    size_t one = offsetof(noltDevSDK_Special_DelTrusteeship_S, astUnit) +
                 sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
    noltDevSDK_Special_DelTrusteeship_S *block = calloc(1, one); /* FAULT block: room for one unit ... */
    if (block == NULL) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_ENOUGH_MEMERY;
    }
    block->usNum = 2; /* ... but two announced */
    info->data = block;
    info->len = (int)(one + sizeof(noltDevSDK_Special_DelTrusteeship_Param_S));
    return 0;
}

static int on_get_runtime_info(noltDevSDK_special_runtime_info *info) {
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP) {
        return answer_deletion(info);
    }
    if (info->data == NULL) {
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    switch (info->type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND:
        memset(info->data, 0, (size_t)info->len);
        info->len = 16; /* FAULT len: a different record's size handed back */
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO: {
        noltDevSDK_special_4G_Info_S *modem = info->data;
        memset(modem, 0, sizeof(*modem));
        memset(modem->network, 'L', sizeof(modem->network)); /* FAULT text: full width, no terminator */
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT: {
        noltDevSDK_Trusteeship_connect *children = info->data;
        children->num = 12; /* FAULT count: the query has room for 8 */
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE: {
        noltDevSDK_special_key_value *kv = info->data;
        kv->key = 5; /* FAULT enum: there is one key */
        kv->value = 1;
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS: {
        noltDevSDK_special_custom_voice_infos *voices = info->data;
        memset(voices, 0, sizeof(*voices));
        voices->num = 1;
        voices->voice_info[0].index = 1;
        /* FAULT calendar: an uninitialised stamp; where time_t has 64 bits no calendar holds it */
        voices->voice_info[0].create_time = (time_t)(sizeof(time_t) > 4 ? INT64_MAX : INT32_MAX);
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG:
        /* FAULT overrun: clears a record 8 bytes larger than the one it was given */
        memset(info->data, 0, sizeof(noltDevSDK_special_speaker_config) + 8);
        return 0;
    default:
        memset(info->data, 0, (size_t)info->len);
        return 0;
    }
}

int noltdev_app_start(void) {
    noltDevSDK_special_init_info init;
    memset(&init, 0, sizeof(init));
    init.cb.recv_msg = on_recv_msg;
    init.cb.get_runtime_info = on_get_runtime_info;
    return noltDevSDK_special_init(&init);
}

void noltdev_app_stop(void) {
    noltDevSDK_special_fini();
}
