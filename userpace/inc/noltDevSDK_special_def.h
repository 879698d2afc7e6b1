/**
 * @file noltDevSDK_special_def.h
 * @brief Public interface of the "special" domain module: result codes, message and
 *        runtime-info types, the payload records exchanged with the application, and
 *        the exported functions.
 *
 * Every record has a fixed layout; the sizes quoted in the comments are those of the
 * 32-bit target (32-bit pointers and time_t). Records handed to the application are
 * owned by the module and valid only during the callback. Text fields of N bytes hold
 * at most N-1 characters and are always NUL-terminated. Valid C99 and C++.
 */
#ifndef NOLTDEVSDK_SPECIAL_DEF_H
#define NOLTDEVSDK_SPECIAL_DEF_H

#include <time.h>

#include "noltDevSDK_special_build.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @brief Marks the module's exported functions; every other symbol stays inside it. */
#if defined(__GNUC__)
#define NOLTDEVSDK_SPECIAL_API __attribute__((visibility("default")))
#else
#define NOLTDEVSDK_SPECIAL_API
#endif

/* ---- layout guard ------------------------------------------------------------------ */

/** @brief Stops the compilation of code whose data layout differs from the module's
 *  build: `cond` false names the fault and what to change. C99 has no static assertion,
 *  so there the name of a negative-size array type carries the message. */
#if defined(__cplusplus) && __cplusplus >= 201103L
#define NOLTDEVSDK_SPECIAL_LAYOUT_CHECK(name, cond, text) static_assert(cond, text)
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
#define NOLTDEVSDK_SPECIAL_LAYOUT_CHECK(name, cond, text) _Static_assert(cond, text)
#else
#define NOLTDEVSDK_SPECIAL_LAYOUT_CHECK(name, cond, text) typedef char name[(cond) ? 1 : -1]
#endif

NOLTDEVSDK_SPECIAL_LAYOUT_CHECK(
    noltDevSDK_special_time_t_differs_from_the_module_build__use_its_TIME_BITS,
    sizeof(time_t) == NOLTDEVSDK_SPECIAL_BUILT_TIME_T_SIZE,
    "time_t differs from the module's build: compile the application with the module's "
    "_TIME_BITS (NOLTDEVSDK_SPECIAL_BUILT_TIME_T_SIZE in noltDevSDK_special_build.h) or link "
    "a module built for this time_t");
NOLTDEVSDK_SPECIAL_LAYOUT_CHECK(
    noltDevSDK_special_pointer_size_differs_from_the_module_build__use_its_target,
    sizeof(void *) == NOLTDEVSDK_SPECIAL_BUILT_POINTER_SIZE,
    "pointers differ from the module's build: the module was built for another target "
    "(NOLTDEVSDK_SPECIAL_BUILT_POINTER_SIZE in noltDevSDK_special_build.h)");

/** @brief Result codes; 0 is success, every error is negative as a signed int. */
typedef enum {
    NOLTDEVSDK_SPECIAL_SUCESS = 0,
    NOLTDEVSDK_SPECIAL_CODE_BASE = (int)0xD3999000,
    NOLTDEVSDK_SPECIAL_CODE_FAIL = (int)0xD3999001,
    NOLTDEVSDK_SPECIAL_CODE_NOT_INITED = (int)0xD3999002,
    NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM = (int)0xD3999003,
    NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT = (int)0xD3999004,
    NOLTDEVSDK_SPECIAL_CODE_NOT_ENOUGH_MEMERY = (int)0xD3999005,
    NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL = (int)0xD3999006,
    NOLTDEVSDK_SPECIAL_CODE_THREAD_CREATE_FAIL = (int)0xD3999007,
    NOLTDEVSDK_SPECIAL_CODE_RSP_TIMEOUT = (int)0xD3999008,
    NOLTDEVSDK_SPECIAL_CODE_MSG_DATA_INVAILD = (int)0xD3999009,
    /* codes from 0x20 up are transport and voice errors */
    NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR = (int)0xD3999020,
    NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR = (int)0xD3999021,
    NOLTDEVSDK_SPECIAL_CODE_VOICE_DOWNLOAD_FAILED = (int)0xD3999022,
    NOLTDEVSDK_SPECIAL_CODE_VOICE_NOT_EXIST = (int)0xD3999023,
    NOLTDEVSDK_SPECIAL_CODE_VOICE_IS_BUSY = (int)0xD3999024,
    NOLTDEVSDK_SPECIAL_CODE_VOICE_COUNT_LIMITED = (int)0xD3999025
} NOLTDEVSDK_SPECIAL_CODE_E;

