/* The public header as a C99 application sees it: it must compile as plain C and give
 * the same layout the module was built with. */
#include <stddef.h>

#include "noltDevSDK_special_def.h"

static int record_callback(noltDevSDK_special_msg_to_dev *msg) {
    return msg == NULL ? -1 : 0;
}
static int runtime_callback(noltDevSDK_special_runtime_info *info) {
    return info == NULL ? -1 : 0;
}

/* Sizes of the records as this C translation unit lays them out, in a fixed order that
 * the C++ side compares against its own sizeof. */
int special_c_record_sizes(size_t *out, int max) {
    const size_t sizes[] = {
#define SPECIAL_RECORD(expr) expr,
#include "public_records.inc"
#undef SPECIAL_RECORD
    };
    int n = (int)(sizeof sizes / sizeof sizes[0]);
    int i;
    for (i = 0; i < n && i < max; i++) {
        out[i] = sizes[i];
    }
    return n;
}

/* A C application can fill the init record and point at its callbacks. */
int special_c_init_info_ok(void) {
    noltDevSDK_special_init_info info;
    info.cb.recv_msg = record_callback;
    info.cb.get_runtime_info = runtime_callback;
    info.resetReportAll = 0;
    return info.cb.recv_msg(NULL) == -1 && NOLTDEVSDK_SPECIAL_CODE_FAIL < 0 &&
           NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR - NOLTDEVSDK_SPECIAL_CODE_MSG_DATA_INVAILD == 0x17;
}
