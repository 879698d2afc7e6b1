/**
 * @file noltDevSDK_special_def.h
 * @brief Public interface of the "special" domain module: result codes, message and
 *        runtime-info types, the payload records exchanged with the application, the
 *        exported functions, and the contract between module and application (threads,
 *        ownership, answers to the platform, shut-down).
 *
 * Every record has a fixed layout; the sizes quoted in the comments are those of the
 * 32-bit target (32-bit pointers and time_t). Text fields of N bytes hold at most N-1
 * characters and are always NUL-terminated when the module fills them. Valid C99 and C++.
 *
 * @section special_threads Threads that call the application
 *
 * The module owns no thread of its own apart from one short-lived detached worker per
 * custom-voice command; its code runs on the threads of the SDK and of the application.
 *
 * `recv_msg` is called on:
 * - the kernel's message thread, for every platform command of the domain (types 0, 1,
 *   2, 4, 5, 7, 8, 9 and 14 to 21), one command at a time in the order the kernel
 *   delivers them; a command's answer is sent on that thread after `recv_msg` returns;
 * - a custom-voice worker (type 3): one detached thread per custom-voice command, which
 *   calls `recv_msg`, waits for it, and then sends the platform's answer itself;
 * - the shadow service's thread, for the "Trusteeship" key (type 6).
 *
 * `get_runtime_info` is called on:
 * - the report-status service's polling thread, for the status items (types 0 to 8 and
 *   10 to 18): each poll walks the registered items in turn, one at a time;
 * - the kernel's message thread, for the work-mode plan command (type 14, just before
 *   `recv_msg` type 18 on the same thread);
 * - the shadow service's thread, for the "Trusteeship" key (type 9);
 * - the application's own thread inside noltDevSDK_special_report_trusteeship() (type 6).
 *
 * noltDevSDK_special_init() calls neither callback itself, but it stores them before it
 * registers the status items, the shadow key and the domain, so the services' threads
 * (and a service that calls back while it registers, on the thread calling init) may call
 * them before init returns.
 *
 * What runs at the same time: custom-voice workers run concurrently with each other and
 * with the message thread; the polling thread runs concurrently with the message thread,
 * the workers, the shadow service's thread and the application's threads. So `recv_msg`
 * may run on several threads at once, and `get_runtime_info` on the poller at the same
 * time as `recv_msg` or as `get_runtime_info` on the message thread. Only the calls on one
 * thread are serialised: the message thread's one command at a time, the poller's one
 * item at a time.
 *
 * How long a callback may block: the module waits for each callback and has no timeout.
 * - Blocking `recv_msg` (or the plan's `get_runtime_info`) on the message thread delays
 *   that command's answer and every later platform command of the domain, and their
 *   answers; keep it short and hand long work to a thread of the application.
 * - Blocking `recv_msg` in a custom-voice worker delays only that command's answer; it is
 *   the place meant for slow work such as fetching the voice file.
 * - Blocking `get_runtime_info` on the polling thread delays every status report, of
 *   every item, until it returns.
 * - Blocking on the shadow service's thread delays the shadow service; blocking inside
 *   noltDevSDK_special_report_trusteeship() delays only the application's caller.
 *
 * What a callback may call: noltDevSDK_special_send_msg(),
 * noltDevSDK_special_send_msg_to_platform() (the way to answer a type 7 command),
 * noltDevSDK_special_post_event() and noltDevSDK_special_report_flow_counting() may be
 * called from inside either callback, on any thread: they read only the init flag, the
 * caller's record and the kernel's device information, take a sequence number from an
 * atomic counter and hand the message to the kernel.
 * noltDevSDK_special_report_trusteeship() may be called from `recv_msg`; from inside
 * `get_runtime_info` it calls `get_runtime_info` again (type 6) on the same thread,
 * which is safe only if the application's callback is re-entrant.
 * noltDevSDK_special_init() and noltDevSDK_special_fini() must not be called from a
 * callback: they change the init flag without a lock, and fini stops the report-status
 * and shadow services, whose own threads may be the ones calling back; call them from
 * the application's control thread.
 *
 * No lock guards the module's globals (the init flag, the stored callbacks, the status
 * caches); each group is used from one thread at a time as above, and only the device
 * sequence counter is atomic. Call init and fini from one thread, not while another
 * thread of the application is inside one of the seven functions.
 *
 * @section special_ownership Ownership, lifetime and len
 *
 * - A record handed to `recv_msg`, and the buffer handed to `get_runtime_info`, belong to
 *   the module and are valid only during that call: copy what you keep; never free them.
 * - The one exception is runtime-info type 9 (NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP):
 *   `data` arrives NULL with `len` 0, and the application allocates a
 *   noltDevSDK_Special_DelTrusteeship_S block with malloc() or calloc() and stores its
 *   address in `data`. From then on the module owns it and frees it with free() on every
 *   path, also when the callback returns non-zero.
 * - The block handed to `recv_msg` type 6 is the module's heap block, freed when the call
 *   returns.
 * - Records the application passes to the seven functions stay the application's: the
 *   module reads them during the call only and keeps no pointer to them. The module keeps
 *   only the two callback pointers of noltDevSDK_special_init().
 * - Every `len` passed with a record is that record's size as this header lays it out on
 *   the target (the sizes in the comments). For the three records ending in an open array
 *   (noltDevSDK_Trusteeship_connect, noltDevSDK_PowerStatus and, for type 6,
 *   noltDevSDK_Special_DelTrusteeship_S) `len` is the size of the whole buffer, so it also
 *   gives the number of entries there is room for.
 *
 * @section special_answers What the platform is answered
 *
 * Each platform command is answered under its answer command with the request's sequence
 * number, so the platform pairs the answer with its request. The answer's "Result" is
 * what the kernel's response skeleton holds (0) unless the module writes another. The
 * table gives the answer when `recv_msg` returns non-zero; where it says "0 whatever", the
 * platform is answered 0 whatever the application returns.
 *
 * | Platform command | recv_msg type | Answer | Answer when recv_msg fails |
 * |---|---|---|---|
 * | set switch enable (18699) | 1 | 18700 | 0 whatever |
 * | set people-flow counting (18749) | 0 | 18750 | 1052679 (0x101007), also with no recv_msg |
 * | set key value (18829) | 16, 17, 19, 20, 21 | 18830 | 0 whatever |
 * | set custom voice (18843) | 3, on its worker | 18844, from the worker | see below |
 * | set work-mode plan (18731) | 18, after get_runtime_info 14 | 18732 | 4 (131: type 14 failed) |
 * | wake (18863) | 5 | 18864 | an empty answer whatever |
 * | set delayed sleep (19588) | 2 | 19589 | 0 whatever |
 * | prowl drive-out (19606) | 14 or 15 | 19607, JSON | "resultCode" 1, "success" whatever |
 * | set linkage mode (19917) | 4 | 19918 | 0 whatever |
 * | answer to the mapped-port query (10380) | 9 | none | none |
 * | answer to the unbind request (19591) | 8 | none | none |
 * | receipt of a verification code (13451) | not delivered | none | none |
 * | any other command of the domain | 7 | none | none: the application answers |
 *
 * Custom voice: on success the answer holds an "Info" element with the voice's "Index";
 * on failure no body and the result 0x170000 to 0x170003 (1507328 to 1507331) for
 * NOLTDEVSDK_SPECIAL_CODE_VOICE_DOWNLOAD_FAILED, _VOICE_NOT_EXIST, _VOICE_IS_BUSY and
 * _VOICE_COUNT_LIMITED, 4 for any other non-zero value, 1052679 when no `recv_msg` is
 * stored; no answer at all when the module cannot allocate the request's copy or start
 * the worker. A command the module passes raw (type 7) is answered by the application,
 * if at all, with noltDevSDK_special_send_msg_to_platform(): the answer command,
 * `msg_type` 1 and the `msg_seq` it was given. The deletion of trusteeship (type 6)
 * comes through the shadow service, not as a platform command: the value `recv_msg`
 * returns goes back to that service.
 *
 * Other cases: a command with an XML answer whose body is not well-formed XML is
 * answered with result 3 without calling `recv_msg`; a wake or drive-out body (JSON)
 * that does not parse is not delivered and gets an empty answer. Every command that
 * arrives while the kernel reports the device asleep is dropped unanswered. A command
 * whose body lacks the elements the record is made from is still delivered, with those
 * members 0 or empty; but a key-value setting without "Type" or "Value", of a name the
 * module does not know, or whose JSON value does not parse is not delivered, and is
 * answered 0.
 *
 * @section special_fini What noltDevSDK_special_fini() stops and what stays
 *
 * Fini (when initialised) clears the init flag, so the guarded functions answer
 * NOLTDEVSDK_SPECIAL_CODE_NOT_INITED; it unregisters 21 of the 22 status items (the
 * associated-device item, 92, stays registered), stops the report-status service, whose
 * polling thread then calls no item of the module, deregisters the shadow key, and ends
 * the extension, which does nothing because the kernel offers no unload. What stays:
 * - the stored callbacks, which fini does not clear;
 * - the domain, loaded in the kernel with its redirect keys: platform commands that
 *   still arrive are handed to the stored `recv_msg` and answered as before, so the
 *   callbacks' code must stay valid after fini;
 * - a custom-voice worker already running completes: it may call `recv_msg` and send its
 *   answer after fini has returned;
 * - item 92, registered with the report-status service: a service started again calls
 *   its `get_runtime_info` (type 11).
 *
 * Because the domain stays loaded, an init after fini fails with
 * NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL on a kernel that refuses a second load of a domain (the
 * host SDK's kernel does); that init still stores the new callbacks and registers the
 * status items and the shadow key again.
 *
 * @section special_status How the status items are asked and reported
 *
 * The module polls nothing itself. It registers 22 status items with the SDK's
 * report-status service, whose thread visits every item once a period: the service's own
 * period, set by whoever starts its polling thread (on the host SDK
 * noltdev_host_report_start(), 1000 ms when given 0; on a device the vendor SDK's
 * setting). Each visit calls `get_runtime_info` once for that item, compares the answer
 * with the value the module last took, and reports the item to the platform in the same
 * visit when it differs; so the application is asked about every item once a period and
 * a change reaches the platform within one period. What `get_runtime_info` returns for an
 * item (see NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT):
 * - 0: the record is compared and, if it differs, taken and reported;
 * - a code whose low twelve bits are 4 (NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT, or plain 4):
 *   the item is not supported. Nothing is sent, the module keeps its last value and tells
 *   the service "not supported" (-1); what the service does with that is its own (the
 *   host SDK's treats it as unchanged and asks again next period). Return it for the items
 *   the device does not have;
 * - any other non-zero code: the value cannot be read now. Nothing is sent and the last
 *   value is kept; the item is asked again next period, and a later answer that differs
 *   is reported then.
 *
 * Coming online: on the kernel's online event the module asks the service for immediate
 * reports of the people-flow configuration (item 32), the child devices' connection
 * status (42) and the mapped ports (45), and on a reconnection of the mapped ports again.
 * Such a forced report sends the value the module last took, without asking the
 * application (only the people-flow configuration is read afresh). When the device comes
 * online before the first poll has visited those items, as a device usually does right
 * after start, the connection status goes out with an empty "list" and the mapped ports
 * with empty "NatIP" and "LocalIP" and no "PortMap": the module has seen no value yet. The
 * next poll reads the application and reports the real values. A value the application
 * changes and whose command forces its report (key values, plan, custom voice, linkage)
 * likewise goes out first as the old value, then as the new one on the next poll.
 *
 * Channels: the module asks for channel 0 only. The switch (type 1) and key-value (type 2)
 * queries and the plan query of the plan command (type 14) arrive with `channel` 0, the
 * channel written back is not read, and the switch reports always say "Channel" 0. A
 * device with several video channels answers those queries for channel 0, its main one. A
 * command for another channel (switch, delayed sleep, drive-out, plan) arrives in
 * `recv_msg` with that channel: apply it there; the module neither polls nor reports the
 * state of other channels, so the command's answer is all the platform hears of them.
 * Child devices held in trusteeship carry their own channel in
 * noltDevSDK_trusteeship_subserial::iChannel.
 *
 * @section special_logs What the module logs
 *
 * The module writes through the SDK's debug log with levels 1 (error), 2 (warning),
 * 3 (debug) and 4 (info). Every platform command it receives is logged at level 1 as
 * "R:" and the command in hexadecimal ("R:490b"), and every message it sends itself
 * (answers, status reports, device requests) at level 1 as "s:" and the command ("s:490c"),
 * its body at level 4. They are at the error level on purpose, so that the traffic shows
 * in the shortest logs: in normal operation every command prints such ERROR lines, and so
 * do a few status changes ("trusteeship is changed") and written results ("SetResult").
 * They are not faults. noltDevSDK_special_send_msg_to_platform() logs nothing.
 *
 * @section special_example An application using the module
 *
 * A doorbell base station that counts people at its door, sends a verification code when
 * the user pairs it, reports its 4G traffic and deletes child devices when the platform
 * asks. The application brings the kernel and the report-status library up first, then
 * the module; every call below returns 0 on success or a `NOLTDEVSDK_SPECIAL_CODE_*` value.
 *
 * @code{.c}
 * #include <stdlib.h>
 * #include <string.h>
 *
 * #include "noltDevSDK_special_def.h"
 *
 * // the application's own
 * void forget_child(const char *subserial, const char *baseserial);
 * int fill_from_device_state(noltDevSDK_special_runtime_info *info);
 *
 * static int on_msg(noltDevSDK_special_msg_to_dev *msg)
 * {
 *     if (msg->type == NOLTDEVSDK_SPECIAL_ON_DEL_TRUSTEESHIP) {
 *         const noltDevSDK_Special_DelTrusteeship_S *del = msg->data;
 *         for (unsigned i = 0; i < del->usNum; ++i) {
 *             // copy what you keep: the block is freed when this call returns
 *             forget_child(del->astUnit[i].acSubserial, del->astUnit[i].acBaseserial);
 *         }
 *     }
 *     return 0;
 * }
 *
 * static int on_query(noltDevSDK_special_runtime_info *info)
 * {
 *     if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP) {
 *         // the one record the application allocates: the module frees it
 *         size_t size = sizeof(noltDevSDK_Special_DelTrusteeship_S)
 *                       + 1 * sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
 *         noltDevSDK_Special_DelTrusteeship_S *res = calloc(1, size);
 *         if (res == NULL)
 *             return -1;
 *         res->usNum = 1;
 *         res->astUnit[0].iChannel = 2;
 *         res->astUnit[0].cResult = 0;  // 0: deleted; anything else reports "result": -1
 *         info->data = res;
 *         info->len = (int)size;        // not read: the module reports usNum units
 *         return 0;
 *     }
 *     return fill_from_device_state(info);  // fills info->data, at most info->len bytes
 * }
 *
 * int start_special(void)
 * {
 *     noltDevSDK_special_init_info init = { { on_msg, on_query }, 0 };
 *     return noltDevSDK_special_init(&init);
 * }
 *
 * int pair_with_user(const char *code_text)
 * {
 *     noltDevSDK_special_send_verification_code code;
 *     noltDevSDK_special_msg msg = { NOLTDEVSDK_SPECIAL_SEND_VERIFICATION_CODE, &code };
 *
 *     memset(&code, 0, sizeof code);
 *     strncpy(code.code, code_text, sizeof code.code - 1);
 *     // 0xD3999021 when the kernel refused it; the platform answers later
 *     return noltDevSDK_special_send_msg(&msg);
 * }
 *
 * int report_traffic(float megabytes, const char *iccid, const char *imei)
 * {
 *     noltDevSDK_special_4G_flow_info row;
 *     noltDevSDK_special_4G_flow_info_page page = { 1, &row };
 *     noltDevSDK_special_msg msg = { NOLTDEVSDK_SPECIAL_TRANS_4G_FLOW_INFO, &page };
 *
 *     memset(&row, 0, sizeof row);
 *     row.incr = megabytes;             // sent as a whole number, cut toward zero
 *     row.type = 1;
 *     strncpy(row.ICCID, iccid, sizeof row.ICCID - 1);
 *     strncpy(row.IMEI, imei, sizeof row.IMEI - 1);
 *     // refused (0xD3999021, nothing sent) while the device is not registered
 *     return noltDevSDK_special_send_msg(&msg);
 * }
 *
 * int report_people(int in, int out, time_t from, time_t to)
 * {
 *     noltDevSDK_special_flow_counting_seg_count segs;
 *
 *     memset(&segs, 0, sizeof segs);
 *     segs.seg_count = 1;               // 1 to 10; 0 is refused with 0xD3999003
 *     segs.seg[0].enter_num = in;
 *     segs.seg[0].leave_num = out;
 *     segs.seg[0].start_time = from;    // sent as UTC "YYYYMMDDhhmm"
 *     segs.seg[0].stop_time = to;
 *     return noltDevSDK_special_report_flow_counting(&segs);
 * }
 *
 * int answer_raw(const noltDevSDK_special_trans_cmd_msg *request, unsigned rsp_cmd, char *body, int len)
 * {
 *     // answer a command the module passed through raw (type 7), under its sequence
 *     noltDevSDK_special_trans_cmd_msg rsp = { body, len, rsp_cmd, 1, request->msg_seq };
 *     return noltDevSDK_special_send_msg_to_platform(&rsp);  // works before init too
 * }
 * @endcode
 *
 * What to expect:
 * - noltDevSDK_special_send_msg() gives 0 when the kernel took the request, 0xD3999021 for
 *   any failure of the request itself, 0xD3999004 for any other `msg_type` (whatever int a
 *   C caller stored there) and 0xD3999002 before init or after fini. The platform's
 *   answers to the unbind and mapped-port requests come back later through `recv_msg`.
 * - Unbind, verification code, mapped-port query and flow counting each take the next
 *   device sequence number; the 4G report always goes out with sequence 0.
 * - noltDevSDK_special_report_trusteeship() reads the trusteeship through
 *   `get_runtime_info` and reports it at once.
 * - noltDevSDK_special_post_event() is not supported and always returns -1.
 * - On shut-down call noltDevSDK_special_fini(); the stored callbacks stay, every guarded
 *   call answers 0xD3999002 until the next init.
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

/** @brief Result codes; 0 is success, every error is negative as a signed int (test for
 *  non-zero). Codes the module never returns are kept for the application's own use. */
