/* The platform request handlers, one per command of the command table (special_commands.cpp).
 * Each reads the request (positioned inside its root) and fills the answer; they run on
 * the kernel's message thread, and the document pointers are the caller's. */
#ifndef SPECIAL_HANDLERS_H
#define SPECIAL_HANDLERS_H

#include "markupstl.h"

/* feature switches and people-flow counting */
int SpecialSetSwitchEnableReq(CMarkupSTL *req, CMarkupSTL *rsp);
int SetFlowCountInfoReq(CMarkupSTL *req, CMarkupSTL *rsp);
/* custom voice: answered later from a worker thread, not by the frame */
int SpecialSetCustomVoiceReq(CMarkupSTL *req, CMarkupSTL *rsp);
/* linkage mode, wake, delayed sleep, drive-out */
int SpecialSetLinkageModeStatusReq(CMarkupSTL *req, CMarkupSTL *rsp);
int SpecialWakeReq(CMarkupSTL *req, CMarkupSTL *rsp);
int SetDelaySleepReq(CMarkupSTL *req, CMarkupSTL *rsp);
int SpecialProwlDriveOutReq(CMarkupSTL *req, CMarkupSTL *rsp);
/* key-value settings and the work-mode plan */
int SpecialSetKeyValueReq(CMarkupSTL *req, CMarkupSTL *rsp);
int SpecialSetDevPlanReq(CMarkupSTL *req, CMarkupSTL *rsp);
/* the platform's answers to the device's own requests */
int SpecialQueryVoddnsMappedPortRsp(CMarkupSTL *req, CMarkupSTL *rsp);
int SpecialUnbindUserRsp(const char *text);
/* The platform's answer to the unbind request, as the body came: logs it and delivers it. */
int UnbindUserReq_Bushandle(void *buf, int buf_len);

#endif
