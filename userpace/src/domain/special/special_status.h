/* The 22 status items the module hands to the report-status service, each as a trio:
 * change detector (1 changed, 0 not, -1 not supported), report function (sends the
 * cached value; b_force set for a forced report) and reset function (back to the
 * not-seen value). The trios are declared from the one list, special_status_items.inc. */
#ifndef SPECIAL_STATUS_H
#define SPECIAL_STATUS_H

#define SPECIAL_STATUS_ITEM_FORCED(id, is_changed, report)                                                   \
    int is_changed(void);                                                                                    \
    int report(int b_force);
#define SPECIAL_STATUS_ITEM(id, is_changed, report, reset)                                                   \
    SPECIAL_STATUS_ITEM_FORCED(id, is_changed, report)                                                       \
    int reset(void);
#include "special_status_items.inc"
#undef SPECIAL_STATUS_ITEM
#undef SPECIAL_STATUS_ITEM_FORCED

#endif
