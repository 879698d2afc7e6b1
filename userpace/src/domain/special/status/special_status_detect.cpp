/* Change detection of the status items: the runtime-info question, comparison with the
 * cache, reset and the bound on an application's count. */
#include "special_status_detect.h"

#include <string.h>

#include "app/special_app.h"
#include "log_ctrl.h"

bool SpecialStatusAsk(int runtime_type, void *record, size_t size, int *verdict, int selector) {
    *verdict = 0;
    if (!SpecialAppHasRuntimeInfo(NULL)) {
        return false;
    }
    memset(record, 0, size);
    if (selector != 0) {
        memcpy(record, &selector, sizeof selector);
    }
    const SpecialAppAnswer answer = SpecialAppRuntimeInfo(runtime_type, &record, size, NULL);
    const int rc = answer.rc;
    if (!answer.called) {
        return false;
    }
    if (rc == 0) {
        return true;
    }
    /* the application's codes keep their meaning in the low twelve bits: 4 is "not supported" */
    *verdict = (rc & 0xFFF) == 4 ? -1 : 0;
    return false;
}

int SpecialStatusKeep(const SpecialWatch &watch, const void *record) {
    const unsigned char *fresh = static_cast<const unsigned char *>(record) + watch.offset;
    if (memcmp(fresh, watch.cache, watch.size) == 0) {
        return 0;
    }
    memcpy(watch.cache, fresh, watch.size);
    if (watch.change_log != NULL) {
        noltdev_debug(watch.log_level, "%s", watch.change_log);
    }
    return 1;
}

int SpecialStatusReset(const SpecialWatch &watch) {
    static const int not_seen = -1;
    memset(watch.cache, 0, watch.size);
    for (int i = 0; i < watch.not_seen_words; i++) {
        memcpy(static_cast<char *>(watch.cache) + i * sizeof(int), &not_seen, sizeof not_seen);
    }
    return 0;
}

int SpecialStatusBound(int count, int capacity) {
    if (count < 0) {
        return 0;
    }
    return count < capacity ? count : capacity;
}
