/* A doorbell with a data race on purpose. Its answers are right, so special-sim --qualify
 * passes every row it supports, but the sound settings (ring type and volume, speaker
 * prompts) are kept apart from the lock that guards the rest: recv_msg writes them on the
 * kernel message thread while get_runtime_info reads them on the report-status poller,
 * with nothing ordering the two. Such a race rarely shows in a plain run; it is found when
 * the simulator and this library are built with -fsanitize=thread and the qualification's
 * rows that run both callbacks at once read the sanitizer's report. */
#define _POSIX_C_SOURCE 200809L /* nanosleep */
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include <noltDevSDK_special_def.h>

static pthread_mutex_t g_lock = PTHREAD_MUTEX_INITIALIZER;
static noltDevSDK_special_switch_enable g_switches[NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX];
static noltDevSDK_special_battery_workstatus g_battery = {1, 30, 0};
/* What the suite asked the next answers to be (0: answer normally). */
static int g_recv_code[NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_MAX];
static int g_runtime_code[NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_MAX];

/* The bug: "only the kernel's thread sets these, and they are a few ints", so they were
 * left outside g_lock. The poller reads them while a command writes them. */
static struct {
    noltDevSDK_special_ring_type ring;
    noltDevSDK_special_speaker_config speaker;
} g_sound = {{0, 0, 60}, {1, 0, 1, 0}};

static int supported_msg(int type) {
    switch (type) {
    case NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE:
    case NOLTDEVSDK_SPECIAL_ON_RING_SOUND:
    case NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG:
    case NOLTDEVSDK_SPECIAL_ON_WAKE:
    case NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP:
    case NOLTDEVSDK_SPECIAL_ON_UNBINDUSER:
        return 1;
    default:
        return 0;
    }
}

/* The amplifier takes a few milliseconds to settle on new sound settings. */
static void apply_to_amplifier(void) {
    struct timespec settle = {0, 5 * 1000 * 1000};
    nanosleep(&settle, NULL);
}

/* The sound settings a command carries, stored as they come (unlocked: the race). */
static void set_sound(const noltDevSDK_special_msg_to_dev *msg) {
    if (msg->type == NOLTDEVSDK_SPECIAL_ON_RING_SOUND && msg->len == (int)sizeof(g_sound.ring)) {
        const noltDevSDK_special_ring_type *ring = msg->data;
        g_sound.ring.type = ring->type;
        g_sound.ring.index = ring->index;
        g_sound.ring.vol = ring->vol;
    } else if (msg->type == NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG &&
               msg->len == (int)sizeof(g_sound.speaker)) {
        memcpy(&g_sound.speaker, msg->data, sizeof(g_sound.speaker));
    } else {
        return;
    }
    apply_to_amplifier();
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
    }
    pthread_mutex_unlock(&g_lock);
    if (rc == 0 && msg->data != NULL) {
        set_sound(msg);
    }
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
    case NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS:
        *size = sizeof(g_battery);
        return &g_battery;
    default:
        return NULL;
    }
}

static int is_sound(int type) {
    return type == NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND ||
           type == NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG;
}

/* The sound settings as a status answer (unlocked: the race). */
static int get_sound(noltDevSDK_special_runtime_info *info) {
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND && info->len >= (int)sizeof(g_sound.ring)) {
        noltDevSDK_special_ring_type *ring = info->data;
        ring->type = g_sound.ring.type;
        ring->index = g_sound.ring.index;
        ring->vol = g_sound.ring.vol;
        return 0;
    }
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG &&
        info->len >= (int)sizeof(g_sound.speaker)) {
        memcpy(info->data, &g_sound.speaker, sizeof(g_sound.speaker));
        return 0;
    }
    return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
}

static int on_get_runtime_info(noltDevSDK_special_runtime_info *info) {
    size_t size = 0;
    void *record;
    int rc = 0;
    pthread_mutex_lock(&g_lock);
    record = record_of(info->type, info->data, &size);
    if (record == NULL && !is_sound(info->type)) {
        rc = NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    } else if (g_runtime_code[info->type] != 0) {
        rc = g_runtime_code[info->type];
    } else if (info->data == NULL || info->len < (int)size) {
        rc = NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    } else if (record != NULL) {
        memcpy(info->data, record, size);
    }
    pthread_mutex_unlock(&g_lock);
    if (rc == 0 && record == NULL) {
        rc = get_sound(info);
    }
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

/* "answer recv_msg 3 0xD3999022": the type is decimal, the code hex, decimal or negative. */
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
    case NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS:
        g_battery.work_time ^= 1;
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND:
        g_sound.ring.vol = g_sound.ring.vol == 60 ? 70 : 60;
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG:
        g_sound.speaker.ring_enable ^= 1;
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