/** @brief The `type` of a noltDevSDK_special_msg_to_dev (module to application). */
typedef enum {
    NOLTDEVSDK_SPECIAL_ON_SET_FLOW_COUNTING_CFG = 0,       /**< noltDevSDK_special_flow_counting_cfg */
    NOLTDEVSDK_SPECIAL_ON_SET_SWITCH_ENABLE = 1,           /**< noltDevSDK_special_switch_enable */
    NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP = 2,                 /**< noltDevSDK_special_delay_sleep_type */
    NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE = 3,        /**< noltDevSDK_special_operate_custom_voice */
    NOLTDEVSDK_SPECIAL_ON_SET_LINKAGE_MODE_STATUS = 4,     /**< noltDevSDK_linkage_mode_status */
    NOLTDEVSDK_SPECIAL_ON_WAKE = 5,                        /**< noltDevSDK_wake */
    NOLTDEVSDK_SPECIAL_ON_DEL_TRUSTEESHIP = 6,             /**< noltDevSDK_Special_DelTrusteeship_S */
    NOLTDEVSDK_SPECIAL_ON_TRANS_CMD_MSG = 7,               /**< noltDevSDK_special_trans_cmd_msg */
    NOLTDEVSDK_SPECIAL_ON_UNBINDUSER = 8,                  /**< noltDevSDK_special_unbind_user */
    NOLTDEVSDK_SPECIAL_ON_SET_VODDNS_MAPPED_PORT = 9,      /**< noltDevSDK_special_voddns_dev_info */
    NOLTDEVSDK_SPECIAL_ON_SAVE_FACE_DET_INFO = 10,         /**< not delivered by any route */
    NOLTDEVSDK_SPECIAL_ON_EDIT_FACE_DET_INFO = 11,         /**< not delivered by any route */
    NOLTDEVSDK_SPECIAL_ON_DELETE_FACE_DET_INFO = 12,       /**< not delivered by any route */
    NOLTDEVSDK_SPECIAL_ON_QUERY_FACE_DET_INFO = 13,        /**< not delivered by any route */
    NOLTDEVSDK_SPECIAL_ON_PROWL_DRIVE_OUT = 14,            /**< noltDevSDK_special_prowl_drive_out */
    NOLTDEVSDK_SPECIAL_ON_DRIVE_OUT_RADIO_UPDATE = 15,     /**< noltDevSDK_special_drive_out_radio_update */
    NOLTDEVSDK_SPECIAL_ON_BATTERY_WORK_MODE = 16,          /**< noltDevSDK_special_battery_work_mode */
    NOLTDEVSDK_SPECIAL_ON_RING_SOUND = 17,                 /**< noltDevSDK_special_ring_type */
    NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_PLAN = 18,           /**< noltDevSDK_special_plan */
    NOLTDEVSDK_SPECIAL_ON_NET_WORK_MODE = 19,              /**< noltDevSDK_special_net_work_mode */
    NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_ONE_CLICK_MUTE = 20, /**< noltDevSDK_special_one_click_mute */
    NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG = 21, /**< noltDevSDK_special_speaker_config */
    NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_MAX = 22            /**< count, never delivered */
} NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_E;

