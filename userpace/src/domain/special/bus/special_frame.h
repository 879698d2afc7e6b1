/* The request/response frame every framed platform handler runs in: parse the request,
 * prepare and stamp, call the handler, send the answer under the answer command. Runs on
 * the kernel's message thread; both documents live on the frame's stack for one call. */
#ifndef SPECIAL_FRAME_H
#define SPECIAL_FRAME_H

#include "markupstl.h"

/* A platform handler: reads the request (positioned inside its root), fills the answer. */
typedef int (*special_handle_platform_req_and_rsp)(CMarkupSTL *req, CMarkupSTL *rsp);

/* How the answer to a platform command is made and sent. */
enum SpecialAnswerForm {
    /* the frame prepares the answer's skeleton, answers an unparsable request with
     * "Result" 3 itself and stamps the request with its sequence number; sent as XML */
    kSpecialAnswerSkeleton,
    /* the handler builds the whole answer: no skeleton, no parse check, no stamp; XML */
    kSpecialAnswerHandlerXml,
    /* the same, the answer document's text sent as JSON */
    kSpecialAnswerHandlerJson
};

/* Parses buf (read as NUL-terminated text), prepares the answer as form says, calls the
 * handler (may be NULL) and sends the answer under rsp_cmd with the request's sequence
 * number; nothing is sent when rsp_cmd is 0. The send's result, or 0 when nothing is sent.
 * child_dev_id is passed on to the XML send, which ignores it. */
int SpecialFrameRun(void *buf, int rsp_cmd, SpecialAnswerForm form, const char *cmd_version,
                    unsigned int msg_seq, special_handle_platform_req_and_rsp handle_req_rsp,
                    char *child_dev_id);

#endif
