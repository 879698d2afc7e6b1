/* The application port: the only owner of the application's two stored callbacks and of
 * the module's init flag, and the only code that calls the application or decides that
 * there is no callback to call. Every call wraps its record in the same envelope (type,
 * record, length). When a callback is missing nothing is called, the caller's line (if
 * any) is logged at the error level and the answer says so. Callable from any thread the
 * module runs on; the callbacks are stored by init on the control thread before the
 * kernel's threads can ask for them. A call's result is the callback's, or -1 when the
 * callback is missing; a caller that must tell the two apart asks SpecialAppHas* first. */
#ifndef SPECIAL_APP_H
#define SPECIAL_APP_H

#include <stddef.h>

#include "noltDevSDK_special_def.h"

/* The line most callers log when the application gave no callback. */
#define SPECIAL_APP_NO_CALLBACK "special domain cb is not init\n"

/* Copies both callback pointers into the module (either may be NULL). */
void SpecialAppStore(const noltDevSDK_special_callback *cb);

/* Whether the module is initialised; plain state, used from the control thread. */
bool SpecialAppInited(void);
void SpecialAppSetInited(bool inited);

/* Whether recv_msg (get_runtime_info) is stored; when not, logs missing_log (NULL: nothing). */
bool SpecialAppHasRecvMsg(const char *missing_log);
bool SpecialAppHasRuntimeInfo(const char *missing_log);

/* Hands record (len bytes, owned by the caller) to recv_msg as a message of this type. */
int SpecialAppRecvMsg(int type, void *record, size_t len, const char *missing_log);

/* Asks get_runtime_info for a record of this type: *record (len bytes, may be NULL with
 * len 0) goes in and whatever the application leaves there comes back, for the queries
 * where it hands over a block it allocated. */
int SpecialAppRuntimeInfo(int type, void **record, size_t len, const char *missing_log);

#endif