/** @brief The `type` of a noltDevSDK_special_runtime_info (application fills). */
typedef enum {
    NOLTDEVSDK_SPECIAL_ON_GET_FLOW_COUNTING_CFG = 0,   /**< noltDevSDK_special_flow_counting_cfg */
    NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE = 1,       /**< noltDevSDK_special_switch_enable */
    NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE = 2,           /**< noltDevSDK_special_key_value */
    NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS = 3,  /**< noltDevSDK_special_custom_voice_infos */
    NOLTDEVSDK_SPECIAL_ON_GET_LINKAGE_MODE_STATUS = 4, /**< noltDevSDK_linkage_mode_status */
    NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS = 5, /**< noltDevSDK_special_battery_workstatus */
    NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP = 6,         /**< noltDevSDK_Trusteeship */
    NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT = 7, /**< noltDevSDK_Trusteeship_connect */
    NOLTDEVSDK_SPECIAL_ON_GET_POWERSTATUS = 8,         /**< noltDevSDK_PowerStatus */
    /** noltDevSDK_Special_DelTrusteeship_S, malloc'ed by the application, freed by the module */
    NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP = 9,
    NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT = 10, /**< noltDevSDK_special_voddns_local_mapped_infos */
    /** noltDevSDK_special_associated_device_conn_status */
    NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS = 11,
    NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE = 12,      /**< noltDevSDK_special_battery_work_mode */
    NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND = 13,             /**< noltDevSDK_special_ring_type */
    NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN = 14,           /**< noltDevSDK_special_plan */
    NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE = 15,          /**< noltDevSDK_special_net_work_mode */
    NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO = 16,                /**< noltDevSDK_special_4G_Info_S */
    NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE = 17, /**< noltDevSDK_special_one_click_mute */
    NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG = 18, /**< noltDevSDK_special_speaker_config */
    NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_MAX = 19          /**< count */
} NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_E;

/** @brief Feature switches (the `type` of noltDevSDK_special_switch_enable). */
typedef enum {
    NOLTDEVSDK_SPECIAL_SWITCH_TYPE_FLOW_COUNT = 0,            /**< platform switch 15 */
    NOLTDEVSDK_SPECIAL_SWITCH_TYPE_LINGER_ALARM = 1,          /**< platform switch 613 */
    NOLTDEVSDK_SPECIAL_SWITCH_TYPE_FACE_RECOGNITION = 2,      /**< platform switch 614 */
    NOLTDEVSDK_SPECIAL_SWITCH_TYPE_DISTORTION_CORRECTION = 3, /**< platform switch 617 */
    NOLTDEVSDK_SPECIAL_SWITCH_TYPE_CHIME_INDICATOR_LIGHT = 4, /**< platform switch 611 */
    NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX = 5
} NOLTDEVSDK_SPECIAL_SWITCH_ENABLE_TYPE_E;

/** @brief Keys of noltDevSDK_special_key_value. */
typedef enum {
    NOLTDEVSDK_SPECIAL_KEY_ICR_STATUS = 0, /**< infrared-cut filter state */
    NOLTDEVSDK_SPECIAL_KEY_TYPE_MAX = 1
} NOLTDEVSDK_SPECIAL_KEY_VALUE_TYPE_E;

/** @brief Plan kinds (the `type` of noltDevSDK_special_plan). */
typedef enum {
    NOLTDEVSDK_SPECIAL_WORK_MODE_PLAN = 0,
    NOLTDEVSDK_SPECIAL_PLAN_MAX = 1
} NOLTDEVSDK_SPECIAL_PLAN_TYPE_E;

/** @brief Device-initiated requests (the `msg_type` of noltDevSDK_special_msg). */
typedef enum {
    NOLTDEVSDK_SPECIAL_UNBIND_USER = 0,              /**< msg_struct_ptr ignored */
    NOLTDEVSDK_SPECIAL_SEND_VERIFICATION_CODE = 1,   /**< noltDevSDK_special_send_verification_code */
    NOLTDEVSDK_SPECIAL_QUERY_VODDNS_MAPPED_PORT = 2, /**< noltDevSDK_special_query_voddns_mapped_port */
    NOLTDEVSDK_SPECIAL_TRANS_4G_FLOW_INFO = 3,       /**< noltDevSDK_special_4G_flow_info_page */
    NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_COUNT = 4       /**< count; rejected as not supported */
} NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_TYPE_E;

/* ---- envelopes and callbacks --------------------------------------------------- */

/** @brief A platform instruction handed to the application's recv_msg (12 bytes). */
typedef struct {
    int type;   /**< NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_E */
    void *data; /**< the payload record of that type, valid during the call only */
    int len;    /**< size in bytes of the payload record */
} noltDevSDK_special_msg_to_dev;

/** @brief A state query handed to the application's get_runtime_info (12 bytes). */
typedef struct {
    int type;   /**< NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_E */
    void *data; /**< the record to fill (at most len bytes) */
    int len;    /**< size in bytes of that record */
} noltDevSDK_special_runtime_info;

