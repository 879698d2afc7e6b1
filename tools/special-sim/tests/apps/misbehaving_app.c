/* Test applications that end or stall the process from one callback, for the
 * qualification's crash and hang rows. One source, three builds:
 *   MISBEHAVE_CRASH  recv_msg dereferences NULL on the wake command
 *   MISBEHAVE_HANG   recv_msg never returns on the delay-sleep command
 *   MISBEHAVE_EXIT   recv_msg calls exit(3) on the wake command
 *   MISBEHAVE_POLL_HANG  get_runtime_info never returns for the battery's work status,
 *                    which every poll asks for
 *   MISBEHAVE_OVERLAP  get_runtime_info dereferences NULL when it runs while recv_msg
 *                    does (which takes a millisecond): only concurrency rows see it
 * Every other callback answers a zeroed record, or NOT_SUPPORT where it has none. */
#include <stddef.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <noltDevSDK_special_def.h>

static volatile int *g_nowhere; /* stays NULL */
static volatile int g_in_recv;  /* MISBEHAVE_OVERLAP: recv_msg is running */

static int on_recv_msg(noltDevSDK_special_msg_to_dev *msg) {
#if defined(MISBEHAVE_CRASH)
    if (msg->type == NOLTDEVSDK_SPECIAL_ON_WAKE) {
        return *g_nowhere;
    }
#elif defined(MISBEHAVE_HANG)
    if (msg->type == NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP) {
        for (;;) {
            pause();
        }
    }
#elif defined(MISBEHAVE_EXIT)
    if (msg->type == NOLTDEVSDK_SPECIAL_ON_WAKE) {
        exit(3);
    }
#elif defined(MISBEHAVE_OVERLAP)
    g_in_recv = 1;
    usleep(1000);
    g_in_recv = 0;
#endif
    (void)g_nowhere;
    return msg->data != NULL ? 0 : NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
}

static int on_get_runtime_info(noltDevSDK_special_runtime_info *info) {
    if (g_in_recv) {
        return *g_nowhere;
    }
#if defined(MISBEHAVE_POLL_HANG)
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS) {
        for (;;) {
            pause();
        }
    }
#endif
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP || info->data == NULL || info->len <= 0) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    }
    memset(info->data, 0, (size_t)info->len);
    return 0;
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
