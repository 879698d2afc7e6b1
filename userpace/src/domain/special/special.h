/* The entry points of the module's parts: device-initiated requests and the status
 * registry's registration calls. */
#ifndef SPECIAL_H
#define SPECIAL_H

#include "markupstl.h"
#include "noltDevSDK_special_def.h"

/* ---- device-initiated requests ---------------------------------------------------- */

int SpecialUnbindUserReq(void);
int SpecialSendVerificationCodeReq(char *code);
int SpecialQueryVoddnsMappedPortReq(char *domain);
int Special4GFlowReportReq(void *page);
int ReportFlowCountReq(noltDevSDK_special_flow_counting_seg_count *seg_info);

/* ---- status items (the trios are declared in special_status.h) -------------------- */

/* Registers the 22 status items in the registry's order. */
void SpecialStatusRegisterAll(void);
/* Unregisters the 21 items that fini takes down (92 stays registered). */
void SpecialStatusUnregisterAll(void);
/* Reads the trusteeship afresh and reports it at once. */
int ReportTrusteeship_Immediately(void);

#endif
