/* A 4G camera that is also the base of a few child cameras: custom voices, a
 * work-mode plan, the network mode, the speaker, its port mappings and
 * the children it holds in trusteeship. The rest is answered "not supported". */
#define _POSIX_C_SOURCE 200809L

#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "app_control.h"

#define NOT_SUPPORTED NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT
#define BAD_RECORD NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM

#define PLAN_TYPE_WORK_MODE 17 /* the platform's number for the work-mode plan */
#define MAX_CHILDREN 12
#define MAX_DELETIONS 4 /* results kept for the shadow service */

struct deletion {
    int channel;
    char serial[16];
    int result; /* 0 deleted */
};

/* the mapping table as the DDNS client keeps it */
struct port_table {
    char external_ip[16];
    char local_ip[16];
    noltDevSDK_special_voddns_mapped_info map[16];
    int map_count;
    int refreshed;
};

struct modem {
    int status, signal, type;
    char network[48]; /* operator name as the modem reports it */
    char iccid[32], imei[32];
};

struct camera {
    pthread_mutex_t lock;
    noltDevSDK_special_custom_voice_infos voices;
    noltDevSDK_trusteeship_subserial children[MAX_CHILDREN];
    int child_count;
    struct deletion deletions[MAX_DELETIONS]; /* the results of the last deletion request */
    int deletion_count;
    struct port_table ports;
    noltDevSDK_special_plan plan;
    struct {
        int mode;
        int band;
    } net;
    struct modem modem;
    int sleep_type;
};

static struct camera cam = {
    .lock = PTHREAD_MUTEX_INITIALIZER,
    .voices = {.num = 1, .voice_info = {{.index = 0, .status = 1, .name = "welcome"}}},
    .child_count = 10,
    /* the hand-over kept from before the reboot: one went through, one did not */
    .deletions = {{11, "CH0000000011", 0}, {12, "CH0000000012", 1}},
    .deletion_count = 2,
    .ports = {"203.0.113.7", "192.168.1.20", {{"http", 80, 18080}, {"rtsp", 554, 18554}}, 2, 0},
    .plan = {.type = NOLTDEVSDK_SPECIAL_WORK_MODE_PLAN, .enable_plan = 1},
    .net = {1, 3},
    .modem = {1, 18, 4, "China Unicom LTE FDD Band 3 20MHz", "89860112345678901234", "861234567890123"},
};
/* written by the platform's command, read by the status poller */
static noltDevSDK_special_speaker_config speaker = {1, 1, 1, 2};

/* voices are stamped with the clock of the event log */
static time_t stamp_now(void) {
    struct timespec ts;
    clock_gettime(CLOCK_REALTIME, &ts);
    return (time_t)ts.tv_sec * 1000000000 + ts.tv_nsec;
}

static int store_voice(const noltDevSDK_special_operate_custom_voice *op) {
    int i = 0;
    while (i < cam.voices.num && cam.voices.voice_info[i].index != op->index)
        ++i;
    if (i == 16)
        return NOLTDEVSDK_SPECIAL_CODE_VOICE_COUNT_LIMITED;
    if (i == cam.voices.num)
        cam.voices.num++;
    noltDevSDK_special_custom_voice_info *slot = &cam.voices.voice_info[i];
    slot->index = op->index;
    slot->status = 1;
    app_copy_text(slot->name, sizeof slot->name, op->name);
    app_copy_text(slot->url, sizeof slot->url, op->url);
    slot->create_time = stamp_now();
    slot->customVoice = op->customVoice;
    return 0;
}

static int on_msg(noltDevSDK_special_msg_to_dev *msg) {
    int result = 0;

    if (msg == NULL)
        return BAD_RECORD;
    if (app_answer_forced(APP_RECV_MSG, msg->type, &result))
        return result;
    if (msg->type == NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG) {
        if (!APP_FITS(msg->data, msg->len, speaker))
            return BAD_RECORD;
        speaker = *(const noltDevSDK_special_speaker_config *)msg->data;
        return 0;
    }
    if (msg->type == NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP) {
        /* let the PIR settle before the sleep timer is armed */
        struct timespec settle = {0, 700 * 1000 * 1000};
        nanosleep(&settle, NULL);
    }

    pthread_mutex_lock(&cam.lock);
    switch (msg->type) {
    case NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP: {
        const noltDevSDK_special_delay_sleep_type *ds = msg->data;
        if (!APP_FITS(ds, msg->len, *ds)) {
            result = BAD_RECORD;
            break;
        }
        cam.sleep_type = ds->type;
        break;
    }
    case NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE:
        result = APP_FITS(msg->data, msg->len, noltDevSDK_special_operate_custom_voice)
                     ? store_voice(msg->data)
                     : BAD_RECORD;
        break;
    case NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_PLAN:
        if (APP_FITS(msg->data, msg->len, cam.plan))
            memcpy(&cam.plan, msg->data, sizeof cam.plan);
        else
            result = BAD_RECORD;
        break;
    case NOLTDEVSDK_SPECIAL_ON_NET_WORK_MODE:
        if (APP_FITS(msg->data, msg->len, noltDevSDK_special_net_work_mode))
            cam.net.mode = ((const noltDevSDK_special_net_work_mode *)msg->data)->mode;
        else
            result = BAD_RECORD;
        break;
    default:
        result = NOT_SUPPORTED;
        break;
    }
    pthread_mutex_unlock(&cam.lock);
    return result;
}