typedef enum {
    NOLTDEVSDK_SPECIAL_SUCESS = 0,                  /**< success, from every function */
    NOLTDEVSDK_SPECIAL_CODE_BASE = (int)0xD3999000, /**< the base of the codes; never returned */
    /** noltDevSDK_special_init() while initialised, also after an init with NULL until fini */
    NOLTDEVSDK_SPECIAL_CODE_FAIL = (int)0xD3999001,
    /** noltDevSDK_special_send_msg(), noltDevSDK_special_report_trusteeship() and
     *  noltDevSDK_special_report_flow_counting() before init or after fini */
    NOLTDEVSDK_SPECIAL_CODE_NOT_INITED = (int)0xD3999002,
    /** a NULL argument of noltDevSDK_special_init(), noltDevSDK_special_send_msg() or
     *  noltDevSDK_special_send_msg_to_platform(); a body that the latter cannot read; a NULL
     *  argument or a seg_count below 1 for noltDevSDK_special_report_flow_counting() */
    NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM = (int)0xD3999003,
    /** noltDevSDK_special_send_msg() with a msg_type other than 0 to 3. From
     *  get_runtime_info, this code (or any whose low twelve bits are 4, so also plain 4)
     *  says the device does not have the item: nothing is reported for it and the
     *  report-status service is told "not supported"; use another code for a value that
     *  cannot be read for now */
    NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT = (int)0xD3999004,
    NOLTDEVSDK_SPECIAL_CODE_NOT_ENOUGH_MEMERY = (int)0xD3999005, /**< not returned by the module */
    /** noltDevSDK_special_init() when the kernel refuses to load the domain */
    NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL = (int)0xD3999006,
    NOLTDEVSDK_SPECIAL_CODE_THREAD_CREATE_FAIL = (int)0xD3999007, /**< not returned by the module */
    NOLTDEVSDK_SPECIAL_CODE_RSP_TIMEOUT = (int)0xD3999008,        /**< not returned by the module */
    NOLTDEVSDK_SPECIAL_CODE_MSG_DATA_INVAILD = (int)0xD3999009,   /**< not returned by the module */
    /* codes from 0x20 up are transport and voice errors */
    /** the kernel refused the message: noltDevSDK_special_send_msg_to_platform(),
     *  noltDevSDK_special_report_trusteeship(), noltDevSDK_special_report_flow_counting() */
    NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR = (int)0xD3999020,
    /** noltDevSDK_special_send_msg(), for any failure of the request itself (refused by the
     *  kernel, a 4G report while the device is not registered or with rows but no array) */
    NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR = (int)0xD3999021,
    /** from recv_msg for a custom voice: answered 0x170000 (the file could not be fetched) */
    NOLTDEVSDK_SPECIAL_CODE_VOICE_DOWNLOAD_FAILED = (int)0xD3999022,
    /** from recv_msg for a custom voice: answered 0x170001 (no such voice) */
    NOLTDEVSDK_SPECIAL_CODE_VOICE_NOT_EXIST = (int)0xD3999023,
    /** from recv_msg for a custom voice: answered 0x170002 (the voice is in use) */
    NOLTDEVSDK_SPECIAL_CODE_VOICE_IS_BUSY = (int)0xD3999024,
    /** from recv_msg for a custom voice: answered 0x170003 (no free voice slot) */
    NOLTDEVSDK_SPECIAL_CODE_VOICE_COUNT_LIMITED = (int)0xD3999025
} NOLTDEVSDK_SPECIAL_CODE_E;

