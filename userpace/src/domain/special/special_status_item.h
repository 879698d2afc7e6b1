/* One status item as a descriptor: its read (what is asked of the application and which
 * bytes are watched), its report's command, body builder and flags, and the line logged
 * on each report. Every item's trio is made over its descriptor by one macro, with the
 * item's own detector, report or reset (its hooks) where the common one does not fit. */
#ifndef SPECIAL_STATUS_ITEM_H
#define SPECIAL_STATUS_ITEM_H

#include "special_status_detect.h"
#include "special_status_report.h"

struct SpecialStatusItem;

/* What an item does in place of the common detector, report or reset; a NULL member keeps
 * the common one. Each is called from the report-status thread with the item. The hooks
 * are a constant given to the trio macro, not kept in the descriptor, so that each is
 * called directly and costs no pointer on the device. */
struct SpecialStatusHooks {
    int (*detect)(const SpecialStatusItem &item); /* the change detector's answer */
    int (*report)(const SpecialStatusItem &item); /* the report's result */
    int (*reset)(const SpecialStatusItem &item);  /* 0 */
};

struct SpecialStatusItem {
    SpecialWatch watch;     /* the read */
    int cmd;                /* the report's command */
    SpecialReportBody body; /* fills the report's body; its ctx is the item */
    int flags;              /* kSpecialReport* of the skeleton, kSpecialReportNeedsApp */
    const char *entry_log;  /* logged at the debug level on every report; NULL logs nothing */
    const char *key;        /* the platform's key of a key-value item ("Status" Type), else NULL */
    int code;               /* the platform's code of a switch item, else 0 */
};

/* The descriptor of an item that is neither a key-value item nor a switch: its watch,
 * report command, body builder, flags and entry line. */
#define SPECIAL_STATUS_ITEM_OF(watch, cmd, body, flags, entry_log)                                           \
    { watch, cmd, body, flags, entry_log, NULL, 0 }

/* The hooks of an item that does everything the common way. */
static const SpecialStatusHooks kSpecialCommonHooks = {NULL, NULL, NULL};

/* With this flag the report fails (-1, nothing sent) when the application gave no
 * get_runtime_info. */
enum { kSpecialReportNeedsApp = 0x100 };

/* The body of a key-value item: "Status" with the item's key and its cached int. */
bool SpecialStatusKeyValueBody(CMarkupSTL *doc, const void *item, int *result);

/* Sends the item's report through the skeleton; the skeleton's result. */
int SpecialStatusReportItem(const SpecialStatusItem &item);

/* The change detector, report and reset of a described item: its hook when hooks (a
 * constant SpecialStatusHooks) has one, else the common detector over a Record (see
 * SpecialStatusDetect), SpecialStatusReportItem and SpecialStatusReset. */
#define SPECIAL_DESCRIBED_DETECT(Record, is_changed, item, tidy, hooks)                                      \
    int is_changed(void) {                                                                                   \
        return (hooks).detect != NULL ? (hooks).detect(item)                                                 \
                                      : SpecialStatusDetect<Record>((item).watch, tidy);                     \
    }
#define SPECIAL_DESCRIBED_REPORT(report_fn, item, hooks)                                                     \
    int report_fn(int) {                                                                                     \
        return (hooks).report != NULL ? (hooks).report(item) : SpecialStatusReportItem(item);                \
    }
#define SPECIAL_DESCRIBED_RESET(reset_fn, item, hooks)                                                       \
    int reset_fn(void) {                                                                                     \
        return (hooks).reset != NULL ? (hooks).reset(item) : SpecialStatusReset((item).watch);               \
    }

/* Defines the trio of a described item over its descriptor and hooks. */
#define SPECIAL_DESCRIBED_TRIO(Record, is_changed, report_fn, reset_fn, item, tidy, hooks)                   \
    SPECIAL_DESCRIBED_DETECT(Record, is_changed, item, tidy, hooks)                                          \
    SPECIAL_DESCRIBED_REPORT(report_fn, item, hooks)                                                         \
    SPECIAL_DESCRIBED_RESET(reset_fn, item, hooks)
/* The same for an item reported only when forced, which has no reset. */
#define SPECIAL_DESCRIBED_FORCED(Record, is_changed, report_fn, item, tidy, hooks)                           \
    SPECIAL_DESCRIBED_DETECT(Record, is_changed, item, tidy, hooks)                                          \
    SPECIAL_DESCRIBED_REPORT(report_fn, item, hooks)

#endif
