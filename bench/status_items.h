// The module's 22 status items as the report-status service sees them, in registration
// order: each item's change detector and report function.
#pragma once

#include <cstddef>

namespace special_bench {

struct StatusItem {
    const char *name;
    int (*is_changed)(void);
    int (*report)(int b_force);
};

extern const StatusItem kStatusItems[];
extern const size_t kStatusItemCount;

} // namespace special_bench