/* The results of the last deletion, for the shadow service. */
static int answer_deletions(noltDevSDK_special_runtime_info *info) {
    int done = 0;
    for (int i = 0; i < cam.deletion_count; ++i)
        done += cam.deletions[i].result == 0;

    noltDevSDK_Special_DelTrusteeship_S *res = calloc(1, sizeof *res + done * sizeof res->astUnit[0]);
    if (res == NULL)
        return NOLTDEVSDK_SPECIAL_CODE_NOT_ENOUGH_MEMERY;
    res->usNum = (unsigned short)cam.deletion_count;
    for (int i = 0, k = 0; i < cam.deletion_count; ++i) {
        if (cam.deletions[i].result != 0)
            continue;
        res->astUnit[k].iChannel = cam.deletions[i].channel;
        app_copy_text(res->astUnit[k].acSubserial, sizeof res->astUnit[k].acSubserial,
                      cam.deletions[i].serial);
        ++k;
    }
    info->data = res;
    return 0;
}

static int fill_record(noltDevSDK_special_runtime_info *info) {
    switch (info->type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS:
        if (!APP_FITS(info->data, info->len, cam.voices))
            return BAD_RECORD;
        memcpy(info->data, &cam.voices, sizeof cam.voices);
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT: {
        noltDevSDK_Trusteeship_connect *rec = info->data;
        if (!APP_FITS(rec, info->len, *rec))
            return BAD_RECORD;
        int room = (info->len - (int)sizeof *rec) / (int)sizeof rec->subserial[0];
        for (int i = 0; i < cam.child_count && i < room; ++i)
            rec->subserial[i] = cam.children[i];
        rec->num = cam.child_count;
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP:
        return answer_deletions(info);
    case NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT:
        if (!APP_FITS(info->data, info->len, noltDevSDK_special_voddns_local_mapped_infos))
            return BAD_RECORD;
        memcpy(info->data, &cam.ports, sizeof cam.ports);
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN: {
        noltDevSDK_special_plan *rec = info->data;
        if (!APP_FITS(rec, info->len, *rec))
            return BAD_RECORD;
        *rec = cam.plan;
        rec->type = PLAN_TYPE_WORK_MODE;
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE: {
        noltDevSDK_special_net_work_mode *rec = info->data;
        if (!APP_FITS(rec, info->len, *rec))
            return BAD_RECORD;
        rec->mode = cam.net.mode;
        info->len = (int)sizeof cam.net; /* what was answered */
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO: {
        noltDevSDK_special_4G_Info_S *rec = info->data;
        if (!APP_FITS(rec, info->len, *rec))
            return BAD_RECORD;
        rec->status = cam.modem.status;
        rec->sigal = cam.modem.signal;
        rec->type = cam.modem.type;
        size_t n = strlen(cam.modem.network);
        memcpy(rec->network, cam.modem.network, n < sizeof rec->network ? n : sizeof rec->network);
        app_copy_text(rec->ICCID, sizeof rec->ICCID, cam.modem.iccid);
        app_copy_text(rec->IMEI, sizeof rec->IMEI, cam.modem.imei);
        return 0;
    }
    default:
        return NOT_SUPPORTED;
    }
}

static int on_query(noltDevSDK_special_runtime_info *info) {
    int result;

    if (info == NULL)
        return BAD_RECORD;
    if (app_answer_forced(APP_GET_RUNTIME_INFO, info->type, &result))
        return result;
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG) {
        if (!APP_FITS(info->data, info->len, speaker))
            return BAD_RECORD;
        *(noltDevSDK_special_speaker_config *)info->data = speaker;
        return 0;
    }
    pthread_mutex_lock(&cam.lock);
    result = fill_record(info);
    pthread_mutex_unlock(&cam.lock);
    return result;
}

static const unsigned supported_msgs =
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP) | APP_BIT(NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_PLAN) | APP_BIT(NOLTDEVSDK_SPECIAL_ON_NET_WORK_MODE) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG);
static const unsigned supported_items =
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT) | APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE) | APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG);

static int change_item(int type) {
    pthread_mutex_lock(&cam.lock);
    switch (type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS:
        cam.voices.voice_info[0].status = !cam.voices.voice_info[0].status;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT:
        cam.children[0].connect_status = !cam.children[0].connect_status;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT:
        cam.ports.map[0].nat_port += 1;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN:
        cam.plan.enable_plan = !cam.plan.enable_plan;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE:
        cam.net.mode = cam.net.mode == 1 ? 2 : 1;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO:
        cam.modem.signal = cam.modem.signal > 20 ? 5 : cam.modem.signal + 5;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG:
        speaker.ring_index = speaker.ring_index % 4 + 1;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP:
        pthread_mutex_unlock(&cam.lock);
        return -1; /* not a status item */
    }
    pthread_mutex_unlock(&cam.lock);
    return 0;
}

int noltdev_app_control(const char *request) {
    return app_control(request, supported_msgs, supported_items, change_item);
}

static void boot(void) {
    pthread_mutex_lock(&cam.lock);
    cam.voices.voice_info[0].create_time = stamp_now();
    for (int i = 0; i < cam.child_count; ++i) {
        snprintf(cam.children[i].subserial, sizeof cam.children[i].subserial, "CH%010d", i + 1);
        cam.children[i].connect_status = i % 3 != 2;
        cam.children[i].iChannel = i + 1;
    }
    for (int day = 0; day < 7; ++day)
        cam.plan.special_work_mode_plan.time[day][0] =
            (noltDevSDK_special_work_mode_time_segment){1, 0, 86400};
    pthread_mutex_unlock(&cam.lock);
}

int noltdev_app_start(void) {
    boot();
    return app_start(on_msg, on_query);
}

void noltdev_app_stop(void) {
    noltDevSDK_special_fini();
}
