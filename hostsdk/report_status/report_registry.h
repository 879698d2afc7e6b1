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

// The functions of one status item.
struct ReportFunctions {
    int (*is_changed)(void) = nullptr;
    int (*report)(int b_force) = nullptr;
    int (*reset)(void) = nullptr;
};

// One registered status item. A second registration of its id replaces its functions
// in place (under the registry lock). Items are shared with a poll in progress, so that
// a poll never holds the registry lock while it calls an item function.
struct ReportItem {
    uint32_t id = 0;
    ReportFunctions fn;
    std::atomic<bool> forced{false};
    std::atomic<bool> live{true}; // false once unregistered
};

using ReportItemPtr = std::shared_ptr<ReportItem>;

// An item as a poll sees it: the functions it had when the poll began.
struct ReportEntry {
    ReportItemPtr item;
    ReportFunctions fn;
};

class ReportRegistry {
  public:
    int Register(const noltDevSDK_report_status_info &info);
    int Unregister(uint32_t id);
    int Force(uint32_t id);
    void Clear();
    // Replaces out with the items as they stand, in registration order (reusing its
    // storage, so that a steady poll does not allocate).
    void Snapshot(std::vector<ReportEntry> *out) const;
    // Brings out up to date when the registry changed since *seen (0: never seen) and
    // sets *seen; a steady poll then neither locks nor touches the items' counts.
    void Refresh(std::vector<ReportEntry> *out, uint64_t *seen) const;
    // Copies at most max ids and returns how many it copied; without room (ids NULL or
    // max <= 0) returns how many items are registered.
    int Ids(uint32_t *ids, int max) const;
    int HasReset(uint32_t id) const;

  private:
    using Items = std::vector<ReportItemPtr>;
    Items::const_iterator PositionLocked(uint32_t id) const;
    void Snapshot(std::vector<ReportEntry> *out, const std::lock_guard<std::mutex> &held) const;
    ReportItemPtr FindLocked(uint32_t id) const;

    mutable std::mutex mu_;
    Items items_;
    // Changed (under mu_) by every registration, unregistration and clear.
    std::atomic<uint64_t> version_{1};
};

} // namespace noltdev_host
