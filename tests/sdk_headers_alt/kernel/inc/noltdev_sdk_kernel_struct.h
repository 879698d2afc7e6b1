/* Records and calls of the SDK microkernel: extensions, messages, events, device
 * information, status queries, timers and the time-text and XML skeleton helpers. */
#ifndef NOLTDEV_SDK_KERNEL_STRUCT_H
#define NOLTDEV_SDK_KERNEL_STRUCT_H

#include <time.h>

#include "base_typedef.h"
#include "noltdev_sdk_kernel_error.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Delivery guarantee of an outbound message; the module always sends QOS_T0. */
typedef enum { QOS_T0 = 0, QOS_T1 = 1, QOS_T2 = 2 } QOS_T;

/** An outbound message, handed to noltdev_sdk_kernel_send(). */
typedef struct noltdev_sdk_kernel_pubmsg {
    NOLTDEV_SDK_UINT8 msg_response; /* 0 device-initiated, 1 answer to a platform request */
    QOS_T msg_qos;
    NOLTDEV_SDK_UINT32 msg_seq;
    unsigned char *msg_body;
    NOLTDEV_SDK_UINT32 msg_body_len; /* without terminator */
    NOLTDEV_SDK_UINT32 msg_domain_id;
    NOLTDEV_SDK_UINT32 msg_command_id;
    NOLTDEV_SDK_PTR externel_ctx;
    NOLTDEV_SDK_UINT32 externel_ctx_len;
    char command_ver[32];
    char msg_compress[16];
} noltdev_sdk_kernel_pubmsg;

/** An inbound platform message, handed to a domain's data-route callback. */
typedef struct noltdev_sdk_kernel_submsg {
    NOLTDEV_SDK_UINT32 msg_seq;
    void *buf; /* NUL-terminated beyond buf_len, valid during the call only */
    NOLTDEV_SDK_UINT32 buf_len;
    NOLTDEV_SDK_INT32 msg_domain_id;
    NOLTDEV_SDK_INT32 msg_command_id;
    NOLTDEV_SDK_UINT8 msg_flags; /* another SDK's fields the module does not read */
    char command_ver[32];
    char msg_compress[24];
    unsigned long long msg_time;
    void *user_data;
} noltdev_sdk_kernel_submsg;

typedef enum sdk_kernel_event_type {
    sdk_kernel_event_online = 0,
    sdk_kernel_event_break = 1,
    sdk_kernel_event_register_success = 2,
    sdk_kernel_event_register_fail = 3,
    sdk_kernel_event_token_update = 4,
    sdk_kernel_event_time_sync = 5,
    sdk_kernel_event_reconnect_success = 6,
    sdk_kernel_event_heartbeat_interval_changed = 7
} sdk_kernel_event_type;

/** A kernel event, handed to a domain's event callback. */
typedef struct noltdev_sdk_kernel_event {
    NOLTDEV_SDK_UINT16 event_source; /* another SDK's field */
    sdk_kernel_event_type event_type;
    void *event_data;
    int event_data_len;
} noltdev_sdk_kernel_event;

/** A domain extension; loading it makes the kernel route the domain's messages to it. */
typedef struct noltdev_sdk_kernel_extend {
    NOLTDEV_SDK_UINT16 domain_id;
    void (*noltdev_sdk_kernel_extend_start)(NOLTDEV_SDK_PTR pUser);
    void (*noltdev_sdk_kernel_extend_stop)(NOLTDEV_SDK_PTR pUser);
    void (*noltdev_sdk_kernel_extend_data_route)(noltdev_sdk_kernel_submsg *msg, NOLTDEV_SDK_PTR pUser);
    void (*noltdev_sdk_kernel_extend_event)(noltdev_sdk_kernel_event *event, NOLTDEV_SDK_PTR pUser);
    NOLTDEV_SDK_PTR pUser;
    char extend_module_name[32];
    char extend_module_version[32];
} noltdev_sdk_kernel_extend;

/* Loads a domain extension (one per domain id) and calls its start callback. */
int noltdev_sdk_kernel_extend_load(const noltdev_sdk_kernel_extend *ext);
/* Sends a message to the platform; the body is copied before this returns. Thread-safe. */
int noltdev_sdk_kernel_send(const noltdev_sdk_kernel_pubmsg *msg);
/* Device information by key; "" for an unknown key, never NULL. */
const char *noltdev_sdk_kernel_getdevinfo_bykey(const char *key);
/* Non-zero while the device sleeps. */
int noltdev_get_sleep_status(void);
/* 0 while the device is not registered with the platform. */
int noltdev_get_register_status(void);
int noltdev_timer_init(void);
/* "HH:MM" or "HH:MM:SS" to seconds since midnight; anything else gives 0. */
int noltdev_ParseTimeHHMM(const char *text);
/* Seconds of the day to "HH:MM"; returns the text length, or -1 when it does not fit. */
int noltdev_MakeTimeString(time_t value, char *buf, int buf_size);
/* later - earlier in milliseconds, saturated to the int range. */
int noltdev_timespecMinusMs(const struct timespec *later, const struct timespec *earlier);

#ifdef __cplusplus
}

class CMarkupSTL;
/* The kernel's request skeleton: declaration + <Request/>, cursor inside Request. */
int noltdev_xml_init_req(CMarkupSTL &doc);
/* The kernel's response skeleton: declaration + <Response><Result>0</Result></Response>,
 * cursor inside Response before Result. */
int noltdev_xml_init_rsp(CMarkupSTL &doc);
#endif

#endif
