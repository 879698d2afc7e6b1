// The report-status service's polling: one poll over the registry, reset-all, and the
// polling thread. Item functions run one at a time, never under the registry lock.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "report_registry.h"

namespace noltdev_host {

class ReportPoller {
  public:
    static constexpr int kDefaultPeriodMs = 1000;

    explicit ReportPoller(ReportRegistry &registry) : registry_(registry) {}
    ~ReportPoller() { Stop(); }
    ReportPoller(const ReportPoller &) = delete;
    ReportPoller &operator=(const ReportPoller &) = delete;

    // One poll on the caller's thread; the number of report functions called, or -1
    // when called from inside an item function.
    int Poll();
    // Calls every non-null reset function in registration order; returns how many.
    int ResetAll();
    // Runs fn while no item function runs on another thread, so that an item changed by
    // fn is never called afterwards. Callable from inside an item function.
    void Quiesced(const std::function<void()> &fn);

    // Starts the polling thread (period_ms <= 0: the default); a running thread is
    // stopped first. It polls at once, then every period.
    int Start(int period_ms);
    // Stops the polling thread and waits for a poll in progress.
    void Stop();

  private:
    void AcquireItems();
    bool AcquireItemsForThread(std::unique_lock<std::mutex> &lock);
    void ReleaseItems();
    int RunPoll();
    void Loop();
    void JoinLocked(); // stops and joins the thread; control_mu_ held

    ReportRegistry &registry_;
    // The items as the last poll saw them, kept between polls and brought up to date
    // when the registry changes; used by one poll at a time.
    std::vector<ReportEntry> poll_entries_;
    uint64_t poll_seen_ = 0;

    std::mutex mu_; // guards busy_, stop_ and period_ms_
    std::condition_variable cv_;
    bool busy_ = false; // some thread is calling item functions
    bool stop_ = true;
    int period_ms_ = kDefaultPeriodMs;

    std::mutex control_mu_; // serialises Start and Stop around thread_
    std::thread thread_;
};

} // namespace noltdev_host
