/* The sample application's side of the special domain module: its two callbacks over a
 * small in-memory device, and the entry points of sample_app.h. Every callback takes one
 * lock, so it is safe on the kernel's thread and on custom-voice workers at once. */
#include "sample_app.h"

#include <pthread.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <noltDevSDK_special_def.h>

#define CHILDREN 2 /* child devices this base station holds */

/* One record per runtime type, answered as it is (children and power: see below). */
static struct {
    noltDevSDK_special_flow_counting_cfg flow;
    noltDevSDK_special_switch_enable switches[NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX];
    noltDevSDK_special_key_value icr;
    noltDevSDK_special_custom_voice_infos voices;
    noltDevSDK_linkage_mode_status linkage;
    noltDevSDK_special_battery_workstatus battery_status;
    noltDevSDK_Trusteeship trusteeship;
    noltDevSDK_trusteeship_subserial children[CHILDREN];
    noltDevSDK_PowerStatus_subserial power[CHILDREN];
    noltDevSDK_special_voddns_local_mapped_infos ports;
    noltDevSDK_special_associated_device_conn_status chime;
    noltDevSDK_special_battery_work_mode battery_mode;
    noltDevSDK_special_ring_type ring;
    noltDevSDK_special_plan plan;
    noltDevSDK_special_net_work_mode net_mode;
    noltDevSDK_special_4G_Info_S modem;
    noltDevSDK_special_one_click_mute mute;
    noltDevSDK_special_speaker_config speaker;
} g_dev;

static pthread_mutex_t g_lock = PTHREAD_MUTEX_INITIALIZER;
static int g_received;
static int g_recv_code[NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_MAX];
static int g_runtime_code[NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_MAX];

static void set_text(char *dst, size_t size, const char *src) {
    strncpy(dst, src, size - 1);
    dst[size - 1] = '\0';
}

static void fill_defaults(void) {
    int i;
    memset(&g_dev, 0, sizeof(g_dev));
    g_dev.flow.interval = 300;
    for (i = 0; i < NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX; i++) {
        g_dev.switches[i].type = i;
        g_dev.switches[i].enable = 1;
    }
    g_dev.icr.value = 1;
    g_dev.voices.num = 1;
    g_dev.voices.voice_info[0].index = 1;
    set_text(g_dev.voices.voice_info[0].name, sizeof(g_dev.voices.voice_info[0].name), "welcome");
    set_text(g_dev.voices.voice_info[0].url, sizeof(g_dev.voices.voice_info[0].url),
             "http://voices.example/1.mp3");
    g_dev.voices.voice_info[0].create_time = 1700000000;
    g_dev.battery_status.keep_alive = 1;
    g_dev.battery_status.work_time = 30;
    set_text(g_dev.trusteeship.subserial, sizeof(g_dev.trusteeship.subserial), "BS0000000001");
    for (i = 0; i < CHILDREN; i++) {
        snprintf(g_dev.children[i].subserial, sizeof(g_dev.children[i].subserial), "CH000000000%d", i + 1);
        g_dev.children[i].connect_status = 1;
        g_dev.children[i].iChannel = i + 1;
        memcpy(g_dev.power[i].subserial, g_dev.children[i].subserial, sizeof(g_dev.power[i].subserial));
        g_dev.power[i].value = 80;
        g_dev.power[i].remaining = 80;
        set_text(g_dev.power[i].baseserial, sizeof(g_dev.power[i].baseserial), "DS0000000000");
    }
    set_text(g_dev.ports.local_ip, sizeof(g_dev.ports.local_ip), "192.168.1.20");
    set_text(g_dev.ports.mapped_port_infos[0].type, sizeof(g_dev.ports.mapped_port_infos[0].type), "http");
    g_dev.ports.mapped_port_infos[0].local_port = 80;
    g_dev.ports.mapped_port_infos[0].nat_port = 8080;
    g_dev.chime.conn_status = 1;
    g_dev.chime.signal = -50;
    set_text(g_dev.chime.ssid, sizeof(g_dev.chime.ssid), "home");
    g_dev.ring.vol = 50;
    g_dev.modem.sigal = -70;
    set_text(g_dev.modem.network, sizeof(g_dev.modem.network), "LTE");
}

/* The record of a runtime type (null: answered elsewhere), its size and the int that
 * "change" toggles. */
