// The host report-status service with fake status items: poll order, change and force
// rules, registry changes, reset-all and the polling thread.
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "noltDevSDK_report_status.h"
#include "noltdev_host.h"

namespace {

// Fake items live in slots; each slot's functions record "<fn> <id>" lines.
struct Slot {
    uint32_t id = 0;
    int changed = 0;          // what the change detector answers
    void (*on_report)() = {}; // runs inside the report function
};
Slot g_slot[4];
std::mutex g_mu;
std::condition_variable g_cv;
std::vector<std::string> g_calls;

void Record(const std::string &line) {
    std::lock_guard<std::mutex> lock(g_mu);
    g_calls.push_back(line);
    g_cv.notify_all();
}

template <int N> int IsChanged() {
    Record("changed " + std::to_string(g_slot[N].id));
    return g_slot[N].changed;
}
template <int N> int Report(int b_force) {
    Record("report " + std::to_string(g_slot[N].id) + (b_force ? " forced" : ""));
    if (g_slot[N].on_report != nullptr) {
        g_slot[N].on_report();
    }
    return 0;
}
template <int N> int Reset() {
    Record("reset " + std::to_string(g_slot[N].id));
    return 0;
}

// Registers slot N under id; with_reset false registers no reset function.
template <int N> int Add(uint32_t id, int changed, bool with_reset = true) {
    g_slot[N].id = id;
    g_slot[N].changed = changed;
    noltDevSDK_report_status_info info{};
    info.status_value = id;
    info.status_is_changed = &IsChanged<N>;
    info.report_status = &Report<N>;
    info.status_reset = with_reset ? &Reset<N> : nullptr;
    return noltDevSDK_report_status_register(&info);
}

std::vector<std::string> TakeCalls() {
    std::lock_guard<std::mutex> lock(g_mu);
    return std::exchange(g_calls, {});
}

std::vector<uint32_t> Registered() {
    std::vector<uint32_t> ids(8);
    ids.resize(static_cast<size_t>(noltdev_host_report_registered(ids.data(), 8)));
    return ids;
}

int Unregister(uint32_t id) {
    noltDevSDK_report_status_info info{};
    info.status_value = id;
    return noltDevSDK_report_status_unregister(&info);
}

class ReportStatusTest : public ::testing::Test {
  protected:
    void SetUp() override {
        noltDevSDK_report_status_init();
        for (Slot &s : g_slot) {
            s = Slot{};
        }
        TakeCalls();
    }
    void TearDown() override { noltDevSDK_report_status_fini(); }
};

TEST_F(ReportStatusTest, PollFollowsRegistrationOrderAndReportsOnlyChangesOrForces) {
    Add<0>(40, 1);
    Add<1>(31, 0);
    Add<2>(33, -1);
    Add<3>(32, 1);
    ASSERT_EQ(0, noltDevSDK_report_set_force_report(31));
    std::thread([] { noltDevSDK_report_set_force_report(32); }).join(); // forced wins over changed
    EXPECT_EQ(3, noltdev_host_report_poll());
    EXPECT_EQ((std::vector<std::string>{"changed 40", "report 40", "report 31 forced", "changed 33",
                                        "report 32 forced"}),
              TakeCalls());
    // The marks are cleared by the poll that honoured them.
    g_slot[0].changed = g_slot[3].changed = 0;
    EXPECT_EQ(0, noltdev_host_report_poll());
}

TEST_F(ReportStatusTest, RegistryChanges) {
    Add<0>(40, 0);
    Add<1>(31, 0);
    EXPECT_EQ(0, Add<2>(40, 1)); // replaces 40 in its place
    EXPECT_EQ((std::vector<uint32_t>{40, 31}), Registered());
    EXPECT_EQ(1, noltdev_host_report_poll());
    EXPECT_EQ((std::vector<std::string>{"changed 40", "report 40", "changed 31"}), TakeCalls());

    EXPECT_EQ(0, Unregister(40));
    EXPECT_EQ(-1, Unregister(40));
    EXPECT_EQ(-1, noltDevSDK_report_set_force_report(40)); // unknown ids are not marked
    EXPECT_EQ(-1, noltDevSDK_report_status_register(nullptr));
    EXPECT_EQ((std::vector<uint32_t>{31}), Registered());

    noltDevSDK_report_status_fini();
    EXPECT_TRUE(Registered().empty());
}

TEST_F(ReportStatusTest, ResetAllSkipsItemsWithoutReset) {
    Add<0>(40, 0);
    Add<1>(32, 0, false);
    Add<2>(31, 0);
    EXPECT_EQ(2, noltdev_host_report_reset_all());
    EXPECT_EQ((std::vector<std::string>{"reset 40", "reset 31"}), TakeCalls());
    EXPECT_EQ(1, noltdev_host_report_has_reset(40));
    EXPECT_EQ(0, noltdev_host_report_has_reset(32));
    EXPECT_EQ(-1, noltdev_host_report_has_reset(99));
}

TEST_F(ReportStatusTest, ItemFunctionsMayCallBackIntoTheService) {
    struct Case {
        const char *name;
        void (*on_report)();
        std::vector<std::string> second_poll;
    } cases[] = {
        {"force itself", [] { noltDevSDK_report_set_force_report(40); }, {"report 40 forced", "changed 31"}},
        {"nested poll refused",
         [] { EXPECT_EQ(-1, noltdev_host_report_poll()); },
         {"changed 40", "changed 31"}},
        {"unregister the next item", [] { Unregister(31); }, {"changed 40"}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        Add<0>(40, 1);
        Add<1>(31, 0);
        g_slot[0].on_report = c.on_report;
        noltdev_host_report_poll();
        g_slot[0].changed = 0;
        TakeCalls();
        noltdev_host_report_poll();
        EXPECT_EQ(c.second_poll, TakeCalls());
        noltDevSDK_report_status_fini();
    }
}

// Waits (bounded, as a failure guard only) until the items have recorded n calls.
bool WaitCalls(size_t n) {
    std::unique_lock<std::mutex> lock(g_mu);
    return g_cv.wait_for(lock, std::chrono::seconds(20), [n] { return g_calls.size() >= n; });
}

TEST_F(ReportStatusTest, PollingThreadPollsAtOnceAndStopsPromptly) {
    Add<0>(40, 0);
    ASSERT_EQ(0, noltdev_host_report_start(600000));
    ASSERT_TRUE(WaitCalls(1));
    auto before = std::chrono::steady_clock::now();
    noltdev_host_report_stop();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(10));

    ASSERT_EQ(0, noltdev_host_report_start(1));
    ASSERT_TRUE(WaitCalls(4)); // several periods
    noltdev_host_report_stop();
}

TEST_F(ReportStatusTest, PollingThreadStopsFromItsOwnItem) {
    Add<0>(40, 1);
    g_slot[0].on_report = [] { noltdev_host_report_stop(); };
    ASSERT_EQ(0, noltdev_host_report_start(1));
    ASSERT_TRUE(WaitCalls(2));
    noltdev_host_report_stop(); // joins the thread that stopped itself
    EXPECT_EQ((std::vector<std::string>{"changed 40", "report 40"}), TakeCalls());
}

} // namespace