/** @brief The application's two entry points (8 bytes). */
typedef struct {
    /** @brief Receives one platform instruction.
     *  @param msg the instruction; copy what you keep.
     *  @return 0 on success, non-zero otherwise. */
    int (*recv_msg)(noltDevSDK_special_msg_to_dev *msg);
    /** @brief Fills the record that info->data points to (at most info->len bytes).
     *  @param info the query.
     *  @return 0 on success, non-zero when the value cannot be given (a code whose low
     *          twelve bits are 4, such as NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT, means
     *          the item is not supported). */
    int (*get_runtime_info)(noltDevSDK_special_runtime_info *info);
} noltDevSDK_special_callback;

/** @brief Argument of noltDevSDK_special_init(). */
typedef struct {
    noltDevSDK_special_callback cb; /**< copied into the module at init */
    int resetReportAll;             /**< non-zero asks the shadow service to report afresh */
} noltDevSDK_special_init_info;

/** @brief A device-initiated request for noltDevSDK_special_send_msg(). */
typedef struct {
    NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_TYPE_E msg_type;
    void *msg_struct_ptr; /**< the record of msg_type; ignored for type 0 */
} noltDevSDK_special_msg;

/** @brief Verification code to send (128 bytes). */
typedef struct {
    char code[128];
} noltDevSDK_special_send_verification_code;

/** @brief Domain whose mapped ports are queried (128 bytes). */
typedef struct {
    char domain[128];
} noltDevSDK_special_query_voddns_mapped_port;

/** @brief A raw platform command passed through in either direction (20 bytes). */
typedef struct {
    char *content;          /**< message body, not necessarily NUL-terminated */
    int content_len;        /**< body length in bytes */
    unsigned int cmd_id;    /**< platform command identifier */
    unsigned char msg_type; /**< 0 request; on sending 1 marks a response */
    unsigned int msg_seq;   /**< the request's sequence number / the one to answer */
} noltDevSDK_special_trans_cmd_msg;

/** @brief Event record for noltDevSDK_special_post_event() (not supported). */
typedef struct {
    int iEvent;
    char *pcData;
    int iLen;
} noltDevSDK_special_post_event_info_S;

/** @brief One people-counting interval (16 bytes). */
typedef struct {
    int enter_num;
    int leave_num;
    time_t start_time; /**< seconds since 1970 UTC */
    time_t stop_time;  /**< seconds since 1970 UTC */
} noltDevSDK_special_flow_counting_seg;

/** @brief Argument of noltDevSDK_special_report_flow_counting(). */
typedef struct {
    int seg_count; /**< valid entries, 1 to 10 */
    noltDevSDK_special_flow_counting_seg seg[10];
} noltDevSDK_special_flow_counting_seg_count;

/* ---- payload records -------------------------------------------------------------- */

/** @brief People-flow counting geometry (40 bytes). */
typedef struct {
    int interval;       /**< counting interval in seconds */
    int angle_vectical; /**< vertical angle */
    float cross_line_x1, cross_line_y1, cross_line_x2, cross_line_y2;
    float vector_line_x1, vector_line_y1, vector_line_x2, vector_line_y2;
} noltDevSDK_special_flow_counting_cfg;

/** @brief One feature switch (12 bytes). */
typedef struct {
    int type; /**< NOLTDEVSDK_SPECIAL_SWITCH_ENABLE_TYPE_E */
    int channel;
    int enable; /**< 0 off, 1 on */
} noltDevSDK_special_switch_enable;

/** @brief Delayed sleep (8 bytes). */
typedef struct {
    int channel;
    int type;
} noltDevSDK_special_delay_sleep_type;

/** @brief A custom voice operation (588 bytes). */
typedef struct {
    int index; /**< voice slot */
    int type;  /**< the operation */
    char name[64];
    char url[512]; /**< where to fetch the voice file */
    int customVoice;
} noltDevSDK_special_operate_custom_voice;

/** @brief Linkage mode (40 bytes). */
typedef struct {
    int enable;
    int time;
    char acConnSerial[16]; /**< serial of the linked device */
    char acVerifyCode[16]; /**< that device's verification code */
} noltDevSDK_linkage_mode_status;

