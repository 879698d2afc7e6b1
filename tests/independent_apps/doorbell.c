/* A video doorbell base: it rings, mutes with one click, wakes its paired chimes, plays
 * the drive-out warning, takes radio updates and reports the chime's network link.
 * Built twice, each build with one fault the qualifier must survive:
 *   DOORBELL_TRUSTS_WAKE_SERIAL  a wake for a chime that is not paired dereferences NULL
 *   DOORBELL_WAITS_FOR_RADIO     a radio update waits for a fetcher that never runs */
#define _POSIX_C_SOURCE 200809L

#include <pthread.h>
#include <string.h>
#include <unistd.h>

#include "app_control.h"

#define NOT_SUPPORTED NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT
#define BAD_RECORD NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM
#define MAX_CHIMES 4

struct chime {
    char serial[16];
    int wake_pending;
};

struct doorbell {
    pthread_mutex_t lock; /* every field below */
    struct chime chimes[MAX_CHIMES];
    int chime_count; /* none paired out of the box */
    int linger_alarm;
    noltDevSDK_special_ring_type ring;
    noltDevSDK_special_one_click_mute mute;
    noltDevSDK_special_associated_device_conn_status link;
    int drive_out_channel;
    char radio_url[512];
    int radio_fetched; /* set by the fetcher once the file is on flash */
};

static struct doorbell bell = {
    .lock = PTHREAD_MUTEX_INITIALIZER,
    .linger_alarm = 1,
    .ring = {.type = 2, .index = 1, .vol = 70},
    .link = {.conn_status = 1,
             .signal = -52,
             .ssid = "home-2.4G",
             .interface_name = "wlan0",
             .local_ip = "192.168.1.31",
             .mask = "255.255.255.0",
             .gateway = "192.168.1.1",
             .db_serial = "DB0000000031"},
};

static struct chime *find_chime(const char *serial) {
    for (int i = 0; i < bell.chime_count; ++i)
        if (strncmp(bell.chimes[i].serial, serial, sizeof bell.chimes[i].serial) == 0)
            return &bell.chimes[i];
    return NULL;
}

static int wake_chime(const noltDevSDK_wake *wake) {
    struct chime *chime = find_chime(wake->subserial);
#ifndef DOORBELL_TRUSTS_WAKE_SERIAL
    if (chime == NULL)
        return BAD_RECORD;
#endif
    chime->wake_pending = 1;
    return 0;
}

static int update_radio(const noltDevSDK_special_drive_out_radio_update *update) {
    app_copy_text(bell.radio_url, sizeof bell.radio_url, update->url);
    bell.radio_fetched = 0;
#ifdef DOORBELL_WAITS_FOR_RADIO
    /* answer only once the new warning is on flash */
    pthread_mutex_unlock(&bell.lock);
    for (;;) {
        pthread_mutex_lock(&bell.lock);
        int fetched = bell.radio_fetched;
        pthread_mutex_unlock(&bell.lock);
        if (fetched)
            break;
        sleep(1);
    }
    pthread_mutex_lock(&bell.lock);
#endif
    return 0;
}

