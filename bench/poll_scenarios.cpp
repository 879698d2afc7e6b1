// Idle poll: one poll of all status items when nothing changed, against its floor: the
// same state queries into the same records and a memcmp of the same bytes against a copy.
// poll/detectors calls the module's 22 change detectors without the service around them.
#include <cstring>
#include <memory>
#include <vector>

#include "bench_app.h"
#include "noltdev_host.h"
#include "scenario.h"
#include "status_items.h"

namespace special_bench {
namespace {

// The poll's state queries, each with its record and the copy it is compared with.
struct PollFloor {
    std::vector<std::vector<unsigned char>> records, copies;
    int changed = 0;

    void Setup() {
        const auto &queries = PollQueries();
        records.clear();
        copies.clear();
        for (const auto &q : queries) {
            records.emplace_back(q.size);
            copies.emplace_back(q.size);
            noltDevSDK_special_runtime_info info = {q.type, copies.back().data(), static_cast<int>(q.size)};
            GetRuntimeInfo(&info);
        }
    }

    void Run() {
        const auto &queries = PollQueries();
        for (size_t i = 0; i < queries.size(); ++i) {
            std::memset(records[i].data(), 0, queries[i].size);
            if (queries[i].selector >= 0) {
                std::memcpy(records[i].data(), &queries[i].selector, sizeof(int));
            }
            noltDevSDK_special_runtime_info info = {queries[i].type, records[i].data(),
                                                    static_cast<int>(queries[i].size)};
            GetRuntimeInfo(&info);
            changed += std::memcmp(records[i].data(), copies[i].data(), queries[i].size) != 0;
        }
    }
};

const int kAdded = [] {
    AddScenario({"poll/idle", "poll/floor", 1.3,
                 [] {
                     Start();
                     noltdev_host_report_poll(); // sends what earlier scenarios forced
                 },
                 [] { noltdev_host_report_poll(); }});
    AddScenario({"poll/detectors", "poll/floor", 1.3, [] { Start(); },
                 [] {
                     for (size_t i = 0; i < kStatusItemCount; ++i) {
                         kStatusItems[i].is_changed();
                     }
                 }});
    auto floor = std::make_shared<PollFloor>();
    AddScenario({"poll/floor", "", 0, [floor] { floor->Setup(); }, [floor] { floor->Run(); }});
    return 0;
}();

} // namespace
} // namespace special_bench
