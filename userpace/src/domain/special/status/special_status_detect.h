/* Change detection of the status items: how an item watches its record, asking the
 * application for a fresh record, comparing the watched bytes with the module's cache,
 * and the reset to the not-seen value. Used from the report-status thread. */
#ifndef SPECIAL_STATUS_DETECT_H
#define SPECIAL_STATUS_DETECT_H

#include <stddef.h>
#include <string.h>

#include "app/special_capacity.h"
#include "log_ctrl.h"

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
/* Names the record an item asks for where nothing of it is watched or cached. */
#define SPECIAL_ASK_ONLY_WATCH(runtime_type)                                                                 \
    { (runtime_type), 0, 0, NULL, 0, 0, LOG_ERROR, NULL }

/* Asks get_runtime_info for a record already prepared (see SpecialStatusAsk). */
bool SpecialStatusAskPrepared(int runtime_type, void *record, size_t size, int *verdict);

/* Asks get_runtime_info for one record, zero-filled here and, when selector is not 0,
 * with selector as its leading int (the switch type). True when the application answered
 * 0; otherwise *verdict is the change detector's answer: 0 without a callback or on an
 * error, -1 when the item is not supported (low twelve bits of the code 4). Inline with
 * the record's own size, so that a small record is cleared without a call at every poll. */
template <class T> bool SpecialStatusAsk(int runtime_type, T *record, int *verdict, int selector = 0) {
    memset(record, 0, sizeof *record);
    if (selector != 0) {
        memcpy(record, &selector, sizeof selector);
    }
    return SpecialStatusAskPrepared(runtime_type, record, sizeof *record, verdict);
}

/* Compares the watched bytes of a fresh record with the cache; on a difference copies
 * them, logs the change line and returns 1, else 0. */
int SpecialStatusKeep(const SpecialWatch &watch, const void *record);

/* The common change detector over a record of type T (the switches, which ask with a
 * selector, have their own); `tidy` (optional) terminates the
 * record's texts before they are compared, so the cache only ever holds terminated texts. */
template <class T> int SpecialStatusDetect(const SpecialWatch &watch, void (*tidy)(T *) = NULL) {
    T record;
    int verdict;
    if (!SpecialStatusAsk(watch.runtime_type, &record, &verdict)) {
        return verdict;
    }
    if (tidy != NULL) {
        tidy(&record);
    }
    return SpecialStatusKeep(watch, &record);
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

#endif
