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
    uint32_t domain_id;      /**< the sending domain (3999 for the special module) */
    uint32_t command_id;     /**< the platform command identifier */
    uint32_t seq;            /**< the message's sequence number */
    uint8_t response;        /**< 1 for an answer to a platform request */
    const char *command_ver; /**< the command version text, NUL-terminated */
    const char *body;        /**< NUL-terminated copy of the body */
    uint32_t body_len;       /**< body length in bytes, without the terminator */
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

/** @brief Sets the value of device-information key "dev_subserial".
 *  @param serial the serial, copied. */
void noltdev_host_set_serial(const char *serial);
/** @brief Sets the sleep status.
 *  @param sleeping non-zero: the device sleeps. */
void noltdev_host_set_sleep(int sleeping);
/** @brief Sets the registration status.
 *  @param registered 0: not registered. */
void noltdev_host_set_registered(int registered);
/**
 * @brief Takes the device's link to the platform down (0) or up (non-zero), as a device
 *        losing and regaining its connection. While it is down every
 *        noltdev_sdk_kernel_send() fails with NOLTDEV_SDK_KERNEL_ERR_SEND and reaches no
 *        sink. Going down sets the registration status to 0 and raises
 *        sdk_kernel_event_break, going up sets it to 1 and raises sdk_kernel_event_online,
 *        on every loaded extension, on the caller's thread. Asking for the state the link
 *        already has changes nothing and raises nothing. The kernel reset brings it up.
 * @param up non-zero: the link comes up; 0: it goes down.
 * @return The number of extensions that received the event (0 when nothing changed).
 */
int noltdev_host_set_link(int up);
/** @brief The link's state.
 *  @return 1 while the link is up (the default), 0 while it is down. */
int noltdev_host_link_up(void);
/** @brief Installs the outbound sink.
 *  @param fn the sink; NULL: sends succeed and are dropped.
 *  @param user handed to every call of fn. */
void noltdev_host_set_sink(noltdev_host_sink_fn fn, void *user);

/** @brief Makes the next extension loads fail.
 *  @param code the kernel code they give; 0: they succeed. */
void noltdev_host_set_extend_load_result(int code);
/** @brief Makes every redirect registration answer a code.
 *  @param code the code; 0: they succeed. */
void noltdev_host_set_redirect_result(int code);
/** @brief Number of redirect registrations seen since the last reset.
 *  @return that number. */
int noltdev_host_redirect_count(void);
/** @brief Copies one redirect registration.
 *  @param i its index, in call order.
 *  @param command_id receives its command identifier.
 *  @param domain_id receives its domain.
 *  @param type receives its type text, NUL-terminated.
 *  @return 0, or -1 when i is out of range. */
int noltdev_host_redirect_get(int i, uint32_t *command_id, uint32_t *domain_id, char type[32]);
/** @brief Number of noltdev_timer_init() calls since the last reset.
 *  @return that number. */
int noltdev_host_timer_init_count(void);
/** @brief Whether an extension is loaded for a domain.
 *  @param domain_id the domain.
 *  @return 1 when one is loaded, else 0. */
int noltdev_host_domain_loaded(int domain_id);

/**
 * @brief The byte a delivered body is overwritten with once the data-route callback has
 *        returned. A body is valid only during the call: a pointer kept beyond it reads
 *        this fill (the last 16 bodies stay allocated), and under AddressSanitizer the
 *        body is freed at once, so that such a read is reported as a use after free.
 */
#define NOLTDEV_HOST_SPENT_BODY_BYTE 0xDD

/**
 * @brief Delivers a platform message to the domain's data-route callback at once, on
 *        the caller's thread (the body is copied and NUL-terminated, valid during the
 *        call only: see NOLTDEV_HOST_SPENT_BODY_BYTE).
 * @param domain_id the domain to deliver to.
 * @param command_id the platform command identifier.
 * @param seq the platform's sequence number, which the answer carries.
 * @param body the body (an XML or JSON text); the caller's.
 * @param body_len its length in bytes.
 * @return 0, or NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN when no extension is loaded for it.
 */
int noltdev_host_inject(int domain_id, int command_id, uint32_t seq, const char *body, uint32_t body_len);

/** @brief Starts the kernel message thread that delivers posted messages in order.
 *  @return 0, also when it runs already; NOLTDEV_SDK_KERNEL_ERR_REFUSED when no thread
 *          can be started. */
