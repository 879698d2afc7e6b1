/* Requests the device sends to the platform on the application's initiative: unbind,
 * verification code, mapped-port query, 4G traffic and people-flow counting. Each builds
 * and sends one message and returns the send's result; none waits for an answer. Called
 * from the application's thread. */
#ifndef SPECIAL_REQUESTS_H
#define SPECIAL_REQUESTS_H

#include "noltDevSDK_special_def.h"

int SpecialUnbindUserReq(void);
/* code: the application's text, read no further than its record's field */
int SpecialSendVerificationCodeReq(char *code);
/* domain: the application's text, read no further than its record's field */
int SpecialQueryVoddnsMappedPortReq(char *domain);
/* page: a noltDevSDK_special_4G_flow_info_page */
int Special4GFlowReportReq(void *page);
int ReportFlowCountReq(noltDevSDK_special_flow_counting_seg_count *seg_info);

#endif