/** @brief The `type` of a noltDevSDK_special_msg_to_dev (module to application); each
 *  value names the record `data` points to. What the platform is answered for each
 *  command is in the file's description ("What the platform is answered"). */
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

/** @brief The `type` of a noltDevSDK_special_runtime_info (application fills); each value
 *  names the record `data` points to. */
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
    NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX = 5                    /**< count */
} NOLTDEVSDK_SPECIAL_SWITCH_ENABLE_TYPE_E;

/** @brief Keys of noltDevSDK_special_key_value. */
typedef enum {
    NOLTDEVSDK_SPECIAL_KEY_ICR_STATUS = 0, /**< infrared-cut filter state */
    NOLTDEVSDK_SPECIAL_KEY_TYPE_MAX = 1    /**< count */
} NOLTDEVSDK_SPECIAL_KEY_VALUE_TYPE_E;

/** @brief Plan kinds (the `type` of noltDevSDK_special_plan). */
typedef enum {
    NOLTDEVSDK_SPECIAL_WORK_MODE_PLAN = 0, /**< the weekly work-mode plan (platform plan type 17) */
    NOLTDEVSDK_SPECIAL_PLAN_MAX = 1        /**< count */
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

/** @brief A platform instruction handed to the application's recv_msg (12 bytes). The
 *  envelope and the record belong to the module, valid during the call only. */
typedef struct {
    int type;   /**< NOLTDEVSDK_SPECIAL_MSG_TO_DEV_TYPE_E */
    void *data; /**< the payload record of that type, valid during the call only */
    int len;    /**< size in bytes of the payload record as this header lays it out */
} noltDevSDK_special_msg_to_dev;

/** @brief A state query handed to the application's get_runtime_info (12 bytes). The
 *  envelope and the buffer belong to the module, valid during the call only (type 9
 *  excepted: see NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP). */
typedef struct {
    int type;   /**< NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_E */
    void *data; /**< the record to fill, at most len bytes, zero-filled; NULL for type 9 */
    int len;    /**< size in bytes of that record as this header lays it out; 0 for type 9 */
} noltDevSDK_special_runtime_info;

/** @brief The application's two entry points (8 bytes). The threads that call them, what
 *  may run at once and how long they may block are in the file's description. */
typedef struct {
    /** @brief Receives one platform instruction.
     *  Called on the kernel's message thread, on a custom-voice worker (type 3) and on the
     *  shadow service's thread (type 6), possibly at the same time. Each platform command
     *  has been logged at level 1 ("R:" and its command in hexadecimal) before it arrives
     *  here (see the file's "What the module logs").
     *  @param msg the instruction, the module's; copy what you keep.
     *  @return 0 on success, non-zero otherwise (what the platform is then answered
     *          depends on the command). */
    int (*recv_msg)(noltDevSDK_special_msg_to_dev *msg);
    /** @brief Fills the record that info->data points to (at most info->len bytes).
     *  Called on the report-status service's polling thread, on the kernel's message
     *  thread (type 14), on the shadow service's thread (type 9) and on the thread calling
     *  noltDevSDK_special_report_trusteeship() (type 6). The record arrives zero-filled,
     *  except type 1, whose `type` names the switch asked for; `channel` is always 0 (a
     *  device with several channels answers for channel 0). The polling thread asks about
     *  every status item once per period of the report-status service and reports a
     *  value that differs from the last one taken (the file's "How the status items are
     *  asked and reported").
     *  @param info the query, the module's.
     *  @return 0 on success; non-zero when the value cannot be given: nothing is reported
     *          and the module keeps the last value, asking again at the next poll. A code
     *          whose low twelve bits are 4, such as NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT,
     *          says the item is not supported (the service is told so). */
    int (*get_runtime_info)(noltDevSDK_special_runtime_info *info);
} noltDevSDK_special_callback;

/** @brief Argument of noltDevSDK_special_init(); the application's, read during the call. */
typedef struct {
    noltDevSDK_special_callback cb; /**< copied into the module at init; both may be NULL */
    int resetReportAll;             /**< non-zero asks the shadow service to report afresh */
} noltDevSDK_special_init_info;

/** @brief A device-initiated request for noltDevSDK_special_send_msg(); the application's,
 *  read during the call only, like the record it points to. */
typedef struct {
    NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_TYPE_E msg_type; /**< the request; read as the int it holds */
    void *msg_struct_ptr;                             /**< the record of msg_type; ignored for type 0 */
} noltDevSDK_special_msg;

/** @brief Verification code to send (128 bytes). A NULL record sends an empty code. */
typedef struct {
    char code[128]; /**< the code; read up to its terminator or the field's end */
} noltDevSDK_special_send_verification_code;

/** @brief Domain whose mapped ports are queried (128 bytes). A NULL record sends an empty
 *  domain. */
typedef struct {
    char domain[128]; /**< the domain name; read up to its terminator or the field's end */
} noltDevSDK_special_query_voddns_mapped_port;

/** @brief A raw platform command passed through in either direction (20 bytes): handed to
 *  recv_msg (type 7) for a command the module does not handle, the body being the
 *  kernel's and valid during the call only; or the application's record for
 *  noltDevSDK_special_send_msg_to_platform(), read during the call only. */
typedef struct {
    char *content;          /**< message body, not necessarily NUL-terminated */
    int content_len;        /**< body length in bytes, 0 or more */
    unsigned int cmd_id;    /**< platform command identifier */
    unsigned char msg_type; /**< 0 request; on sending 1 marks a response */
    unsigned int msg_seq;   /**< the request's sequence number / the one to answer */
} noltDevSDK_special_trans_cmd_msg;

/** @brief Event record for noltDevSDK_special_post_event() (not supported). */
typedef struct {
    int iEvent;   /**< event code; ignored */
    char *pcData; /**< event data; ignored */
    int iLen;     /**< data length in bytes; ignored */
} noltDevSDK_special_post_event_info_S;

/** @brief One people-counting interval (16 bytes). */
typedef struct {
    int enter_num;     /**< people who entered during the interval */
    int leave_num;     /**< people who left during the interval */
    time_t start_time; /**< seconds since 1970 UTC; sent as UTC "YYYYMMDDhhmm" */
    time_t stop_time;  /**< seconds since 1970 UTC; sent as UTC "YYYYMMDDhhmm" */
} noltDevSDK_special_flow_counting_seg;

/** @brief Argument of noltDevSDK_special_report_flow_counting() (164 bytes); the
 *  application's, read during the call only. */
typedef struct {
    int seg_count;                                /**< valid entries, 1 to 10; a larger count sends the ten */
    noltDevSDK_special_flow_counting_seg seg[10]; /**< the intervals, the first seg_count used */
} noltDevSDK_special_flow_counting_seg_count;

/* ---- payload records -------------------------------------------------------------- */

/* Unless a record says otherwise, a record handed to recv_msg or get_runtime_info belongs
 * to the module and is valid during the call only, and its ints carry the platform's
 * values as they arrive, without a range check. */

/** @brief People-flow counting geometry (40 bytes): recv_msg type 0, get_runtime_info
 *  type 0. Coordinates are the platform's, passed as they arrive. */
typedef struct {
    int interval;         /**< counting interval in seconds (the platform's minutes times 60) */
    int angle_vectical;   /**< vertical angle (the platform's "Position") */
    float cross_line_x1;  /**< counting line, first end, x */
    float cross_line_y1;  /**< counting line, first end, y */
    float cross_line_x2;  /**< counting line, second end, x */
    float cross_line_y2;  /**< counting line, second end, y */
    float vector_line_x1; /**< direction arrow, tail, x */
    float vector_line_y1; /**< direction arrow, tail, y */
    float vector_line_x2; /**< direction arrow, head, x */
    float vector_line_y2; /**< direction arrow, head, y */
} noltDevSDK_special_flow_counting_cfg;

/** @brief One feature switch (12 bytes): recv_msg type 1, get_runtime_info type 1. */
typedef struct {
    int type;    /**< NOLTDEVSDK_SPECIAL_SWITCH_ENABLE_TYPE_E; set by the module when it asks */
    int channel; /**< video channel: the command's; 0 when the module asks, and not read back */
    int enable;  /**< 0 off, 1 on */
} noltDevSDK_special_switch_enable;

/** @brief Delayed sleep (8 bytes): recv_msg type 2. */
typedef struct {
    int channel; /**< video channel */
    int type;    /**< the platform's delay type */
} noltDevSDK_special_delay_sleep_type;

/** @brief A custom voice operation (588 bytes): recv_msg type 3, on the command's own
 *  worker thread. */
typedef struct {
    int index;       /**< voice slot */
    int type;        /**< the operation, the platform's code */
    char name[64];   /**< voice name, at most 63 characters */
    char url[512];   /**< where to fetch the voice file, at most 511 characters */
    int customVoice; /**< the platform's custom-voice flag */
} noltDevSDK_special_operate_custom_voice;

/** @brief Linkage mode (40 bytes): recv_msg type 4, get_runtime_info type 4. */
typedef struct {
    int enable;            /**< the platform's "Enable"; the status report compares only this */
    int time;              /**< the platform's "Time", passed as it arrives */
    char acConnSerial[16]; /**< serial of the linked device, at most 15 characters */
    char acVerifyCode[16]; /**< that device's verification code, at most 15 characters */
} noltDevSDK_linkage_mode_status;

/** @brief Wake a child device (16 bytes): recv_msg type 5. */
typedef struct {
    char subserial[16]; /**< serial of the child device, at most 15 characters */
} noltDevSDK_wake;

/** @brief The platform's result of an unbind (4 bytes): recv_msg type 8. */
typedef struct {
    int result; /**< the platform's "Result"; 0 when its answer has none */
} noltDevSDK_special_unbind_user;

/** @brief One port mapping (40 bytes); an unused entry is all zero. */
typedef struct {
    char type[32];  /**< the mapping's type name, at most 31 characters */
    int local_port; /**< port on the device */
    int nat_port;   /**< port on the NAT's public side */
} noltDevSDK_special_voddns_mapped_info;

/** @brief The platform's answer to a mapped-port query (804 bytes): recv_msg type 9. */
typedef struct {
    /** 2 when the answer's result is 0 or 0x100E01, 3 when it is 0x100009 (other results are
     *  not delivered); an answer with a "Status" element replaces it with the number the
     *  module reads at its own answer document (0 with the host SDK's kernel) */
    int dev_status;
    char dev_serial[64]; /**< serial of the device, at most 63 characters */
    char domain[64];     /**< the domain, at most 63 characters */
    char nat_ip[16];     /**< public address, dotted text */
    char local_ip[16];   /**< local address, dotted text */
    noltDevSDK_special_voddns_mapped_info mapped_port_infos[16]; /**< up to 16, in the answer's order */
} noltDevSDK_special_voddns_dev_info;

/** @brief Prowl drive-out (4 bytes): recv_msg type 14. */
typedef struct {
    int channel; /**< video channel */
} noltDevSDK_special_prowl_drive_out;

/** @brief Drive-out radio update (516 bytes): recv_msg type 15. */
typedef struct {
    int channel;   /**< video channel */
    char url[512]; /**< the first URL of the platform's list, at most 511 characters */
} noltDevSDK_special_drive_out_radio_update;

/** @brief Battery camera work mode (4 bytes): recv_msg type 16, get_runtime_info type 12. */
typedef struct {
    int mode; /**< the platform's work-mode number */
} noltDevSDK_special_battery_work_mode;

/** @brief Bell ring type (12 bytes): recv_msg type 17, get_runtime_info type 13. A member
 *  the platform's setting leaves out is 0. */
typedef struct {
    int type;  /**< ring type ("Type") */
    int index; /**< custom ring index ("CustomRingIndex") */
    int vol;   /**< volume ("Volume") */
} noltDevSDK_special_ring_type;

/** @brief One segment of a work-mode plan (12 bytes); an unused segment is all zero. */
typedef struct {
    int mode;     /**< work mode of the segment (the platform's "mode:<n>") */
    time_t begin; /**< start, in seconds of the day (0 to 86400) */
    time_t end;   /**< end, in seconds of the day; 86400 is the end of the day */
} noltDevSDK_special_work_mode_time_segment;

/** @brief A week of at most five segments a day (420 bytes). */
typedef struct {
    noltDevSDK_special_work_mode_time_segment time[7][5]; /**< [weekday 0 to 6][segment 0 to 4] */
} noltDevSDK_special_work_mode_plan;

/** @brief A work-mode plan (432 bytes): recv_msg type 18, get_runtime_info type 14. For
 *  recv_msg it is the plan from get_runtime_info with what the command carries laid
 *  over it: the enable flag if sent, the whole week if any day was sent, the channel. */
typedef struct {
    int type;                                                 /**< NOLTDEVSDK_SPECIAL_PLAN_TYPE_E */
    int channel;                                              /**< video channel */
    int enable_plan;                                          /**< 0 off, 1 on */
    noltDevSDK_special_work_mode_plan special_work_mode_plan; /**< the week */
} noltDevSDK_special_plan;

/** @brief Network work mode (4 bytes): recv_msg type 19, get_runtime_info type 15. */
typedef struct {
    int mode; /**< the platform's network-mode number */
} noltDevSDK_special_net_work_mode;

/** @brief One-click mute (4 bytes): recv_msg type 20, get_runtime_info type 17. */
typedef struct {
    int enable; /**< the platform's mute setting, as it arrives */
} noltDevSDK_special_one_click_mute;

/** @brief Speaker configuration (16 bytes): recv_msg type 21, get_runtime_info type 18. A
 *  member the platform's setting leaves out is 0. */
typedef struct {
    int ring_enable;  /**< ring prompt switch ("RingSwitch") */
    int ring_index;   /**< ring prompt index ("RingIndex") */
    int intel_enable; /**< intelligent prompt switch ("IntelligentSwitch") */
    int intel_index;  /**< intelligent prompt index ("IntelligentIndex") */
} noltDevSDK_special_speaker_config;

/** @brief A key-value status (12 bytes): get_runtime_info type 2. */
typedef struct {
    int key;     /**< NOLTDEVSDK_SPECIAL_KEY_VALUE_TYPE_E; 0 when the module asks */
    int channel; /**< video channel; 0 when the module asks, and not read back */
    int value;   /**< the key's value */
} noltDevSDK_special_key_value;

/** @brief One stored custom voice (592 bytes). */
typedef struct {
    int index;          /**< voice slot */
    int status;         /**< the device's state of the voice */
    char name[64];      /**< voice name, at most 63 characters */
    char url[512];      /**< where the voice was fetched from, at most 511 characters */
    time_t create_time; /**< creation time, seconds since 1970 UTC */
    int customVoice;    /**< the platform's custom-voice flag */
} noltDevSDK_special_custom_voice_info;

/** @brief The stored custom voices (9476 bytes): get_runtime_info type 3. */
typedef struct {
    int num;                                             /**< valid entries; the module reads at most 16 */
    noltDevSDK_special_custom_voice_info voice_info[16]; /**< the first num are used */
} noltDevSDK_special_custom_voice_infos;

/** @brief Battery work status (12 bytes): get_runtime_info type 5. Reported as the numbers
 *  they hold. */
typedef struct {
    int keep_alive;       /**< keep-alive state */
    int work_time;        /**< working time */
    int special_business; /**< special-business state */
} noltDevSDK_special_battery_workstatus;

/** @brief The base device holding this device in trusteeship (16 bytes): get_runtime_info
 *  type 6. */
typedef struct {
    char subserial[16]; /**< serial of the base, at most 15 characters */
} noltDevSDK_Trusteeship;

/** @brief A child device held in trusteeship (24 bytes). */
typedef struct {
    char subserial[16]; /**< serial of the child, at most 15 characters */
    int connect_status; /**< 0 not connected, else connected */
    int iChannel;       /**< the child's channel on the base */
} noltDevSDK_trusteeship_subserial;

/** @brief Child devices held in trusteeship: get_runtime_info type 7. `len` of the query
 *  sets the capacity (the module offers 8 entries, 196 bytes). The report forced on coming
 *  online, before the first poll, sends an empty "list"; the next poll sends these. */
typedef struct {
    int num;                                      /**< valid entries, at most the capacity (8) */
    noltDevSDK_trusteeship_subserial subserial[]; /**< the first num are used */
} noltDevSDK_Trusteeship_connect;

/** @brief Power state of one child device (112 bytes). */
typedef struct {
    char subserial[16];  /**< serial of the child, at most 15 characters */
    int type;            /**< the device's power type */
    int value;           /**< the power value */
    char des[64];        /**< description, at most 63 characters */
    int remaining;       /**< remaining charge */
    char baseserial[16]; /**< serial of the base station, at most 15 characters */
    int status;          /**< power status */
} noltDevSDK_PowerStatus_subserial;

/** @brief Power states: get_runtime_info type 8. `len` of the query sets the capacity (the
 *  module offers 8 entries, 900 bytes). */
typedef struct {
    int num;                                      /**< valid entries, at most the capacity (8) */
    noltDevSDK_PowerStatus_subserial subserial[]; /**< the first num are used */
} noltDevSDK_PowerStatus;

/** @brief One trusteeship deletion (88 bytes). */
typedef struct {
    int iChannel;             /**< the child's channel ("channel") */
    char acSubserial[16];     /**< serial of the child, at most 15 characters */
    char acBaseserial[16];    /**< serial of its base, at most 15 characters */
    char cResult;             /**< the application's result for type 9: 0 deleted, else failed */
    char acNewShipSerial[16]; /**< serial of the new base, at most 15 characters; may be empty */
    char acNewShipKey[32];    /**< key for the new base, at most 31 characters; may be empty */
} noltDevSDK_Special_DelTrusteeship_Param_S;

/** @brief A block of trusteeship deletions (8 + 88 x usNum bytes). recv_msg type 6: the
 *  module's heap block, freed when the call returns. get_runtime_info type 9: allocated by
 *  the application with malloc() or calloc(), then owned and freed by the module. */
typedef struct {
    unsigned int uiVersion;     /**< version handed back to the shadow service (type 9); 0 on type 6 */
    unsigned short usNum;       /**< units that follow; type 9 reports exactly this many */
    unsigned char reserved0[2]; /**< padding, 0 */
    noltDevSDK_Special_DelTrusteeship_Param_S astUnit[]; /**< usNum units */
} noltDevSDK_Special_DelTrusteeship_S;

/** @brief The device's own port mappings (672 bytes): get_runtime_info type 10. The report
 *  forced on coming online, before the first poll, sends empty addresses and no mapping;
 *  the next poll sends these. */
typedef struct {
    char external_ip[16];                                        /**< public address, dotted text */
    char local_ip[16];                                           /**< local address, dotted text */
    noltDevSDK_special_voddns_mapped_info mapped_port_infos[16]; /**< up to 16; unused all zero */
} noltDevSDK_special_voddns_local_mapped_infos;

/** @brief Network connection of the associated chime (120 bytes): get_runtime_info type
 *  11. */
typedef struct {
    int conn_status;         /**< connection state */
    int signal;              /**< signal strength */
    char ssid[32];           /**< network name, at most 31 characters */
    char interface_name[16]; /**< network interface, at most 15 characters */
    char local_ip[16];       /**< address, dotted text */
    char mask[16];           /**< net mask, dotted text */
    char gateway[16];        /**< gateway, dotted text */
    char db_serial[16];      /**< serial of the associated device, at most 15 characters */
} noltDevSDK_special_associated_device_conn_status;

/** @brief 4G modem state (108 bytes): get_runtime_info type 16. */
typedef struct {
    int status;       /**< modem state */
    int sigal;        /**< signal strength */
    int type;         /**< network type */
    char network[32]; /**< operator network, at most 31 characters */
    char ICCID[32];   /**< SIM card id, at most 31 characters */
    char IMEI[32];    /**< modem id, at most 31 characters */
} noltDevSDK_special_4G_Info_S;

/** @brief One 4G traffic row (72 bytes). */
typedef struct {
    float incr;     /**< traffic increment; sent as an int cut toward zero */
    int type;       /**< traffic type */
    char ICCID[32]; /**< SIM card id; read up to its terminator or the field's end */
    char IMEI[32];  /**< modem id; read up to its terminator or the field's end */
} noltDevSDK_special_4G_flow_info;

/** @brief 4G traffic rows, owned by the application and read during
 *  noltDevSDK_special_send_msg() only. */
typedef struct {
    int max_count;                              /**< rows in flow_info, 0 or more */
    noltDevSDK_special_4G_flow_info *flow_info; /**< the rows; may be NULL only with no rows */
} noltDevSDK_special_4G_flow_info_page;

/* ---- exported functions ------------------------------------------------------------ */

/**
 * @brief Brings the module up: stores the callbacks, registers the status items and
 *        the shadow key, and loads the domain into the microkernel.
 *
 * Call it once, from the application's control thread, after the kernel and the
 * report-status library are up; not from inside a callback.
 *
 * With `info` NULL it returns NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM but leaves the module
 * marked initialised, with no callbacks stored and nothing registered: every later init
 * returns NOLTDEVSDK_SPECIAL_CODE_FAIL until noltDevSDK_special_fini(), and the guarded
 * functions pass their init check (noltDevSDK_special_send_msg() sends its request;
 * noltDevSDK_special_report_trusteeship() returns -1 unless an earlier init stored a
 * `get_runtime_info`).
 * Call fini before initialising again.
 * @param info callbacks and shadow option; the application's, read during the call.
 * @return 0; NOLTDEVSDK_SPECIAL_CODE_FAIL when already initialised;
 *         NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM for NULL; NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL
 *         when the kernel refuses the domain.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_init(noltDevSDK_special_init_info *info);

/**
 * @brief Takes the module down: unregisters 21 of the 22 status items, stops the
 *        report-status service and the shadow key. The domain stays loaded and the
 *        callbacks stay stored (see the file's description for what still runs).
 *
 * Call it from the application's control thread, not from inside a callback.
 * @return always 0.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_fini(void);

/**
 * @brief Sends a device-initiated request; the platform's answer, if any, comes later
 *        through recv_msg. Safe from any thread, also inside a callback.
 *
 * A NULL `msg_struct_ptr` is not refused for a verification code or a mapped-port query:
 * the request goes out with an empty "VerificationCode" or "Domain" element and the call
 * returns 0. A NULL 4G page gives NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR. Each request is
 * logged at level 1 as "s:" and its command in hexadecimal.
 * @param msg the request, the application's, read during the call only.
 * @return 0; NOLTDEVSDK_SPECIAL_CODE_NOT_INITED, NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM for
 *         NULL, NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT or NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_send_msg(noltDevSDK_special_msg *msg);

/**
 * @brief Sends a raw message to the platform (works without init). Safe from any thread,
 *        also inside a callback.
 * @param msg body, command, response flag and sequence number to use; the application's,
 *        read during the call only.
 * @return 0; NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM for NULL, a negative content_len or a
 *         NULL content with a length; NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR when the
 *         kernel refuses it.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_send_msg_to_platform(noltDevSDK_special_trans_cmd_msg *msg);

/**
 * @brief Event posting; not supported by this module.
 * @param info ignored.
 * @return always -1.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_post_event(noltDevSDK_special_post_event_info_S *info);

/**
 * @brief Reads the trusteeship afresh (get_runtime_info type 6, on the calling thread)
 *        and reports it at once under the next sequence number.
 * @return 0; NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR when the kernel refuses it; -1 when
 *         no get_runtime_info is stored, it fails, or the report cannot be made;
 *         NOLTDEVSDK_SPECIAL_CODE_NOT_INITED.
 */
NOLTDEVSDK_SPECIAL_API int noltDevSDK_special_report_trusteeship(void);

/**
 * @brief Reports people-flow counting segments under the next sequence number. Safe from
 *        any thread, also inside a callback.
 * @param seg_info 1 to 10 segments; the application's, read during the call only.
 * @return 0; NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR when the kernel refuses it;
 *         NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM for NULL or no segments;
 *         NOLTDEVSDK_SPECIAL_CODE_NOT_INITED.
 */
NOLTDEVSDK_SPECIAL_API int
noltDevSDK_special_report_flow_counting(noltDevSDK_special_flow_counting_seg_count *seg_info);

#ifdef __cplusplus
}
#endif

#endif
