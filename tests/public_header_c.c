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
        sizeof(noltDevSDK_special_msg_to_dev),
        sizeof(noltDevSDK_special_trans_cmd_msg),
        sizeof(noltDevSDK_special_flow_counting_cfg),
        sizeof(noltDevSDK_special_operate_custom_voice),
        sizeof(noltDevSDK_special_voddns_dev_info),
        sizeof(noltDevSDK_special_plan),
        sizeof(noltDevSDK_special_custom_voice_infos),
        sizeof(noltDevSDK_Special_DelTrusteeship_Param_S),
        sizeof(noltDevSDK_Special_DelTrusteeship_S),
        offsetof(noltDevSDK_Special_DelTrusteeship_S, astUnit),
        sizeof(noltDevSDK_special_voddns_local_mapped_infos),
        sizeof(noltDevSDK_special_associated_device_conn_status),
        sizeof(noltDevSDK_special_4G_Info_S),
        sizeof(noltDevSDK_special_flow_counting_seg_count),
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