static int on_msg(noltDevSDK_special_msg_to_dev *msg) {
    int result = 0;

    if (msg == NULL)
        return BAD_RECORD;
    if (app_answer_forced(APP_RECV_MSG, msg->type, &result))
        return result;
    pthread_mutex_lock(&bell.lock);
    switch (msg->type) {
    case NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE: {
        const noltDevSDK_special_switch_enable *sw = msg->data;
        if (!APP_FITS(sw, msg->len, *sw))
            result = BAD_RECORD;
        else if (sw->type != NOLTDEVSDK_SPECIAL_SWITCH_TYPE_LINGER_ALARM)
            result = NOT_SUPPORTED;
        else
            bell.linger_alarm = sw->enable != 0;
        break;
    }
    case NOLTDEVSDK_SPECIAL_ON_WAKE:
        result = APP_FITS(msg->data, msg->len, noltDevSDK_wake) ? wake_chime(msg->data) : BAD_RECORD;
        break;
    case NOLTDEVSDK_SPECIAL_ON_UNBINDUSER:
        result = APP_FITS(msg->data, msg->len, noltDevSDK_special_unbind_user) ? 0 : BAD_RECORD;
        break;
    case NOLTDEVSDK_SPECIAL_ON_PROWL_DRIVE_OUT:
        if (APP_FITS(msg->data, msg->len, noltDevSDK_special_prowl_drive_out))
            bell.drive_out_channel = ((const noltDevSDK_special_prowl_drive_out *)msg->data)->channel;
        else
            result = BAD_RECORD;
        break;
    case NOLTDEVSDK_SPECIAL_ON_DRIVE_OUT_RADIO_UPDATE:
        result = APP_FITS(msg->data, msg->len, noltDevSDK_special_drive_out_radio_update)
                     ? update_radio(msg->data)
                     : BAD_RECORD;
        break;
    case NOLTDEVSDK_SPECIAL_ON_RING_SOUND:
        if (APP_FITS(msg->data, msg->len, bell.ring))
            memcpy(&bell.ring, msg->data, sizeof bell.ring);
        else
            result = BAD_RECORD;
        break;
    case NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_ONE_CLICK_MUTE:
        if (APP_FITS(msg->data, msg->len, bell.mute))
            memcpy(&bell.mute, msg->data, sizeof bell.mute);
        else
            result = BAD_RECORD;
        break;
    default:
        result = NOT_SUPPORTED;
        break;
    }
    pthread_mutex_unlock(&bell.lock);
    return result;
}

static int fill_record(noltDevSDK_special_runtime_info *info) {
    switch (info->type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE: {
        noltDevSDK_special_switch_enable *sw = info->data;
        if (!APP_FITS(sw, info->len, *sw))
            return BAD_RECORD;
        if (sw->type != NOLTDEVSDK_SPECIAL_SWITCH_TYPE_LINGER_ALARM)
            return NOT_SUPPORTED;
        sw->enable = bell.linger_alarm;
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS:
        if (!APP_FITS(info->data, info->len, bell.link))
            return BAD_RECORD;
        memcpy(info->data, &bell.link, sizeof bell.link);
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND:
        if (!APP_FITS(info->data, info->len, bell.ring))
            return BAD_RECORD;
        memcpy(info->data, &bell.ring, sizeof bell.ring);
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE:
        if (!APP_FITS(info->data, info->len, bell.mute))
            return BAD_RECORD;
        memcpy(info->data, &bell.mute, sizeof bell.mute);
        return 0;
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
    pthread_mutex_lock(&bell.lock);
    result = fill_record(info);
    pthread_mutex_unlock(&bell.lock);
    return result;
}

static const unsigned supported_msgs =
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE) | APP_BIT(NOLTDEVSDK_SPECIAL_ON_WAKE) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_UNBINDUSER) | APP_BIT(NOLTDEVSDK_SPECIAL_ON_PROWL_DRIVE_OUT) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_DRIVE_OUT_RADIO_UPDATE) | APP_BIT(NOLTDEVSDK_SPECIAL_ON_RING_SOUND) |
    APP_BIT(NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_ONE_CLICK_MUTE);
static const unsigned supported_items = APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE) |
                                        APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS) |
                                        APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND) |
                                        APP_BIT(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE);

static int change_item(int type) {
    pthread_mutex_lock(&bell.lock);
    switch (type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE:
        bell.linger_alarm = !bell.linger_alarm;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS:
        bell.link.signal = bell.link.signal < -80 ? -40 : bell.link.signal - 5;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND:
        bell.ring.vol = bell.ring.vol >= 100 ? 10 : bell.ring.vol + 10;
        break;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE:
        bell.mute.enable = !bell.mute.enable;
        break;
    }
    pthread_mutex_unlock(&bell.lock);
    return 0;
}

/* only what the doorbell has can be changed or made to fail */
int noltdev_app_control(const char *request) {
    return app_control(request, supported_msgs, supported_items, change_item);
}

int noltdev_app_start(void) {
    return app_start(on_msg, on_query);
}

void noltdev_app_stop(void) {
    noltDevSDK_special_fini();
}
