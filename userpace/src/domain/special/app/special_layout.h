/* Compile-time check of the record sizes the platform and the application rely on. A
 * 32-bit target lays the records out in one of two ways: with a 32-bit time_t (the quoted
 * sizes) or with a 64-bit one (a C library built for dates past 2038: every time_t field
 * grows to 8 bytes and is aligned to 8). Each record has one row with both sizes; on a
 * target with 64-bit pointers (arm64, s390x, the PC) the records holding them are larger
 * than the quoted sizes and the check stands down. */
#ifndef SPECIAL_LAYOUT_H
#define SPECIAL_LAYOUT_H

#include <time.h>

#include "noltDevSDK_special_def.h"

/* The layouts the table knows: 0 means the check stands down. */
#define SPECIAL_LAYOUT_UNCHECKED 0
#define SPECIAL_LAYOUT_TIME32 1
#define SPECIAL_LAYOUT_TIME64 2
#define SPECIAL_TARGET_LAYOUT                                                                                \
    (sizeof(void *) != 4   ? SPECIAL_LAYOUT_UNCHECKED                                                        \
     : sizeof(time_t) == 4 ? SPECIAL_LAYOUT_TIME32                                                           \
     : sizeof(time_t) == 8 ? SPECIAL_LAYOUT_TIME64                                                           \
                           : SPECIAL_LAYOUT_UNCHECKED)

static_assert(sizeof(void *) != 4 || sizeof(time_t) == 4 || sizeof(time_t) == 8,
              "a 32-bit target has a 4- or an 8-byte time_t");

/* The size a row quotes for the layout being built. */
#define SPECIAL_TARGET_SIZE(size_time32, size_time64)                                                        \
    (SPECIAL_TARGET_LAYOUT == SPECIAL_LAYOUT_TIME32 ? (size_time32) : (size_time64))

/* One row per record: SPECIAL_RECORD_SIZE(type, size with 32-bit time_t, size with 64-bit
 * time_t). Records without a time_t have the same size in both. */
#define SPECIAL_RECORD_SIZES(SPECIAL_RECORD_SIZE)                                                            \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_msg_to_dev, 12, 12)                                               \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_runtime_info, 12, 12)                                             \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_callback, 8, 8)                                                   \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_trans_cmd_msg, 20, 20)                                            \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_flow_counting_seg, 16, 24)                                        \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_flow_counting_seg_count, 164, 248)                                \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_flow_counting_cfg, 40, 40)                                        \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_switch_enable, 12, 12)                                            \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_delay_sleep_type, 8, 8)                                           \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_operate_custom_voice, 588, 588)                                   \
    SPECIAL_RECORD_SIZE(noltDevSDK_linkage_mode_status, 40, 40)                                              \
    SPECIAL_RECORD_SIZE(noltDevSDK_wake, 16, 16)                                                             \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_unbind_user, 4, 4)                                                \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_voddns_dev_info, 804, 804)                                        \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_prowl_drive_out, 4, 4)                                            \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_drive_out_radio_update, 516, 516)                                 \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_battery_work_mode, 4, 4)                                          \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_ring_type, 12, 12)                                                \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_speaker_config, 16, 16)                                           \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_work_mode_time_segment, 12, 24)                                   \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_plan, 432, 856)                                                   \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_net_work_mode, 4, 4)                                              \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_one_click_mute, 4, 4)                                             \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_key_value, 12, 12)                                                \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_custom_voice_info, 592, 600)                                      \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_custom_voice_infos, 9476, 9608)                                   \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_battery_workstatus, 12, 12)                                       \
    SPECIAL_RECORD_SIZE(noltDevSDK_Trusteeship, 16, 16)                                                      \
    SPECIAL_RECORD_SIZE(noltDevSDK_trusteeship_subserial, 24, 24)                                            \
    SPECIAL_RECORD_SIZE(noltDevSDK_PowerStatus_subserial, 112, 112)                                          \
    SPECIAL_RECORD_SIZE(noltDevSDK_Special_DelTrusteeship_Param_S, 88, 88)                                   \
    SPECIAL_RECORD_SIZE(noltDevSDK_Special_DelTrusteeship_S, 8, 8)                                           \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_voddns_local_mapped_infos, 672, 672)                              \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_associated_device_conn_status, 120, 120)                          \
    SPECIAL_RECORD_SIZE(noltDevSDK_special_4G_Info_S, 108, 108)

#define SPECIAL_CHECK_SIZE(type, size_time32, size_time64)                                                   \
    static_assert(SPECIAL_TARGET_LAYOUT == SPECIAL_LAYOUT_UNCHECKED ||                                       \
                      sizeof(type) == SPECIAL_TARGET_SIZE(size_time32, size_time64),                         \
                  #type " must be " #size_time32 " bytes on the target (" #size_time64                       \
                        " with a 64-bit time_t)");
SPECIAL_RECORD_SIZES(SPECIAL_CHECK_SIZE)
#undef SPECIAL_CHECK_SIZE

/* the module offers the application room for 8 children: a count and 8 entries */
static_assert(SPECIAL_TARGET_LAYOUT == SPECIAL_LAYOUT_UNCHECKED ||
                  sizeof(noltDevSDK_Trusteeship_connect) + 8 * sizeof(noltDevSDK_trusteeship_subserial) ==
                      SPECIAL_TARGET_SIZE(196, 196),
              "trusteeship-connect buffer must be 196 bytes on the target");
static_assert(SPECIAL_TARGET_LAYOUT == SPECIAL_LAYOUT_UNCHECKED ||
                  sizeof(noltDevSDK_PowerStatus) + 8 * sizeof(noltDevSDK_PowerStatus_subserial) ==
                      SPECIAL_TARGET_SIZE(900, 900),
              "power-status buffer must be 900 bytes on the target");

#endif