int noltdev_host_msg_thread_start(void);
/** @brief Delivers what is queued, then stops the message thread. */
void noltdev_host_msg_thread_stop(void);
/** @brief Queues a platform message for the message thread (copied; valid during the
 *         callback only, as for noltdev_host_inject).
 *  @param domain_id the domain to deliver to.
 *  @param command_id the platform command identifier.
 *  @param seq the platform's sequence number.
 *  @param body the body; the caller's, copied.
 *  @param body_len its length in bytes.
 *  @return 0; NOLTDEV_SDK_KERNEL_ERR_PARAM for a body that cannot be read,
 *          NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN when no extension is loaded for the domain,
 *          NOLTDEV_SDK_KERNEL_ERR_REFUSED when the message thread is not running. */
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
 * @param command_id the command identifier of the messages to count.
 * @param count how many of them to wait for.
 * @param timeout_ms how long to wait at most, in milliseconds.
 * @return how many such messages were sent (less than count: the time ran out).
 */
int noltdev_host_wait_sent(uint32_t command_id, int count, int timeout_ms);

/** @brief Calls the domain's event callback with this event type on the caller's thread.
 *  @param domain_id the domain.
 *  @param event_type the kernel event (0 online, 6 reconnected, ...).
 *  @return 0, or NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN. */
int noltdev_host_raise_event(int domain_id, int event_type);

/* ---- log ------------------------------------------------------------------------- */

/** @brief Receives every formatted log line with its level, whatever the threshold. */
typedef void (*noltdev_host_log_hook_fn)(int level, const char *line, void *user);
/** @brief Installs the log hook.
 *  @param fn the hook; NULL removes it.
 *  @param user handed to every call of fn. */
void noltdev_host_set_log_hook(noltdev_host_log_hook_fn fn, void *user);
/** @brief Sets which lines go to standard error.
 *  @param level lines at or below it are printed (default: environment
 *         NOLTDEV_LOG_LEVEL, else 2; 0 silences). */
void noltdev_host_set_log_level(int level);

/* ---- thread names ------------------------------------------------------------------ */

/** @brief The names the host SDK gives its own threads (pthread_setname_np), as debuggers,
 *  `ps -L` and ThreadSanitizer's reports show them. At most 15 characters each. */
#define NOLTDEV_HOST_THREAD_KERNEL "kernel-msg"    /**< the kernel message thread */
#define NOLTDEV_HOST_THREAD_REPORT "report-status" /**< the report-status polling thread */
#define NOLTDEV_HOST_THREAD_SHADOW "shadow-report" /**< the shadow service's start-up reports */

/* ---- report-status service -------------------------------------------------------- */

/** @brief Runs one poll synchronously on the caller's thread.
 *  @return the number of report functions called. */
int noltdev_host_report_poll(void);
/** @brief Calls every non-null reset function, in registration order.
 *  @return the number of reset functions called. */
int noltdev_host_report_reset_all(void);
/** @brief Starts polling on the service's own thread: at once, then every period.
 *  @param period_ms the period in milliseconds (0 or negative: 1000 ms).
 *  Starting a running thread restarts it with the new period.
 *  @return 0; -1 from one of the thread's own item functions while a stop is pending. */
int noltdev_host_report_start(int period_ms);
/** @brief Stops the polling thread (waits for a poll in progress). */
void noltdev_host_report_stop(void);
/** @brief Copies the registered ids in registration order.
 *  @param ids receives at most max ids; NULL only asks the count.
 *  @param max room in ids.
 *  @return the number copied; with ids NULL or max <= 0, how many are registered. */
int noltdev_host_report_registered(uint32_t *ids, int max);
/** @brief Whether a registered item has a reset function.
 *  @param id the report status id.
 *  @return 1 when it is registered and has one, 0 without one, -1 when it is not
 *          registered. */
int noltdev_host_report_has_reset(uint32_t id);

/** @brief Copies the ids passed to noltDevSDK_report_status_unregister (in call order,
 *  whether or not they were registered) since the process started or the log was
 *  cleared.
 *  @param ids receives at most max ids.
 *  @param max room in ids.
 *  @return how many ids the log holds. */
int noltdev_host_report_unregister_log(uint32_t *ids, int max);
/** @brief Empties the unregistration log. */
void noltdev_host_report_clear_unregister_log(void);

/* ---- shadow service --------------------------------------------------------------- */

