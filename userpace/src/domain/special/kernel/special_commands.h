/* The command table: everything the module knows about one platform command in one row,
 * and the lookups the router, the frame's answer rules and the redirect registration
 * are derived from. Read-only data, used from the kernel's threads. */
#ifndef SPECIAL_COMMANDS_H
#define SPECIAL_COMMANDS_H

#include "bus/special_frame.h"

/* A handler that takes the raw body, without the request/response frame. */
typedef int (*special_handle_platform_raw)(void *buf, int buf_len);

/* A type key that brings a generic platform command to this domain, and the line logged
 * when the kernel refuses to register it. */
struct SpecialRedirect {
    const char *key;
    const char *fail_log;
};

/* One platform command. With `handler` it runs inside the frame, answered under
 * `rsp_cmd` (0: nothing is sent) in the given form; with `raw_handler` it gets the body
 * as it came; with neither it is ignored. A row whose `cmd` is kSpecialUnrouted is an
 * answer the module keeps without a route: it only states its answer's form. */
struct special_command {
    int cmd;
    special_handle_platform_req_and_rsp handler;
    special_handle_platform_raw raw_handler;
    int rsp_cmd;
    SpecialAnswerForm form;
    const SpecialRedirect *redirects; /* ended by a NULL key; NULL: none */
};

/* The `cmd` of a row that no incoming command reaches. */
static constexpr int kSpecialUnrouted = -1;

/* The row of an incoming command, or NULL when the command goes to the application raw. */
const special_command *SpecialCommandFind(int cmd);

/* Registers every redirect key of the table with the kernel, in the table's order; a
 * refused key is logged with its line and the next one still tried. */
void SpecialCommandRegisterRedirects(void);

/* The frame under the name the platform's documents give it: the answer's form is the
 * command table's for rsp_cmd (made by the frame for an answer the table does not list).
 * buf_len is not used: the body is read as a NUL-terminated text. */
int SpecialPlatformReqAndRspXmlBushandle(void *buf, int buf_len, int rsp_cmd, const char *cmd_version,
                                         unsigned int msg_seq,
                                         special_handle_platform_req_and_rsp handle_req_rsp,
                                         char *child_dev_id);

#endif
