/* A minimal application of the special domain module on the host SDK: it brings the
 * module up with both callbacks, plays the platform's part by injecting a delayed-sleep
 * command, prints what the module hands over and what it answers, then shuts down. */
#include <stdio.h>
#include <string.h>

#include <noltDevSDK_special_def.h>
#include <noltDevSDK_special_protocol.h>
#include <noltdev_host.h>

static int g_received;
static int g_answers;

/* The module hands the application one platform instruction. */
static int on_recv_msg(noltDevSDK_special_msg_to_dev *msg) {
    g_received++;
    printf("recv_msg: type %d, %d bytes\n", msg->type, msg->len);
    if (msg->type == NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP) {
        const noltDevSDK_special_delay_sleep_type *sleep =
            (const noltDevSDK_special_delay_sleep_type *)msg->data;
        printf("  delay sleep: channel %d, type %d\n", sleep->channel, sleep->type);
    }
    return 0;
}

/* The module asks for the device's state; this sample device has none to tell. */
static int on_get_runtime_info(noltDevSDK_special_runtime_info *info) {
    (void)info;
    return -1;
}

/* Everything the module sends to the platform arrives here. */
static int on_platform_message(const noltdev_host_message *msg, void *user) {
    (void)user;
    if (msg->response && msg->command_id == kCenPlt2PuSetDelaySleepRsp) {
        g_answers++;
    }
    printf("to platform: command %u, seq %u, %s\n%s\n", (unsigned)msg->command_id, (unsigned)msg->seq,
           msg->response ? "answer" : "request", msg->body);
    return 0;
}

int main(void) {
    static const char body[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                               "<Request><Info Channel=\"1\" Type=\"2\"/></Request>";
    noltDevSDK_special_init_info init;
    int rc;

    noltdev_host_set_log_level(1);
    noltdev_host_set_sink(on_platform_message, NULL);

    memset(&init, 0, sizeof(init));
    init.cb.recv_msg = on_recv_msg;
    init.cb.get_runtime_info = on_get_runtime_info;
    rc = noltDevSDK_special_init(&init);
    printf("init: %d\n", rc);
    if (rc != 0) {
        return 1;
    }

    rc = noltdev_host_inject(NOLTDEVSDK_SPECIAL_DOMAIN_ID, kCenPlt2PuSetDelaySleepReq, 7, body, (uint32_t)strlen(body));
    printf("inject: %d\n", rc);

    noltDevSDK_special_fini();
    printf("fini: received %d, answered %d\n", g_received, g_answers);
    return (rc == 0 && g_received == 1 && g_answers == 1) ? 0 : 1;
}