static void *runtime_record(int type, const void *query, size_t *size, int **toggled) {
    void *r = NULL;
    *size = 0;
    *toggled = NULL;
    switch (type) {
#define CASE(t, rec, field)                                                                                  \
    case t:                                                                                                  \
        r = &(rec);                                                                                          \
        *size = sizeof(rec);                                                                                 \
        *toggled = &(rec).field;                                                                             \
        break;
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_FLOW_COUNTING_CFG, g_dev.flow, interval)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE, g_dev.icr, value)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS, g_dev.voices, voice_info[0].status)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_LINKAGE_MODE_STATUS, g_dev.linkage, time)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS, g_dev.battery_status, work_time)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT, g_dev.ports, mapped_port_infos[0].nat_port)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS, g_dev.chime, signal)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE, g_dev.battery_mode, mode)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, g_dev.ring, vol)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN, g_dev.plan, enable_plan)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE, g_dev.net_mode, mode)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO, g_dev.modem, sigal)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE, g_dev.mute, enable)
        CASE(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG, g_dev.speaker, ring_enable)
#undef CASE
    case NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE: {
        int which = query ? ((const noltDevSDK_special_switch_enable *)query)->type : 0;
        which = which >= 0 && which < NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX ? which : 0;
        r = &g_dev.switches[which];
        *size = sizeof(g_dev.switches[which]);
        *toggled = &g_dev.switches[which].enable;
        break;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP:
        r = &g_dev.trusteeship;
        *size = sizeof(g_dev.trusteeship);
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT:
        *toggled = &g_dev.children[0].connect_status;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_POWERSTATUS:
        *toggled = &g_dev.power[0].value;
        break;
    default:
        break;
    }
    return r;
}

/* An open-ended list: as many entries as the query's len has room for. */
static int answer_list(noltDevSDK_special_runtime_info *info, const void *entries, size_t entry_size) {
    size_t room = (size_t)info->len > sizeof(int) ? ((size_t)info->len - sizeof(int)) / entry_size : 0;
    int n = room < CHILDREN ? (int)room : CHILDREN;
    memcpy(info->data, &n, sizeof(n));
    memcpy((char *)info->data + sizeof(int), entries, (size_t)n * entry_size);
    return 0;
}

/* The deletion results: a block the module frees. */
static int answer_deletion(noltDevSDK_special_runtime_info *info) {
    size_t size = offsetof(noltDevSDK_Special_DelTrusteeship_S, astUnit) +
                  sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
    noltDevSDK_Special_DelTrusteeship_S *block = calloc(1, size);
    if (block == NULL) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_ENOUGH_MEMERY;
    }
    block->usNum = 1;
    block->astUnit[0].iChannel = 2;
    set_text(block->astUnit[0].acSubserial, sizeof(block->astUnit[0].acSubserial), "CH0000000002");
    set_text(block->astUnit[0].acBaseserial, sizeof(block->astUnit[0].acBaseserial), "DS0000000000");
    info->data = block;
    info->len = (int)size;
    return 0;
}

static int answer(noltDevSDK_special_runtime_info *info) {
    size_t size;
    int *toggled;
    void *record;
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP) {
        return answer_deletion(info);
    }
    if (info->data == NULL || info->len <= 0) {
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT) {
        return answer_list(info, g_dev.children, sizeof(g_dev.children[0]));
    }
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_POWERSTATUS) {
        return answer_list(info, g_dev.power, sizeof(g_dev.power[0]));
    }
    record = runtime_record(info->type, info->data, &size, &toggled);
    if (record == NULL) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    }
    memcpy(info->data, record, size < (size_t)info->len ? size : (size_t)info->len);
    return 0;
}

static int on_get_runtime_info(noltDevSDK_special_runtime_info *info) {
    int rc;
    pthread_mutex_lock(&g_lock);
    if (info->type >= 0 && info->type < NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_MAX &&
        g_runtime_code[info->type] != 0) {
        rc = g_runtime_code[info->type];
    } else {
        rc = answer(info);
    }
    pthread_mutex_unlock(&g_lock);
    return rc;
}

