/* The one way into the application's two callbacks: every call wraps its record in the
 * same envelope (type, record, length) and goes through here. Callers keep their own log
 * lines; nothing is logged here. Callable from any thread the module runs on. */
#ifndef SPECIAL_APP_H
#define SPECIAL_APP_H

#include <stddef.h>

/* Hands record (len bytes, owned by the caller) to recv_msg as a message of this type.
 * False, and no call, when no recv_msg is stored; otherwise *rc is its result. */
bool SpecialAppRecvMsg(int type, void *record, size_t len, int *rc);

/* Asks get_runtime_info for a record of this type: *record (len bytes, may be NULL with
 * len 0) goes in and whatever the application leaves there comes back, for the queries
 * where it hands over a block it allocated. False, and no call, when no get_runtime_info
 * is stored; otherwise *rc is its result. */
bool SpecialAppRuntimeInfo(int type, void **record, size_t len, int *rc);

#endif
