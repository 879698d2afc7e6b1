/* A doorbell that supports a few of the module's commands and status items and answers
 * NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT for the rest, as the header allows. special-sim
 * --qualify reports the rows it cannot serve as "not applicable" and exits 0; with
 * --require-all they fail. Its control hook (noltdev_app_control) shows how to parse the
 * suite's requests: "change TYPE", "answer CALLBACK TYPE CODE" with the code in hex, and
 * "answer ok". */
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <noltDevSDK_special_def.h>

static pthread_mutex_t g_lock = PTHREAD_MUTEX_INITIALIZER;
static noltDevSDK_special_switch_enable g_switches[NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX];
static noltDevSDK_special_ring_type g_ring = {0, 0, 60};
static noltDevSDK_special_battery_workstatus g_battery = {1, 30, 0};
static noltDevSDK_special_custom_voice_infos g_voices;
/* What the suite asked the next answers to be (0: answer normally). */
static int g_recv_code[NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_MAX];
static int g_runtime_code[NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_MAX];

static int supported_msg(int type) {
    switch (type) {
    case NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE:
    case NOLTDEVSDK_SPECIAL_ON_RING_SOUND:
    case NOLTDEVSDK_SPECIAL_ON_WAKE:
    case NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP:
    case NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE:
    case NOLTDEVSDK_SPECIAL_ON_UNBINDUSER:
        return 1;
    default:
        return 0;
    }
}

static int on_recv_msg(noltDevSDK_special_msg_to_dev *msg) {
    int rc = 0;
    pthread_mutex_lock(&g_lock);
    if (!supported_msg(msg->type)) {
        rc = NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    } else if (g_recv_code[msg->type] != 0) {
        rc = g_recv_code[msg->type];
    } else if (msg->data == NULL) {
        rc = NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    } else if (msg->type == NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE &&
               msg->len == (int)sizeof(g_switches[0])) {
        const noltDevSDK_special_switch_enable *s = msg->data;
        if (s->type >= 0 && s->type < NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX) {
            g_switches[s->type] = *s;
        }
    } else if (msg->type == NOLTDEVSDK_SPECIAL_ON_RING_SOUND && msg->len == (int)sizeof(g_ring)) {
        memcpy(&g_ring, msg->data, sizeof(g_ring));
    }
    pthread_mutex_unlock(&g_lock);
    return rc;
}

/* The record answered for a runtime type, or NULL when the doorbell has none. */
static void *record_of(int type, const void *query, size_t *size) {
    int which;
    switch (type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE:
        which = query ? ((const noltDevSDK_special_switch_enable *)query)->type : 0;
        which = which >= 0 && which < NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX ? which : 0;
        *size = sizeof(g_switches[which]);
        return &g_switches[which];
    case NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND:
        *size = sizeof(g_ring);
        return &g_ring;
    case NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS:
        *size = sizeof(g_battery);
        return &g_battery;
    case NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS:
        *size = sizeof(g_voices);
        return &g_voices;
    default:
        return NULL;
    }
}

static int on_get_runtime_info(noltDevSDK_special_runtime_info *info) {
    size_t size = 0;
    void *record;
    int rc = 0;
    pthread_mutex_lock(&g_lock);
    record = record_of(info->type, info->data, &size);
    if (record == NULL) {
        rc = NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    } else if (g_runtime_code[info->type] != 0) {
        rc = g_runtime_code[info->type];
    } else if (info->data == NULL || info->len < (int)size) {
        rc = NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    } else {
        memcpy(info->data, record, size);
    }
    pthread_mutex_unlock(&g_lock);
    return rc;
}

int noltdev_app_start(void) {
    noltDevSDK_special_init_info init;
    int i;
    for (i = 0; i < NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX; i++) {
        g_switches[i].type = i;
        g_switches[i].enable = 1;
    }
    memset(&init, 0, sizeof(init));
    init.cb.recv_msg = on_recv_msg;
    init.cb.get_runtime_info = on_get_runtime_info;
    return noltDevSDK_special_init(&init);
}

void noltdev_app_stop(void) {
    noltDevSDK_special_fini();
}

/* "answer recv_msg 3 0xD3999022": the type is decimal, the code hex (or decimal, or
 * negative); strtoul reads all three, and the cast keeps the code's bits. */
static int control_answer(const char *request) {
    char callback[32], code[32];
    int type;
    if (sscanf(request, "answer %31s %d %31s", callback, &type, code) != 3) {
        return -1;
    }
    if (strcmp(callback, "recv_msg") == 0 && type >= 0 && type < NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_MAX) {
        g_recv_code[type] = (int)strtoul(code, NULL, 0);
        return 0;
    }
    if (strcmp(callback, "get_runtime_info") == 0 && type >= 0 &&
        type < NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_MAX) {
        g_runtime_code[type] = (int)strtoul(code, NULL, 0);
        return 0;
    }
    return -1;
}

/* "change TYPE": the next answer for that type differs; unknown types are refused. */
static int control_change(int type) {
    switch (type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE:
        g_switches[0].enable ^= 1;
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND:
        g_ring.vol = g_ring.vol == 60 ? 70 : 60;
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS:
        g_battery.work_time ^= 1;
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS:
        g_voices.voice_info[0].status ^= 1;
        return 0;
    default:
        return -1;
    }
}

int noltdev_app_control(const char *request) {
    int type, rc = -1;
    pthread_mutex_lock(&g_lock);
    if (strcmp(request, "answer ok") == 0) {
        memset(g_recv_code, 0, sizeof(g_recv_code));
        memset(g_runtime_code, 0, sizeof(g_runtime_code));
        rc = 0;
    } else if (strncmp(request, "answer ", 7) == 0) {
        rc = control_answer(request);
    } else if (sscanf(request, "change %d", &type) == 1) {
        rc = control_change(type);
    }
    pthread_mutex_unlock(&g_lock);
    return rc;
}
