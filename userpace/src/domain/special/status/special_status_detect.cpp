/* Change detection of the status items: the runtime-info question, comparison with the
 * cache, reset and the bound on an application's count. */
#include "special_status_detect.h"

#include <string.h>

#include "app/special_app.h"
#include "log_ctrl.h"

bool SpecialStatusAskPrepared(int runtime_type, void *record, size_t size, int *verdict) {
    *verdict = 0;
    /* a missing callback gives -1: the detector's answer is 0, as for any other failure */
    const int rc = SpecialAppRuntimeInfo(runtime_type, &record, size, NULL);
    if (rc == 0) {
        return true;
    }
    /* the application's codes keep their meaning in the low twelve bits: 4 is "not supported" */
    *verdict = (rc & 0xFFF) == 4 ? -1 : 0;
    return false;
}

/* Whether size bytes at a and b are equal; one int, the most common watch, is compared
 * with a constant size that the compiler does without a call (this runs at every poll). */
static bool SpecialSameBytes(const void *a, const void *b, size_t size) {
    if (size == sizeof(int)) {
        return memcmp(a, b, sizeof(int)) == 0;
    }
    return memcmp(a, b, size) == 0;
}

int SpecialStatusKeep(const SpecialWatch &watch, const void *record) {
    const unsigned char *fresh = static_cast<const unsigned char *>(record) + watch.offset;
    if (SpecialSameBytes(fresh, watch.cache, watch.size)) {
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
