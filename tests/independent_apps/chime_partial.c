/* A doorbell chime: it rings, it can be muted with one click, it has a speaker with two
 * prompts and it runs from a battery. Everything else the module may ask about is
 * answered "not supported". */
#include <pthread.h>
#include <string.h>

#include "app_control.h"

#define NOT_SUPPORTED NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT
#define BAD_RECORD NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM

struct chime {
    pthread_mutex_t lock; /* recv_msg, get_runtime_info and the control hook all use it */
    noltDevSDK_special_ring_type ring;
    noltDevSDK_special_one_click_mute mute;
    noltDevSDK_special_speaker_config speaker;
    noltDevSDK_special_battery_work_mode work_mode;
    noltDevSDK_special_battery_workstatus battery;
    int indicator_light;
};

static struct chime chime = {
    .lock = PTHREAD_MUTEX_INITIALIZER,
    .ring = {.type = 1, .index = 0, .vol = 60},
    .speaker = {.ring_enable = 1, .ring_index = 2, .intel_enable = 0, .intel_index = 1},
    .work_mode = {.mode = 1},
    .battery = {.keep_alive = 1, .work_time = 120, .special_business = 0},
    .indicator_light = 1,
};

static int on_switch(noltDevSDK_special_switch_enable *sw, int set) {
    if (sw->type != NOLTDEVSDK_SPECIAL_SWITCH_TYPE_CHIME_INDICATOR_LIGHT)
        return NOT_SUPPORTED; /* the chime has no other switch */
    if (set)
        chime.indicator_light = sw->enable != 0;
    else
        sw->enable = chime.indicator_light;
    return 0;
}

static int on_msg(noltDevSDK_special_msg_to_dev *msg) {
    int code;
    int result = 0;

    if (msg == NULL)
        return BAD_RECORD;
    if (app_answer_forced(APP_RECV_MSG, msg->type, &code))
        return code;

    pthread_mutex_lock(&chime.lock);
    switch (msg->type) {
    case NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE:
        if (!APP_FITS(msg->data, msg->len, noltDevSDK_special_switch_enable))
            result = BAD_RECORD;
        else
            result = on_switch(msg->data, 1);
        break;
    case NOLTDEVSDK_SPECIAL_ON_RING_SOUND:
        if (!APP_FITS(msg->data, msg->len, chime.ring))
            result = BAD_RECORD;
        else
            memcpy(&chime.ring, msg->data, sizeof chime.ring);
        break;
    case NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_ONE_CLICK_MUTE:
        if (!APP_FITS(msg->data, msg->len, chime.mute))
            result = BAD_RECORD;
        else
            memcpy(&chime.mute, msg->data, sizeof chime.mute);
        break;
    case NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG:
        if (!APP_FITS(msg->data, msg->len, chime.speaker))
            result = BAD_RECORD;
        else
            memcpy(&chime.speaker, msg->data, sizeof chime.speaker);
        break;
    case NOLTDEVSDK_SPECIAL_ON_BATTERY_WORK_MODE:
        if (!APP_FITS(msg->data, msg->len, chime.work_mode))
            result = BAD_RECORD;
        else
            memcpy(&chime.work_mode, msg->data, sizeof chime.work_mode);
        break;
    default:
        result = NOT_SUPPORTED;
        break;
    }
    pthread_mutex_unlock(&chime.lock);
    return result;
}

static int on_query(noltDevSDK_special_runtime_info *info) {
    int code;
    int result = 0;

    if (info == NULL)
        return BAD_RECORD;
    if (app_answer_forced(APP_GET_RUNTIME_INFO, info->type, &code))
        return code;

    pthread_mutex_lock(&chime.lock);
    switch (info->type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE:
        if (!APP_FITS(info->data, info->len, noltDevSDK_special_switch_enable))
            result = BAD_RECORD;
        else
            result = on_switch(info->data, 0);
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND:
        if (!APP_FITS(info->data, info->len, chime.ring))
            result = BAD_RECORD;
        else
            memcpy(info->data, &chime.ring, sizeof chime.ring);
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE:
        if (!APP_FITS(info->data, info->len, chime.mute))
            result = BAD_RECORD;
        else
            memcpy(info->data, &chime.mute, sizeof chime.mute);
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG:
        if (!APP_FITS(info->data, info->len, chime.speaker))
            result = BAD_RECORD;
        else
            memcpy(info->data, &chime.speaker, sizeof chime.speaker);
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE:
        if (!APP_FITS(info->data, info->len, chime.work_mode))
            result = BAD_RECORD;
        else
            memcpy(info->data, &chime.work_mode, sizeof chime.work_mode);
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS:
        if (!APP_FITS(info->data, info->len, chime.battery))
            result = BAD_RECORD;
        else
            memcpy(info->data, &chime.battery, sizeof chime.battery);
        break;
    default:
        /* type 9 included: no block is allocated for an item the chime does not have */
        result = NOT_SUPPORTED;
        break;
    }
    pthread_mutex_unlock(&chime.lock);
    return result;
}

/* Makes the value of one status item differ from what was last reported. */
static int change_item(int type) {
    int result = 0;

    pthread_mutex_lock(&chime.lock);
    switch (type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE:
        chime.indicator_light = !chime.indicator_light;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND:
        chime.ring.vol = chime.ring.vol >= 100 ? 10 : chime.ring.vol + 10;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE:
        chime.mute.enable = !chime.mute.enable;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG:
        chime.speaker.ring_index = chime.speaker.ring_index % 4 + 1;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE:
        chime.work_mode.mode = chime.work_mode.mode == 1 ? 2 : 1;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS:
        chime.battery.work_time += 1;
        break;
    default:
        result = -1; /* nothing to change on a chime */
        break;
    }
    pthread_mutex_unlock(&chime.lock);
    return result;
}

static const unsigned supported_msgs = APP_BIT(NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE) |
                                       APP_BIT(NOLTDEVSDK_SPECIAL_ON_RING_SOUND) |
                                       APP_BIT(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_ONE_CLICK_MUTE) |
                                       APP_BIT(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG) |
                                       APP_BIT(NOLTDEVSDK_SPECIAL_ON_BATTERY_WORK_MODE);
static const unsigned supported_items = APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE) |
                                        APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND) |
                                        APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE) |
                                        APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG) |
                                        APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE) |
                                        APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS);

/* only what the chime does can be changed or made to fail; the rest it never does */
int noltdev_app_control(const char *request) {
    return app_control(request, supported_msgs, supported_items, change_item);
}

int noltdev_app_start(void) {
    return app_start(on_msg, on_query);
}

void noltdev_app_stop(void) {
    noltDevSDK_special_fini();
}
