// The report-status service's registry: registration, replacement, unregistration and
// force marks of the status items.
#include "report_registry.h"

#include <algorithm>

namespace noltdev_host {

ReportRegistry::Items::const_iterator ReportRegistry::PositionLocked(uint32_t id) const {
    return std::find_if(items_.begin(), items_.end(), [id](const ReportItemPtr &p) { return p->id == id; });
}

ReportItemPtr ReportRegistry::FindLocked(uint32_t id) const {
    auto it = PositionLocked(id);
    return it == items_.end() ? nullptr : *it;
}

int ReportRegistry::Register(const noltDevSDK_report_status_info &info) {
    std::lock_guard<std::mutex> lock(mu_);
    // A second registration of an id takes the first one's place in the polling order;
    // a force mark still pending for the id is kept.
    ReportItemPtr item = FindLocked(info.status_value);
    if (!item) {
        item = std::make_shared<ReportItem>();
        item->id = info.status_value;
        items_.push_back(item);
    }
    item->fn.is_changed = info.status_is_changed;
    item->fn.report = info.report_status;
    item->fn.reset = info.status_reset;
    ++version_;
    return 0;
}

int ReportRegistry::Unregister(uint32_t id) {
    std::lock_guard<std::mutex> lock(mu_);
    auto it = PositionLocked(id);
    if (it == items_.end()) {
        return -1;
    }
    (*it)->live = false;
    items_.erase(it);
    ++version_;
    return 0;
}

int ReportRegistry::Force(uint32_t id) {
    std::lock_guard<std::mutex> lock(mu_);
    ReportItemPtr item = FindLocked(id);
    if (!item) {
        return -1;
    }
    item->forced = true;
    return 0;
}

void ReportRegistry::Clear() {
    std::lock_guard<std::mutex> lock(mu_);
    for (const ReportItemPtr &item : items_) {
        item->live = false;
    }
    items_.clear();
    ++version_;
}

void ReportRegistry::Snapshot(std::vector<ReportEntry> *out) const {
    std::lock_guard<std::mutex> lock(mu_);
    Snapshot(out, lock);
}

void ReportRegistry::Snapshot(std::vector<ReportEntry> *out, const std::lock_guard<std::mutex> &) const {
    out->clear();
    for (const ReportItemPtr &item : items_) {
        out->push_back(ReportEntry{item, item->fn});
    }
}

void ReportRegistry::Refresh(std::vector<ReportEntry> *out, uint64_t *seen) const {
    if (version_.load() == *seen) {
        return;
    }
    std::lock_guard<std::mutex> lock(mu_);
    Snapshot(out, lock);
    *seen = version_.load();
}

int ReportRegistry::Ids(uint32_t *ids, int max) const {
    std::lock_guard<std::mutex> lock(mu_);
    int count = static_cast<int>(items_.size());
    if (ids == nullptr || max <= 0) {
        return count;
    }
    int copied = std::min(count, max);
    for (int i = 0; i < copied; ++i) {
        ids[i] = items_[i]->id;
    }
    return copied;
}

int ReportRegistry::HasReset(uint32_t id) const {
    std::lock_guard<std::mutex> lock(mu_);
    ReportItemPtr item = FindLocked(id);
    if (!item) {
        return -1;
    }
    return item->fn.reset != nullptr ? 1 : 0;
}

} // namespace noltdev_host
