/* Helpers every platform handler repeats: bounded text copies from the request cursor
 * and before delivery, and forced status reports. */
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

/* Whether the application's recv_msg is there to deliver to (the application port
 * decides, and logs the usual line when it is not); when it is, logs the handler's trace
 * line at the debug level. */
bool SpecialHandlerCanDeliver(const char *trace);

/* Marks a status item for a report at the service's next poll. */
void SpecialForceReport(NOLTDEVSDK_REPORT_STATUS_E id);

#endif
