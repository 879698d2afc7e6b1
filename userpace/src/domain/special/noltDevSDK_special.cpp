/* Module lifecycle (init, fini, the stored callbacks and the init flag) and the
 * operations the application starts. */
#include <string.h>

#include "log_ctrl.h"
#include "noltDevSDK_report_status.h"
#include "special.h"
#include "special_extern.h"
#include "special_layout.h"

int g_special_init_status = 0;
static noltDevSDK_special_callback g_special_cb = {NULL, NULL};

void SpecialSetCallback(const noltDevSDK_special_callback *cb) {
    g_special_cb.recv_msg = cb->recv_msg;
    g_special_cb.get_runtime_info = cb->get_runtime_info;
}

noltDevSDK_special_callback *GetSpecialCallback(void) {
    return &g_special_cb;
}

int noltDevSDK_special_init(noltDevSDK_special_init_info *info) {
    if (g_special_init_status != 0) {
        return NOLTDEVSDK_SPECIAL_CODE_FAIL;
    }
    g_special_init_status = 1;
    noltdev_debug(LOG_DEBUG, "noltDevSDK_special_init enter\n");
    if (info == NULL) {
        /* the flag stays 1: every later init fails until fini */
        noltdev_debug(LOG_ERROR, "noltDevSDK_special_init param is error\n");
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    /* callbacks first, so the kernel's threads never see them NULL after init */
    SpecialSetCallback(&info->cb);
    noltDevSDK_report_status_init();

    /* INIT-STATUS: register the status items here. */
    /* INIT-SHADOW: start the shadow service here (twice). */

    int result = 0;
    if (special_extern_init() != 0) {
        /* the items, shadow service and callbacks stay; a later init sets them again */
        g_special_init_status = 0;
        result = NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL;
    }
    noltdev_debug(LOG_DEBUG, "noltDevSDK_special_init over\n");
    return result;
}

int noltDevSDK_special_fini(void) {
    if (g_special_init_status == 0) {
        return 0;
    }
    g_special_init_status = 0;
    /* FINI-STATUS: unregister the status items here. */
    noltDevSDK_report_status_fini();
    /* FINI-SHADOW: stop the shadow service here. */
    special_extern_fini();
    return 0;
}
