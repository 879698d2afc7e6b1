/* One status item as a descriptor: its read (what is asked of the application and which
 * bytes are watched), its report's command, body builder and flags, and the line logged
 * on each report. Each item's trio is written out in its file: the common detector,
 * report and reset over the descriptor, or the item's own where the common one does not
 * fit. */
#ifndef SPECIAL_STATUS_ITEM_H
#define SPECIAL_STATUS_ITEM_H

#include "special_status_detect.h"
#include "special_status_report.h"

struct SpecialStatusItem {
    SpecialWatch watch;     /* the read */
    int cmd;                /* the report's command */
    SpecialReportBody body; /* fills the report's body; its ctx is the item */
    int flags;              /* kSpecialReport* of the skeleton, kSpecialReportNeedsApp */
    const char *entry_log;  /* logged at the debug level on every report; NULL logs nothing */
    const char *key;        /* the platform's key of a key-value item ("Status" Type), else NULL */
    int code;               /* the platform's code of a switch item, else 0 */
};

/* With this flag the report fails (-1, nothing sent) when the application gave no
 * get_runtime_info. */
enum { kSpecialReportNeedsApp = 0x100 };

/* The body of a key-value item: "Status" with the item's key and its cached int. */
bool SpecialStatusKeyValueBody(CMarkupSTL *doc, const void *item, int *result);

/* Sends the item's report through the skeleton; the skeleton's result. */
int SpecialStatusReportItem(const SpecialStatusItem &item);

#endif