/** @brief Wake a child device (16 bytes). */
typedef struct {
    char subserial[16];
} noltDevSDK_wake;

/** @brief The platform's result of an unbind (4 bytes). */
typedef struct {
    int result;
} noltDevSDK_special_unbind_user;

/** @brief One port mapping (40 bytes). */
typedef struct {
    char type[32];
    int local_port;
    int nat_port;
} noltDevSDK_special_voddns_mapped_info;

/** @brief The platform's answer to a mapped-port query (804 bytes). */
typedef struct {
    int dev_status;
    char dev_serial[64];
    char domain[64];
    char nat_ip[16];
    char local_ip[16];
    noltDevSDK_special_voddns_mapped_info mapped_port_infos[16];
} noltDevSDK_special_voddns_dev_info;

/** @brief Prowl drive-out (4 bytes). */
typedef struct {
    int channel;
} noltDevSDK_special_prowl_drive_out;

/** @brief Drive-out radio update (516 bytes). */
typedef struct {
    int channel;
    char url[512];
} noltDevSDK_special_drive_out_radio_update;

/** @brief Battery camera work mode (4 bytes). */
typedef struct {
    int mode;
} noltDevSDK_special_battery_work_mode;

/** @brief Bell ring type (12 bytes). */
typedef struct {
    int type;
    int index;
    int vol; /**< volume */
} noltDevSDK_special_ring_type;

/** @brief One segment of a work-mode plan (12 bytes). */
typedef struct {
    int mode;
    time_t begin; /**< time of day as noltdev_ParseTimeHHMM gives it */
    time_t end;
} noltDevSDK_special_work_mode_time_segment;

/** @brief A week of at most five segments a day (420 bytes). */
typedef struct {
    noltDevSDK_special_work_mode_time_segment time[7][5]; /**< [weekday][segment] */
} noltDevSDK_special_work_mode_plan;

/** @brief A work-mode plan (432 bytes). */
typedef struct {
    int type; /**< NOLTDEVSDK_SPECIAL_PLAN_TYPE_E */
    int channel;
    int enable_plan;
    noltDevSDK_special_work_mode_plan special_work_mode_plan;
} noltDevSDK_special_plan;

/** @brief Network work mode (4 bytes). */
typedef struct {
    int mode;
} noltDevSDK_special_net_work_mode;

/** @brief One-click mute (4 bytes). */
typedef struct {
    int enable;
} noltDevSDK_special_one_click_mute;

/** @brief Speaker configuration (16 bytes). */
typedef struct {
    int ring_enable;
    int ring_index;
    int intel_enable;
    int intel_index;
} noltDevSDK_special_speaker_config;

/** @brief A key-value status (12 bytes). */
typedef struct {
    int key; /**< NOLTDEVSDK_SPECIAL_KEY_VALUE_TYPE_E */
    int channel;
    int value;
} noltDevSDK_special_key_value;

/** @brief One stored custom voice (592 bytes). */
typedef struct {
    int index;
    int status;
    char name[64];
    char url[512];
    time_t create_time;
    int customVoice;
} noltDevSDK_special_custom_voice_info;

/** @brief The stored custom voices (9476 bytes). */
typedef struct {
    int num; /**< valid entries, at most 16 */
    noltDevSDK_special_custom_voice_info voice_info[16];
} noltDevSDK_special_custom_voice_infos;

/** @brief Battery work status (12 bytes). */
typedef struct {
    int keep_alive;
    int work_time;
    int special_business;
} noltDevSDK_special_battery_workstatus;

/** @brief The base device holding this device in trusteeship (16 bytes). */
typedef struct {
    char subserial[16];
} noltDevSDK_Trusteeship;

/** @brief A child device held in trusteeship (24 bytes). */
typedef struct {
    char subserial[16];
    int connect_status;
    int iChannel;
} noltDevSDK_trusteeship_subserial;

/** @brief Child devices held in trusteeship; `len` of the query sets the capacity (the
 *  module offers 8 entries, 196 bytes). */
typedef struct {
    int num;
    noltDevSDK_trusteeship_subserial subserial[];
} noltDevSDK_Trusteeship_connect;

/** @brief Power state of one child device (112 bytes). */
typedef struct {
    char subserial[16];
    int type;
    int value;
    char des[64]; /**< description */
    int remaining;
    char baseserial[16]; /**< serial of the base station */
    int status;
} noltDevSDK_PowerStatus_subserial;

