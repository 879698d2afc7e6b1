/**
 * @file noltdev_host.h
 * @brief Control API of the host SDK: lets tests, the simulator and a developer's PC
 *        play the cloud platform's part around a domain module (inject platform
 *        messages, capture what is sent, raise kernel events, drive the report-status
 *        service and the shadow service, and read the log).
 */
#ifndef NOLTDEV_HOST_H
#define NOLTDEV_HOST_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- kernel ---------------------------------------------------------------------- */

/** @brief One outbound message as the kernel's sink sees it (a deep copy, valid during
 *  the sink call). */
typedef struct {
    uint32_t domain_id;
    uint32_t command_id;
    uint32_t seq;
    uint8_t response; /**< 1 for an answer to a platform request */
    const char *command_ver;
    const char *body; /**< NUL-terminated copy of the body */
    uint32_t body_len;
} noltdev_host_message;

/** @brief Receives every message sent through noltdev_sdk_kernel_send(); its result
 *  becomes the send's result. Called on the sender's thread, serialised by the kernel. */
typedef int (*noltdev_host_sink_fn)(const noltdev_host_message *msg, void *user);

/**
 * @brief Restores the kernel's defaults: no extensions, no redirects, serial
 *        "DS0000000000", awake, registered, no sink (sends succeed and are dropped),
 *        load and redirect results 0, message thread stopped, no fault armed.
 */
void noltdev_host_kernel_reset(void);

/** @brief Sets the value of device-information key "dev_subserial". */
void noltdev_host_set_serial(const char *serial);
/** @brief Sets the sleep status (non-zero: the device sleeps). */
void noltdev_host_set_sleep(int sleeping);
/** @brief Sets the registration status (0: not registered). */
void noltdev_host_set_registered(int registered);
/** @brief Installs the outbound sink (NULL: sends succeed and are dropped). */
void noltdev_host_set_sink(noltdev_host_sink_fn fn, void *user);

/** @brief Makes the next extension loads fail with this kernel code (0: succeed). */
void noltdev_host_set_extend_load_result(int code);
/** @brief Makes every redirect registration answer this code (0: succeed). */
void noltdev_host_set_redirect_result(int code);
/** @brief Number of redirect registrations seen since the last reset. */
int noltdev_host_redirect_count(void);
/** @brief Copies redirect registration i (in call order); 0, or -1 when out of range. */
int noltdev_host_redirect_get(int i, uint32_t *command_id, uint32_t *domain_id, char type[32]);
/** @brief Number of noltdev_timer_init() calls since the last reset. */
int noltdev_host_timer_init_count(void);
/** @brief 1 when an extension is loaded for the domain. */
int noltdev_host_domain_loaded(int domain_id);

/**
 * @brief Delivers a platform message to the domain's data-route callback at once, on
 *        the caller's thread (the body is copied and NUL-terminated).
 * @return 0, or NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN when no extension is loaded for it.
 */
int noltdev_host_inject(int domain_id, int command_id, uint32_t seq, const char *body, uint32_t body_len);

/** @brief Starts the kernel message thread that delivers posted messages in order. */
int noltdev_host_msg_thread_start(void);
/** @brief Delivers what is queued, then stops the message thread. */
void noltdev_host_msg_thread_stop(void);
/** @brief Queues a platform message for the message thread (copied). */
int noltdev_host_post(int domain_id, int command_id, uint32_t seq, const char *body, uint32_t body_len);
/** @brief Waits until every posted message has been delivered. Answers the module sends
 *  later from threads of its own (a custom voice is answered by its worker once the
 *  application's recv_msg returns) are waited for with noltdev_host_wait_sent(). */
void noltdev_host_drain(void);
/**
 * @brief Drains (noltdev_host_drain), then waits until the device has sent at least
 *        `count` messages with this command id since the kernel was reset, or until
 *        timeout_ms passes. For the custom-voice answers: after posting N custom-voice
 *        requests, wait for N kCenPlt2PuSetCustomVoiceRsp without sleeping.
 *        Thread: any but the kernel message thread.
 * @return how many such messages were sent (less than count: the time ran out).
 */