/* A received setting is kept, so that the status the module reports next follows it. */
static void apply(const noltDevSDK_special_msg_to_dev *msg) {
    size_t size;
    int *toggled;
    static const int kRuntimeOf[NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_MAX] = {
        [NOLTDEVSDK_SPECIAL_ON_SET_FLOW_COUNTING_CFG] = NOLTDEVSDK_SPECIAL_ON_GET_FLOW_COUNTING_CFG + 1,
        [NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE] = NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE + 1,
        [NOLTDEVSDK_SPECIAL_ON_SET_LINKAGE_MODE_STATUS] = NOLTDEVSDK_SPECIAL_ON_GET_LINKAGE_MODE_STATUS + 1,
        [NOLTDEVSDK_SPECIAL_ON_BATTERY_WORK_MODE] = NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE + 1,
        [NOLTDEVSDK_SPECIAL_ON_RING_SOUND] = NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND + 1,
        [NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_PLAN] = NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN + 1,
        [NOLTDEVSDK_SPECIAL_ON_NET_WORK_MODE] = NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE + 1,
        [NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_ONE_CLICK_MUTE] =
            NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE + 1,
        [NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG] =
            NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG + 1,
    };
    void *record;
    if (msg->type < 0 || msg->type >= NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_MAX || kRuntimeOf[msg->type] == 0) {
        return;
    }
    record = runtime_record(kRuntimeOf[msg->type] - 1, msg->data, &size, &toggled);
    if (record != NULL && msg->len >= 0 && (size_t)msg->len == size) {
        memcpy(record, msg->data, size);
    }
}

static int on_recv_msg(noltDevSDK_special_msg_to_dev *msg) {
    int rc = 0;
    pthread_mutex_lock(&g_lock);
    g_received++;
    if (msg->type >= 0 && msg->type < NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_MAX && g_recv_code[msg->type] != 0) {
        rc = g_recv_code[msg->type];
    } else if (msg->data == NULL) {
        rc = NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    } else {
        apply(msg);
    }
    pthread_mutex_unlock(&g_lock);
    return rc;
}

int noltdev_app_start(void) {
    noltDevSDK_special_init_info init;
    pthread_mutex_lock(&g_lock);
    fill_defaults();
    g_received = 0;
    memset(g_recv_code, 0, sizeof(g_recv_code));
    memset(g_runtime_code, 0, sizeof(g_runtime_code));
    pthread_mutex_unlock(&g_lock);
    memset(&init, 0, sizeof(init));
    init.cb.recv_msg = on_recv_msg;
    init.cb.get_runtime_info = on_get_runtime_info;
    return noltDevSDK_special_init(&init);
}

void noltdev_app_stop(void) {
    noltDevSDK_special_fini();
}

static int control_answer(const char *callback, int type, long code) {
    int recv = strcmp(callback, "recv_msg") == 0;
    int max = recv ? NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_MAX : NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_MAX;
    if ((!recv && strcmp(callback, "get_runtime_info") != 0) || type < 0 || type >= max) {
        return -1;
    }
    (recv ? g_recv_code : g_runtime_code)[type] = (int)code;
    return 0;
}

static int control_change(int type) {
    size_t size;
    int *toggled = NULL;
    if (type < 0 || type >= NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_MAX) {
        return -1;
    }
    if (type == NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP) {
        g_dev.trusteeship.subserial[11] = g_dev.trusteeship.subserial[11] == '1' ? '2' : '1';
        return 0;
    }
    runtime_record(type, NULL, &size, &toggled);
    if (toggled == NULL) {
        return -1;
    }
    *toggled ^= 1;
    return 0;
}

int noltdev_app_control(const char *request) {
    char callback[32];
    char code[32];
    int type;
    int rc = -1;
    pthread_mutex_lock(&g_lock);
    if (strcmp(request, "answer ok") == 0) {
        memset(g_recv_code, 0, sizeof(g_recv_code));
        memset(g_runtime_code, 0, sizeof(g_runtime_code));
        rc = 0;
    } else if (sscanf(request, "answer %31s %d %31s", callback, &type, code) == 3) {
        rc = control_answer(callback, type, (long)(int)strtoul(code, NULL, 0));
    } else if (sscanf(request, "change %d", &type) == 1) {
        rc = control_change(type);
    }
    pthread_mutex_unlock(&g_lock);
    return rc;
}

int sample_app_received(void) {
    int n;
    pthread_mutex_lock(&g_lock);
    n = g_received;
    pthread_mutex_unlock(&g_lock);
    return n;
}
