// The report-status service's registry: the registered status items in registration
// order, each with its atomic force mark. Safe to use from any thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "noltDevSDK_report_status.h"

namespace noltdev_host {

// One registered status item. Entries are shared with a poll in progress, so that a
// poll never holds the registry lock while it calls an item function.
struct ReportItem {
    uint32_t id = 0;
    std::atomic<bool> forced{false};
    std::atomic<bool> live{true};
    // The functions are replaced in place by a second registration of the same id; they
    // are read and written under the registry lock.
    int (*is_changed)(void) = nullptr;
    int (*report)(int b_force) = nullptr;
    int (*reset)(void) = nullptr;
};

using ReportItemPtr = std::shared_ptr<ReportItem>;

// The functions of one item as a poll reads them, or nothing once it is unregistered.
struct ReportFunctions {
    int (*is_changed)(void) = nullptr;
    int (*report)(int b_force) = nullptr;
    int (*reset)(void) = nullptr;
};

class ReportRegistry {
  public:
    int Register(const noltDevSDK_report_status_info &info);
    int Unregister(uint32_t id);
    int Force(uint32_t id);
    void Clear();
    // The items as they stand, in registration order.
    std::vector<ReportItemPtr> Snapshot() const;
    // Copies an item's functions; false once the item has been unregistered.
    bool Functions(const ReportItem &item, ReportFunctions *out) const;
    // Copies at most max ids and returns how many it copied; without room (ids NULL or
    // max <= 0) returns how many items are registered.
    int Ids(uint32_t *ids, int max) const;
    int HasReset(uint32_t id) const;

  private:
    using Items = std::vector<ReportItemPtr>;
    Items::const_iterator PositionLocked(uint32_t id) const;
    ReportItemPtr FindLocked(uint32_t id) const;

    mutable std::mutex mu_;
    Items items_;
};

} // namespace noltdev_host
