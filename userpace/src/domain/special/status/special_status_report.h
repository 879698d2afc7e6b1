/* The report skeleton every status item sends through: the request envelope ("DevSerial",
 * "Authorization"), the item's body, the sequence number and the send; and the bodies
 * several items share ("Status" with a value, JSON values). */
#ifndef SPECIAL_STATUS_REPORT_H
#define SPECIAL_STATUS_REPORT_H

#include <stddef.h>

#include "bscJSON.h"
#include "markupstl.h"

/* Adds a report's body to doc, positioned inside the request after the envelope.
 * True to send; false sends nothing and makes *result the report's result. */
typedef bool (*SpecialReportBody)(CMarkupSTL *doc, const void *ctx, int *result);

/* For a body that gives up: logs line (when not NULL) at the error level, makes the
 * report's result -1 and returns false, so nothing is sent. */
bool SpecialStatusGiveUp(int *result, const char *line);

enum {
    kSpecialReportSerial = 1,    /* "DevSerial" before "Authorization" */
    kSpecialReportSequenced = 2, /* the next sequence number; without it 0 */
    kSpecialReportUsual = kSpecialReportSerial | kSpecialReportSequenced
};

/* Request skeleton, then "DevSerial" (with kSpecialReportSerial) and "Authorization". */
void SpecialStatusStart(CMarkupSTL *doc, int flags);
/* Sends a device-initiated report with this sequence number; the send path's result. */
int SpecialStatusSend(const CMarkupSTL &doc, int cmd, unsigned int seq);
/* The whole skeleton: start, body, sequence number, send. */
int SpecialStatusReport(int cmd, SpecialReportBody body, const void *ctx, int flags = kSpecialReportUsual);

/* Adds "Status" with the attributes "Type" and, when value is not NULL, "Value". */
void SpecialStatusAddStatus(CMarkupSTL *doc, const char *type, const char *value);
/* One member of a JSON object: a string when text is not NULL, else the number. */
struct SpecialJsonMember {
    const char *key;
    const char *text;
    int number;
};
/* An object of these members in this order; NULL when cJSON fails. */
bscJSON *SpecialStatusJsonObject(const SpecialJsonMember *members, size_t count);
/* Sets the "Value" of the main element to the object of these members, printed
 * formatted or compact. When cJSON fails it gives up (see SpecialStatusGiveUp) with
 * create_fail or print_fail as the log line. */
bool SpecialStatusJsonValue(CMarkupSTL *doc, const SpecialJsonMember *members, size_t count, bool formatted,
                            const char *create_fail, const char *print_fail, int *result);
/* Prints obj (formatted or compact) into the "Value" attribute of the main element and
 * deletes obj; false, and no "Value", when printing failed. */
bool SpecialStatusSetJsonValue(CMarkupSTL *doc, bscJSON *obj, bool formatted);

/* Loads the formatted text of obj as the whole document (the platform takes JSON there
 * where other commands carry XML) and deletes obj. False when printing failed. */
bool SpecialStatusJsonDocument(CMarkupSTL *doc, bscJSON *obj);

/* The version text every report carries; its address also appears in one log line. */
extern const char g_special_status_version[];

#endif
