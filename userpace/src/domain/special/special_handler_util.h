/* Helpers every platform handler repeats: bounded text copies from the request cursor,
 * delivery of a payload record to the application, the application's current state,
 * and forced status reports. */
#ifndef SPECIAL_HANDLER_UTIL_H
#define SPECIAL_HANDLER_UTIL_H

#include <stddef.h>

#include "markupstl.h"
#include "noltDevSDK_report_status.h"

/* Copies at most size - 1 bytes of src into dst and always terminates it. */
void SpecialCopyText(char *dst, size_t size, const char *src);

/* Finds name (from the first child when restart is true, after the main element
 * otherwise) and copies its text into dst, bounded. Returns whether it was found; dst is
 * left alone when it was not. */
bool SpecialFindText(CMarkupSTL *doc, const char *name, bool restart, char *dst, size_t size);

/* Finds name like SpecialFindText and stores SpecialAtoi of its text. Returns whether found. */
bool SpecialFindInt(CMarkupSTL *doc, const char *name, bool restart, int *value);

/* SpecialAtoi of an attribute of the main element (0 when absent). */
int SpecialAttribInt(const CMarkupSTL *doc, const char *name);

/* Copies an attribute of the main element into dst, bounded (empty when absent). */
void SpecialAttribText(const CMarkupSTL *doc, const char *name, char *dst, size_t size);

/* true when the application's recv_msg is stored, after logging trace (when not NULL) at
 * the debug level; otherwise logs that the callbacks are missing and returns false. */
bool SpecialRecvMsgReady(const char *trace);

/* Hands one payload record to recv_msg and returns its result (-1, logged, when no
 * recv_msg is stored). */
int SpecialDeliver(int type, void *record, size_t len);

/* Asks get_runtime_info to fill one record and returns its result (-1, logged, when no
 * get_runtime_info is stored). */
int SpecialGetRuntime(int type, void *record, size_t len);

/* Marks a status item for a report at the service's next poll. */
void SpecialForceReport(NOLTDEVSDK_REPORT_STATUS_E id);

#endif