int noltdev_host_wait_sent(uint32_t command_id, int count, int timeout_ms);

/** @brief Calls the domain's event callback with this event type on the caller's thread.
 *  @return 0, or NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN. */
int noltdev_host_raise_event(int domain_id, int event_type);

/* ---- log ------------------------------------------------------------------------- */

/** @brief Receives every formatted log line with its level, whatever the threshold. */
typedef void (*noltdev_host_log_hook_fn)(int level, const char *line, void *user);
/** @brief Installs the log hook (NULL removes it). */
void noltdev_host_set_log_hook(noltdev_host_log_hook_fn fn, void *user);
/** @brief Lines at or below this level go to standard error (default: environment
 *  NOLTDEV_LOG_LEVEL, else 2; 0 silences). */
void noltdev_host_set_log_level(int level);

/* ---- report-status service -------------------------------------------------------- */

/** @brief Runs one poll synchronously on the caller's thread.
 *  @return the number of report functions called. */
int noltdev_host_report_poll(void);
/** @brief Calls every non-null reset function, in registration order. */
int noltdev_host_report_reset_all(void);
/** @brief Starts polling on the service's own thread every period_ms (0: 1000 ms). */
int noltdev_host_report_start(int period_ms);
/** @brief Stops the polling thread (waits for a poll in progress). */
void noltdev_host_report_stop(void);
/** @brief Copies the registered ids in registration order; returns their count. */
int noltdev_host_report_registered(uint32_t *ids, int max);
/** @brief 1 when the id is registered and has a reset function, 0 without one, -1 when
 *  it is not registered. */
int noltdev_host_report_has_reset(uint32_t id);

/** @brief Copies the ids passed to noltDevSDK_report_status_unregister (in call order,
 *  whether or not they were registered) since the process started or the log was
 *  cleared; returns how many there are. */
int noltdev_host_report_unregister_log(uint32_t *ids, int max);
/** @brief Empties the unregistration log. */
void noltdev_host_report_clear_unregister_log(void);

/* ---- shadow service --------------------------------------------------------------- */

/** @brief Number of successful noltDevSDK_Shadow_DomainReg calls since the last reset. */
int noltdev_host_shadow_reg_count(void);
/** @brief Forgets every registered domain and stored value; keeps the cache directory. */
void noltdev_host_shadow_reset(void);
/** @brief Values persist as files under this directory (NULL: no persistence). */
void noltdev_host_shadow_set_cache_dir(const char *dir);
/**
 * @brief Delivers a platform value for a key: builds a value of this type, length and
 *        text and calls the key's parse_sync.
 * @return parse_sync's result, or -1 when no registered domain owns the key.
 */
int noltdev_host_shadow_deliver(int domain_id, const char *key, int type, const char *text, int length);
/**
 * @brief Asks the key's current value: calls gen_value_JsStr with a zeroed buffer of
 *        buf_size bytes (0: 4096) and copies the result.
 * @param out receives the text, NUL-terminated (out_size bytes at most).
 * @param type receives the value's type (may be NULL).
 * @param version receives the generated version (may be NULL).
 * @return gen_value_JsStr's result, or -1 when no registered domain owns the key.
 */
int noltdev_host_shadow_read(int domain_id, const char *key, int buf_size, char *out, int out_size, int *type,
                             uint32_t *version);

/* ---- fault injection -------------------------------------------------------------- */

/**
 * @brief The platform operations a test can make fail, one row each of the host SDK's
 *        fault table (noltdev_host_fault_name() gives the row's name).
 *
 * THREAD_CREATE and MALLOC reach the module's own calls to pthread_create, malloc,
 * calloc and realloc through the linker's symbol wrapping: an executable that links the
 * module's objects together with the noltdev_host_faults library is linked with
 * --wrap=pthread_create,--wrap=malloc,--wrap=calloc,--wrap=realloc (the library carries
 * these options), so only the calls made from that executable's own objects are counted;
 * calls from shared libraries (the C++ runtime, cJSON, the host SDK) are not. The same
 * library provides the cJSON allocator of JSON_ALLOC (noltdev_host_fault_json_hooks()).
 */
