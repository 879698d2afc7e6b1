/* The sample application with one answer changed: it refuses the people-counting setting
 * (recv_msg type 0). A replay of a log the sample wrote must depart at the device's
 * answer to that setting. */
#define noltdev_app_start sample_app_start
#include "app.c"
#undef noltdev_app_start

int noltdev_app_start(void);

int noltdev_app_start(void) {
    int rc = sample_app_start();
    return rc != 0 ? rc : noltdev_app_control("answer recv_msg 0 -1");
}
