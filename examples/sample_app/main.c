/* The sample application's device main on the host SDK: it brings the module up through
 * the application library (sample_app.h), plays the platform's part by injecting a
 * delayed-sleep command, prints what the module answers, then shuts down. The same
 * library runs under special-sim --app. */
#include <stdio.h>
#include <string.h>

#include <noltDevSDK_special_protocol.h>
#include <noltdev_host.h>

#include "sample_app.h"

static int g_answers;

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
    int rc;

    noltdev_host_set_log_level(1);
    noltdev_host_set_sink(on_platform_message, NULL);

    rc = noltdev_app_start();
    printf("init: %d\n", rc);
    if (rc != 0) {
        return 1;
    }

    rc = noltdev_host_inject(NOLTDEVSDK_SPECIAL_DOMAIN_ID, kCenPlt2PuSetDelaySleepReq, 7, body,
                             (uint32_t)strlen(body));
    printf("inject: %d\n", rc);

    noltdev_app_stop();
    printf("fini: received %d, answered %d\n", sample_app_received(), g_answers);
    return (rc == 0 && sample_app_received() == 1 && g_answers == 1) ? 0 : 1;
}