typedef enum {
    NOLTDEV_HOST_FAULT_KERNEL_SEND = 0,   /**< noltdev_sdk_kernel_send; the code is the send's result */
    NOLTDEV_HOST_FAULT_REDIRECT_REG,      /**< noltDevSDK_Common_Module_RedirectReg */
    NOLTDEV_HOST_FAULT_EXTEND_LOAD,       /**< noltdev_sdk_kernel_extend_load */
    NOLTDEV_HOST_FAULT_REPORT_REGISTER,   /**< noltDevSDK_report_status_register (nothing registered) */
    NOLTDEV_HOST_FAULT_REPORT_UNREGISTER, /**< noltDevSDK_report_status_unregister (nothing removed) */
    NOLTDEV_HOST_FAULT_REPORT_FORCE,      /**< noltDevSDK_report_set_force_report (nothing forced) */
    NOLTDEV_HOST_FAULT_SHADOW_REGISTER,   /**< noltDevSDK_Shadow_DomainReg (nothing registered) */
    NOLTDEV_HOST_FAULT_SHADOW_DEREGISTER, /**< noltDevSDK_Shadow_DomainDereg (nothing removed) */
    NOLTDEV_HOST_FAULT_SHADOW_DELIVER, /**< noltdev_host_shadow_deliver: the value is lost, parse_sync is not
                                          called */
    NOLTDEV_HOST_FAULT_THREAD_CREATE,  /**< pthread_create from the linking executable; the code is its result
                                          (0: EAGAIN) */
    NOLTDEV_HOST_FAULT_JSON_ALLOC, /**< the cJSON allocator installed by noltdev_host_fault_json_hooks() */
    NOLTDEV_HOST_FAULT_MALLOC,     /**< malloc, calloc and realloc from the linking executable */
    NOLTDEV_HOST_FAULT_COUNT
} noltdev_host_fault_op;

/**
 * @brief Arms a fault: of the calls of op from now on, the first `skip` succeed, then
 *        each call fails (every <= 1) or only every `every`th one does, `count` times in
 *        all (count < 0: without end). Resets the op's call and failure counters.
 *        Thread-safe.
 * @param code the result a failing call gives (operations that return a pointer give NULL).
 * @return 0, or -1 for an unknown op.
 *
 * The next N calls: (op, 0, N, 0, code). Every Kth call: (op, 0, -1, K, code). The Nth
 * call only: (op, N - 1, 1, 0, code).
 */
int noltdev_host_fault_set(int op, int skip, int count, int every, int code);
/** @brief Disarms every fault and zeroes every counter (noltdev_host_kernel_reset does too). */
void noltdev_host_fault_clear(void);
/** @brief The op's row name ("send", "thread_create", ...), or NULL when op is unknown. */
const char *noltdev_host_fault_name(int op);
/** @brief The op whose row has this name, or -1. */
int noltdev_host_fault_find(const char *name);
/** @brief Calls of op seen since it was last armed or cleared. */
int noltdev_host_fault_calls(int op);
/** @brief Failures injected into op since it was last armed or cleared. */
int noltdev_host_fault_injected(int op);
/**
 * @brief Counts one call of op and says whether it must fail: 1 and *code set (code may
 *        be NULL) when it must, else 0. Called by the host SDK's services and wrappers at
 *        the top of each operation; never allocates, safe from any thread.
 */
int noltdev_host_fault_hit(int op, int *code);

/** @brief Installs the counting cJSON allocator that JSON_ALLOC fails (0:
 *  restores cJSON's own). Part of the noltdev_host_faults library
 *  (build tree only, like the wrapping). */
void noltdev_host_fault_json_hooks(int install);
/** @brief Allocations made through that allocator and not yet freed. Part of the
 *  noltdev_host_faults library. */
long noltdev_host_fault_json_live(void);

/* ---- process figures ------------------------------------------------------------- */

/** @brief A whole-number field of the process's /proc/self/status ("Threads", "VmRSS",
 *  "VmHWM" in KiB, ...), 0 when absent. For load and soak figures; any thread. */
long noltdev_host_process_status(const char *key);

#ifdef __cplusplus
}
#endif

#endif
