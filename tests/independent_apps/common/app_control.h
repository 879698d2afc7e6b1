/* The control requests a test bench sends to an application library
 * (noltdev_app_control): "change TYPE", "answer recv_msg|get_runtime_info TYPE CODE" and
 * "answer ok", and a small table of forced answers the callbacks consult. */
#ifndef APP_CONTROL_H
#define APP_CONTROL_H

#include <stddef.h>

#include "noltDevSDK_special_def.h"

/* A record is usable when it is there and at least as large as the header lays it out. */
#define APP_FITS(data, len, type) ((data) != NULL && (len) >= (int)sizeof(type))
#define APP_BIT(type) (1u << (type))

/* Copies a text into a field of size bytes, cut and always terminated. */
void app_copy_text(char *to, size_t size, const char *from);

/* Brings the module up with the application's two callbacks. */
int app_start(int (*recv_msg)(noltDevSDK_special_msg_to_dev *),
              int (*get_runtime_info)(noltDevSDK_special_runtime_info *));

/* The whole control hook of an application that has the message types set in msgs and
 * the runtime types set in items (APP_BIT): "change" calls change_item, "answer" is
 * stored for the callbacks to find; anything else, or a type it lacks, is refused (-1). */
int app_control(const char *request, unsigned msgs, unsigned items, int (*change_item)(int type));

enum app_callback { APP_RECV_MSG = 0, APP_GET_RUNTIME_INFO = 1 };

enum app_request_kind { APP_REQ_CHANGE, APP_REQ_ANSWER, APP_REQ_ANSWER_OK };

struct app_request {
    enum app_request_kind kind;
    enum app_callback callback; /* change: always APP_GET_RUNTIME_INFO */
    int type;
    int code;
};

/* 0 when the request is well formed; TYPE and CODE take a number or a unique tail of
 * the header's name (ON_SET_SPECIAL_PLAN, VOICE_IS_BUSY). */
int app_parse_request(const char *text, struct app_request *req);

/* Forced answers, safe from any thread. */
void app_answer_set(enum app_callback callback, int type, int code);
void app_answer_clear_all(void);
/* 1 and *code when an answer is forced for this callback and type. */
int app_answer_forced(enum app_callback callback, int type, int *code);

#endif