/** @brief Number of successful noltDevSDK_Shadow_DomainReg calls since the last reset.
 *  @return that number. */
int noltdev_host_shadow_reg_count(void);
/**
 * @brief Waits until the start-up reports queued so far have run. A registration asks for
 *        one per service whose usResetReportAll is non-zero: the service's own thread
 *        then generates the key's value (gen_value_JsStr, as noltdev_host_shadow_read
 *        does with the default buffer), as a device's service does after start-up.
 */
void noltdev_host_shadow_drain(void);
/** @brief The start-up reports run so far.
 *  @return their number since load. */
int noltdev_host_shadow_startup_reports(void);
/** @brief Forgets every registered domain and stored value; keeps the cache directory. */
void noltdev_host_shadow_reset(void);
/** @brief Makes values persist as files.
 *  @param dir the directory, created when missing; NULL: no persistence. */
void noltdev_host_shadow_set_cache_dir(const char *dir);
/**
 * @brief Delivers a platform value for a key: builds a value of this type, length and
 *        text and calls the key's parse_sync.
 * @param domain_id the domain owning the key.
 * @param key the key.
 * @param type the value's type (0 to 6).
 * @param text the value as text.
 * @param length bytes of text to take (negative: the whole text).
 * @return parse_sync's result, or -1 when no registered domain owns the key.
 */
int noltdev_host_shadow_deliver(int domain_id, const char *key, int type, const char *text, int length);
/**
 * @brief Asks the key's current value: calls gen_value_JsStr with a zeroed buffer of
 *        buf_size bytes (0: 4096) and copies the result.
 * @param domain_id the domain owning the key.
 * @param key the key.
 * @param buf_size the buffer handed to gen_value_JsStr (0: 4096 bytes).
 * @param out_size room in out.
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
 * @param op the operation, a noltdev_host_fault_op.
 * @param skip calls that succeed first.
 * @param count failures in all (negative: without end).
 * @param every fail each call (0 or 1) or every `every`th one.
 * @param code the result a failing call gives (operations that return a pointer give NULL).
 * @return 0, or -1 for an unknown op.
 *
 * The next N calls: (op, 0, N, 0, code). Every Kth call: (op, 0, -1, K, code). The Nth
 * call only: (op, N - 1, 1, 0, code).
 */
int noltdev_host_fault_set(int op, int skip, int count, int every, int code);
/** @brief Disarms every fault and zeroes every counter (noltdev_host_kernel_reset does too). */
void noltdev_host_fault_clear(void);
/** @brief The op's row name ("send", "thread_create", ...).
 *  @param op the operation.
 *  @return the name, or NULL when op is unknown. */
const char *noltdev_host_fault_name(int op);
/** @brief The op whose row has this name.
 *  @param name the row name.
 *  @return the op, or -1. */
int noltdev_host_fault_find(const char *name);
/** @brief Calls of op seen since it was last armed or cleared.
 *  @param op the operation.
 *  @return that number. */
int noltdev_host_fault_calls(int op);
/** @brief Failures injected into op since it was last armed or cleared.
 *  @param op the operation.
 *  @return that number. */
int noltdev_host_fault_injected(int op);
/**
 * @brief Counts one call of op and says whether it must fail. Called by the host SDK's
 *        services and wrappers at the top of each operation; never allocates, safe from
 *        any thread.
 * @param op the operation.
 * @param code receives the armed code when the call must fail; may be NULL.
 * @return 1 when the call must fail, else 0.
 */
int noltdev_host_fault_hit(int op, int *code);

/** @brief Installs the counting cJSON allocator that JSON_ALLOC fails. Part of the
 *  noltdev_host_faults library (build tree only, like the wrapping).
 *  @param install non-zero installs it; 0 restores cJSON's own. */
void noltdev_host_fault_json_hooks(int install);
/** @brief Allocations made through that allocator and not yet freed. Part of the
 *  noltdev_host_faults library.
 *  @return that number. */
long noltdev_host_fault_json_live(void);

/* ---- process figures ------------------------------------------------------------- */

/** @brief A whole-number field of the process's /proc/self/status. For load and soak
 *  figures; any thread.
 *  @param key the field's whole name ("Threads", "VmRSS", "VmHWM", ...).
 *  @return its value (KiB for the memory fields), 0 when absent. */
long noltdev_host_process_status(const char *key);

#ifdef __cplusplus
}
#endif

#endif
