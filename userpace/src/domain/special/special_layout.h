/* Compile-time check of the record sizes the platform and the application rely on. The
 * quoted sizes are those of the 32-bit target; on a host with 64-bit pointers or time_t
 * the records holding them are larger and the check stands down. */
#ifndef SPECIAL_LAYOUT_H
#define SPECIAL_LAYOUT_H

#include <time.h>

#include "noltDevSDK_special_def.h"

#define SPECIAL_TARGET_LAYOUT (sizeof(void *) == 4 && sizeof(time_t) == 4)
#define SPECIAL_CHECK_SIZE(type, size)                                                                       \
    static_assert(!SPECIAL_TARGET_LAYOUT || sizeof(type) == (size),                                          \
                  #type " must be " #size " bytes on the target")

SPECIAL_CHECK_SIZE(noltDevSDK_special_msg_to_dev, 12);
SPECIAL_CHECK_SIZE(noltDevSDK_special_runtime_info, 12);
SPECIAL_CHECK_SIZE(noltDevSDK_special_callback, 8);
SPECIAL_CHECK_SIZE(noltDevSDK_special_trans_cmd_msg, 20);
SPECIAL_CHECK_SIZE(noltDevSDK_special_flow_counting_seg, 16);
SPECIAL_CHECK_SIZE(noltDevSDK_special_flow_counting_cfg, 40);
SPECIAL_CHECK_SIZE(noltDevSDK_special_switch_enable, 12);
SPECIAL_CHECK_SIZE(noltDevSDK_special_delay_sleep_type, 8);
SPECIAL_CHECK_SIZE(noltDevSDK_special_operate_custom_voice, 588);
SPECIAL_CHECK_SIZE(noltDevSDK_linkage_mode_status, 40);
SPECIAL_CHECK_SIZE(noltDevSDK_wake, 16);
SPECIAL_CHECK_SIZE(noltDevSDK_special_unbind_user, 4);
SPECIAL_CHECK_SIZE(noltDevSDK_special_voddns_dev_info, 804);
SPECIAL_CHECK_SIZE(noltDevSDK_special_prowl_drive_out, 4);
SPECIAL_CHECK_SIZE(noltDevSDK_special_drive_out_radio_update, 516);
SPECIAL_CHECK_SIZE(noltDevSDK_special_battery_work_mode, 4);
SPECIAL_CHECK_SIZE(noltDevSDK_special_ring_type, 12);
SPECIAL_CHECK_SIZE(noltDevSDK_special_speaker_config, 16);
SPECIAL_CHECK_SIZE(noltDevSDK_special_plan, 432);
SPECIAL_CHECK_SIZE(noltDevSDK_special_net_work_mode, 4);
SPECIAL_CHECK_SIZE(noltDevSDK_special_one_click_mute, 4);
SPECIAL_CHECK_SIZE(noltDevSDK_special_key_value, 12);
SPECIAL_CHECK_SIZE(noltDevSDK_special_custom_voice_infos, 9476);
SPECIAL_CHECK_SIZE(noltDevSDK_special_battery_workstatus, 12);
SPECIAL_CHECK_SIZE(noltDevSDK_Trusteeship, 16);
SPECIAL_CHECK_SIZE(noltDevSDK_trusteeship_subserial, 24);
SPECIAL_CHECK_SIZE(noltDevSDK_PowerStatus_subserial, 112);
SPECIAL_CHECK_SIZE(noltDevSDK_Special_DelTrusteeship_Param_S, 88);
SPECIAL_CHECK_SIZE(noltDevSDK_Special_DelTrusteeship_S, 8);
SPECIAL_CHECK_SIZE(noltDevSDK_special_voddns_local_mapped_infos, 672);
SPECIAL_CHECK_SIZE(noltDevSDK_special_associated_device_conn_status, 120);
SPECIAL_CHECK_SIZE(noltDevSDK_special_4G_Info_S, 108);
/* the module offers the application room for 8 children: a count and 8 entries */
static_assert(!SPECIAL_TARGET_LAYOUT ||
                  sizeof(noltDevSDK_Trusteeship_connect) + 8 * sizeof(noltDevSDK_trusteeship_subserial) ==
                      196,
              "trusteeship-connect buffer must be 196 bytes on the target");
static_assert(!SPECIAL_TARGET_LAYOUT ||
                  sizeof(noltDevSDK_PowerStatus) + 8 * sizeof(noltDevSDK_PowerStatus_subserial) == 900,
              "power-status buffer must be 900 bytes on the target");

#endif