/** @brief Power states; `len` of the query sets the capacity (the module offers 8
 *  entries, 900 bytes). */
typedef struct {
    int num;
    noltDevSDK_PowerStatus_subserial subserial[];
} noltDevSDK_PowerStatus;

/** @brief One trusteeship deletion (88 bytes). */
typedef struct {
    int iChannel;
    char acSubserial[16];
    char acBaseserial[16];
    char cResult; /**< the application's result: 0 success */
    char acNewShipSerial[16];
    char acNewShipKey[32];
} noltDevSDK_Special_DelTrusteeship_Param_S;

/** @brief A block of trusteeship deletions (8 + 88 x usNum bytes). */
typedef struct {
    unsigned int uiVersion;
    unsigned short usNum;
    unsigned char reserved0[2];
    noltDevSDK_Special_DelTrusteeship_Param_S astUnit[];
} noltDevSDK_Special_DelTrusteeship_S;

/** @brief The device's own port mappings (672 bytes). */
typedef struct {
    char external_ip[16];
    char local_ip[16];
    noltDevSDK_special_voddns_mapped_info mapped_port_infos[16];
} noltDevSDK_special_voddns_local_mapped_infos;

/** @brief Network connection of the associated chime (120 bytes). */
typedef struct {
    int conn_status;
    int signal;
    char ssid[32];
    char interface_name[16];
    char local_ip[16];
    char mask[16];
    char gateway[16];
    char db_serial[16];
} noltDevSDK_special_associated_device_conn_status;

/** @brief 4G modem state (108 bytes). */
typedef struct {
    int status;
    int sigal; /**< signal strength */
    int type;
    char network[32];
    char ICCID[32];
    char IMEI[32];
} noltDevSDK_special_4G_Info_S;

/** @brief One 4G traffic row (72 bytes). */
typedef struct {
    float incr; /**< traffic increment */
    int type;
    char ICCID[32];
    char IMEI[32];
} noltDevSDK_special_4G_flow_info;

/** @brief 4G traffic rows, owned by the application. */
typedef struct {
    int max_count;
    noltDevSDK_special_4G_flow_info *flow_info;
} noltDevSDK_special_4G_flow_info_page;

/* ---- exported functions ------------------------------------------------------------ */

/**
 * @brief Brings the module up: stores the callbacks, registers the status items and
 *        the shadow key, and loads the domain into the microkernel.
 * @param info callbacks and shadow option.
 * @return 0; NOLTDEVSDK_SPECIAL_CODE_FAIL when already initialised;
 *         NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM for NULL; NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL
 *         when the kernel refuses the domain.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_init(noltDevSDK_special_init_info *info);

/**
 * @brief Takes the module down.
 * @return always 0.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_fini(void);

/**
 * @brief Sends a device-initiated request.
 * @param msg the request.
 * @return 0; NOLTDEVSDK_SPECIAL_CODE_NOT_INITED, NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT or
 *         NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_send_msg(noltDevSDK_special_msg *msg);

/**
 * @brief Sends a raw message to the platform (works without init).
 * @param msg body, command, response flag and sequence number to use.
 * @return 0; NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM for NULL;
 *         NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR when the kernel refuses it.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_send_msg_to_platform(noltDevSDK_special_trans_cmd_msg *msg);

/**
 * @brief Event posting; not supported by this module.
 * @param info ignored.
 * @return always -1.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_post_event(noltDevSDK_special_post_event_info_S *info);

/**
 * @brief Reads the trusteeship afresh and reports it at once.
 * @return the send result, -1 on an application failure, or
 *         NOLTDEVSDK_SPECIAL_CODE_NOT_INITED.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_report_trusteeship(void);

/**
 * @brief Reports people-flow counting segments.
 * @param seg_info 1 to 10 segments.
 * @return the send result, NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM for no segments, or
 *         NOLTDEVSDK_SPECIAL_CODE_NOT_INITED.
 */
NOLTDEVSDK_SPECIAL_API int
noltDevSDK_special_report_flow_counting(noltDevSDK_special_flow_counting_seg_count *seg_info);

#ifdef __cplusplus
}
#endif

#endif
