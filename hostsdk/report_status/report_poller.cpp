// The report-status service's polling: one poll over the registry, reset-all, and the
// polling thread with its period.
#include "report_poller.h"

#include <pthread.h>

#include <chrono>

#include "noltdev_host.h"

namespace noltdev_host {

namespace {
// Set while this thread runs item functions, so that an item function may call back into
// the service (force, unregister, reset-all, stop) without waiting for itself.
thread_local bool t_in_items = false;
// Set on the polling thread, which can ask itself to stop but cannot join itself.
thread_local bool t_poll_thread = false;

// Marks the current thread as running item functions for one scope.
class InItems {
  public:
    InItems() { t_in_items = true; }
    ~InItems() { t_in_items = false; }
};
} // namespace

void ReportPoller::AcquireItems() {
    std::unique_lock<std::mutex> lock(mu_);
    cv_.wait(lock, [this] { return !busy_; });
    busy_ = true;
}

// The polling thread gives up waiting for its turn as soon as it is asked to stop, so
// that a stop issued by an item function of a synchronous poll never waits on itself.
bool ReportPoller::AcquireItemsForThread(std::unique_lock<std::mutex> &lock) {
    cv_.wait(lock, [this] { return !busy_ || stop_; });
    if (stop_) {
        return false;
    }
    busy_ = true;
    return true;
}

void ReportPoller::ReleaseItems() {
    std::lock_guard<std::mutex> lock(mu_);
    busy_ = false;
    cv_.notify_all();
}

int ReportPoller::RunPoll() {
    InItems scope;
    registry_.Refresh(&poll_entries_, &poll_seen_);
    int reported = 0;
    for (const ReportEntry &e : poll_entries_) {
        if (!e.item->live) {
            continue; // unregistered by an earlier item function of this poll
        }
        // a plain read first: an unforced item costs no read-modify-write
        if (e.item->forced.load(std::memory_order_relaxed) && e.item->forced.exchange(false)) {
            e.fn.report(1);
            ++reported;
        } else if (e.fn.is_changed != nullptr && e.fn.is_changed() == 1) {
            e.fn.report(0);
            ++reported;
        }
    }
    return reported;
}

int ReportPoller::Poll() {
    if (t_in_items) {
        return -1;
    }
    AcquireItems();
    int reported = RunPoll();
    ReleaseItems();
    return reported;
}

int ReportPoller::ResetAll() {
    int count = 0;
    Quiesced([this, &count] {
        InItems scope;
        std::vector<ReportEntry> entries; // own storage: reset-all may run inside a poll
        registry_.Snapshot(&entries);
        for (const ReportEntry &e : entries) {
            if (e.item->live && e.fn.reset != nullptr) {
                e.fn.reset();
                ++count;
            }
        }
    });
    return count;
}

void ReportPoller::Quiesced(const std::function<void()> &fn) {
    if (t_in_items) {
        fn();
        return;
    }
    AcquireItems();
    fn();
    ReleaseItems();
}

void ReportPoller::Loop() {
    t_poll_thread = true;
    pthread_setname_np(pthread_self(), NOLTDEV_HOST_THREAD_REPORT);
    std::unique_lock<std::mutex> lock(mu_);
    while (AcquireItemsForThread(lock)) {
        lock.unlock();
        RunPoll();
        ReleaseItems();
        lock.lock();
        cv_.wait_for(lock, std::chrono::milliseconds(period_ms_), [this] { return stop_; });
    }
}

int ReportPoller::Start(int period_ms) {
    int period = period_ms > 0 ? period_ms : kDefaultPeriodMs;
    if (t_poll_thread) {
        // From one of its own item functions the thread can only change its period, and
        // not while a stop is pending.
        std::lock_guard<std::mutex> lock(mu_);
        if (stop_) {
            return -1;
        }
        period_ms_ = period;
        return 0;
    }
    std::lock_guard<std::mutex> control(control_mu_);
    JoinLocked();
    {
        std::lock_guard<std::mutex> lock(mu_);
        period_ms_ = period;
        stop_ = false;
    }
    thread_ = std::thread(&ReportPoller::Loop, this);
    return 0;
}

void ReportPoller::Stop() {
    if (t_poll_thread) {
        // The thread cannot join itself: it ends after this poll, and the next Start or
        // Stop from another thread joins it.
        std::lock_guard<std::mutex> lock(mu_);
        stop_ = true;
        return;
    }
    std::lock_guard<std::mutex> control(control_mu_);
    JoinLocked();
}

void ReportPoller::JoinLocked() {
    {
        std::lock_guard<std::mutex> lock(mu_);
        stop_ = true;
        cv_.notify_all();
    }
    if (thread_.joinable()) {
        thread_.join();
    }
}

} // namespace noltdev_host
