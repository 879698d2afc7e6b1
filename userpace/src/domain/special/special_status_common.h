/* What every status item shares: asking the application for a record, the change
 * detector over the watched part of that record, the reset to the not-seen value, and
 * the report skeleton (request envelope, "DevSerial", "Authorization", body, sequence
 * number, send). The items themselves are thin definitions over these. */
#ifndef SPECIAL_STATUS_COMMON_H
#define SPECIAL_STATUS_COMMON_H

#include <stddef.h>

#include "bscJSON.h"
#include "log_ctrl.h"
#include "markupstl.h"
#include "special_capacity.h"

/* How a change detector watches one item. */
struct SpecialWatch {
    int runtime_type;       /* NOLTDEVSDK_SPECIAL_RUNTIME_INFO_TYPE_E to ask */
    int selector;           /* the record's leading int when asking (the switch type), else 0 */
    size_t offset;          /* where the watched bytes start in the record */
    void *cache;            /* the module's copy of the watched bytes */
    int not_seen_words;     /* after a reset the cache is zero but for this many leading ints, -1 */
    size_t size;            /* number of watched bytes */
    int log_level;          /* level of the change line */
    const char *change_log; /* the change line; NULL logs nothing */
};

/* Watches one int field of the record, kept in an int cache whose not-seen value is -1. */
#define SPECIAL_INT_WATCH(runtime_type, selector, Record, field, cache, change_log)                          \
    { (runtime_type), (selector), offsetof(Record, field), &(cache), 1, sizeof(int), LOG_ERROR, (change_log) }
/* Watches a whole record kept in a cache of the same type; not_seen_words leading ints of
 * the cache are -1 after a reset, the rest zero. */
#define SPECIAL_RECORD_WATCH(runtime_type, cache, not_seen_words, log_level, change_log)                     \
    { (runtime_type), 0, 0, &(cache), (not_seen_words), sizeof(cache), (log_level), (change_log) }

/* Asks get_runtime_info for one record, zero-filled here and, when selector is not 0,
 * with selector as its leading int (the switch type). True when the application answered
 * 0; otherwise *verdict is the change detector's answer: 0 without a callback or on an
 * error, -1 when the item is not supported (low twelve bits of the code 4). */
bool SpecialStatusAsk(int runtime_type, void *record, size_t size, int *verdict, int selector = 0);

/* Compares the watched bytes of a fresh record with the cache; on a difference copies
 * them, logs the change line and returns 1, else 0. */
int SpecialStatusKeep(const SpecialWatch &watch, const void *record);

/* The common change detector over a record of type T; `tidy` (optional) terminates the
 * record's texts before they are compared, so the cache only ever holds terminated texts. */
template <class T> int SpecialStatusDetect(const SpecialWatch &watch, void (*tidy)(T *) = NULL) {
    T record;
    int verdict;
    if (!SpecialStatusAsk(watch.runtime_type, &record, sizeof record, &verdict, watch.selector)) {
        return verdict;
    }
    if (tidy != NULL) {
        tidy(&record);
    }
    return SpecialStatusKeep(watch, &record);
}

/* Defines the trio of an item of a family as thin calls over the item's descriptor (which
 * holds its watch): the common detector over a Record, the family's report, the reset. */
#define SPECIAL_STATUS_TRIO(Record, is_changed, report, reset, item, report_item)                            \
    int is_changed(void) {                                                                                   \
        return SpecialStatusDetect<Record>((item).watch);                                                    \
    }                                                                                                        \
    int report(int) {                                                                                        \
        return report_item(item);                                                                            \
    }                                                                                                        \
    int reset(void) {                                                                                        \
        return SpecialStatusReset((item).watch);                                                             \
    }

/* Puts the cache back to its not-seen value; returns 0. */
int SpecialStatusReset(const SpecialWatch &watch);

/* Puts a cache left zero-filled at build time in its not-seen state as the library loads,
 * so that no full-size not-seen copy of a large cache is stored. */
struct SpecialResetAtLoad {
    explicit SpecialResetAtLoad(const SpecialWatch &watch) { SpecialStatusReset(watch); }
};

/* Terminates a fixed-size text field of a record the application filled. */
#define SPECIAL_TERMINATE(field) ((field)[sizeof(field) - 1] = '\0')

/* A count from the application, trusted as it is, limited to the entries that exist. */
int SpecialStatusBound(int count, int capacity);

/* ---- the report skeleton ---------------------------------------------------------- */

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
/* A key-value status report: "Status" with "Type" and "Value", as a key-value report. */
int SpecialStatusReportValue(const char *type, const char *value);
int SpecialStatusReportInt(const char *type, int value);

/* Loads the formatted text of obj as the whole document (the platform takes JSON there
 * where other commands carry XML) and deletes obj. False when printing failed. */
bool SpecialStatusJsonDocument(CMarkupSTL *doc, bscJSON *obj);

/* The version text every report carries; its address also appears in one log line. */
extern const char g_special_status_version[];

#endif
