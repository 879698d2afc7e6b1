/* The request/response frame (see special_frame.h). */
#include <stddef.h>

#include "log_ctrl.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_bus.h"
#include "special_frame.h"

/* Sends the answer with the request's sequence number, so the platform pairs the two;
 * without an answer command nothing is sent. */
static int SpecialSendAnswer(const CMarkupSTL &rsp, int rsp_cmd, SpecialAnswerForm form,
                             const char *cmd_version, unsigned int msg_seq, char *child_dev_id) {
    if (rsp_cmd == 0) {
        /* the printed value is the answer command less one, i.e. always 0xffffffff here */
        noltdev_debug(LOG_DEBUG, "ThirdyPartyPlatformReqAndRspBushandle no rsp, cmd = %#x\n",
                      static_cast<unsigned int>(rsp_cmd) - 1u);
        return 0;
    }
    if (form == kSpecialAnswerHandlerJson) {
        return special_send_json_to_platform(rsp.GetDoc().c_str(), rsp_cmd, cmd_version, 1, msg_seq);
    }
    return special_send_msg_to_platform(rsp, rsp_cmd, cmd_version, 1, msg_seq, child_dev_id);
}

/* Adds <UserDefine MsgSeq="seq"/> inside the request's root, or at top level without one.
 * "%d" so that a handler's atoi gives back every 32-bit sequence on any target. */
static void SpecialStampSeq(CMarkupSTL &req, unsigned int msg_seq) {
    if (req.FindElem("Request", true) || req.FindElem("Response", true)) {
        req.IntoElem();
    }
    req.AddElem("UserDefine");
    req.SetAttrib("MsgSeq", static_cast<int>(msg_seq));
}

int SpecialFrameRun(void *buf, int rsp_cmd, SpecialAnswerForm form, const char *cmd_version,
                    unsigned int msg_seq, special_handle_platform_req_and_rsp handle_req_rsp,
                    char *child_dev_id) {
    CMarkupSTL req;
    CMarkupSTL rsp;
    bool handled = req.SetDoc(buf != NULL ? static_cast<const char *>(buf) : "");
    if (form != kSpecialAnswerSkeleton) {
        handled = true; /* the handler gets even an unparsable request */
    } else {
        noltdev_xml_init_rsp(rsp);
        if (handled) {
            SpecialStampSeq(req, msg_seq);
        } else { /* the frame answers it: "Result" 3, and the handler is not called */
            noltdev_debug(LOG_ERROR, "SpecialPlatformReqAndRspBushandle XML parse failed, cmd = %#x\n",
                          static_cast<unsigned int>(rsp_cmd) - 1u);
            special_set_result(&rsp, SPECIAL_RESULT_PARSE_FAIL);
        }
    }
    if (handled) {
        if (SpecialLogWanted(LOG_INFO)) { /* printing the request only for a dropped line is waste */
            noltdev_debug(LOG_INFO, "xml: %s\n", req.GetDoc().c_str());
        }
        if (handle_req_rsp != NULL) {
            handle_req_rsp(&req, &rsp);
        }
    }
    return SpecialSendAnswer(rsp, rsp_cmd, form, cmd_version, msg_seq, child_dev_id);
}
