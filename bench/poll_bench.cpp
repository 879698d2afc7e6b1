// Idle poll: one poll of all status items when nothing changed, against its floor, the
// same state queries into the same records plus a memcmp of the same bytes against a
// copy. Reports heap allocations per poll.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "alloc_count.h"
#include "bench_app.h"
#include "noltdev_host.h"

namespace {

using special_bench::AllocationCount;

void BM_IdlePoll(benchmark::State &state) {
    special_bench::Start();
    uint64_t before = AllocationCount();
    for (auto _ : state) {
        benchmark::DoNotOptimize(noltdev_host_report_poll());
    }
    state.counters["allocs_per_poll"] = benchmark::Counter(static_cast<double>(AllocationCount() - before) /
                                                           static_cast<double>(state.iterations()));
}
BENCHMARK(BM_IdlePoll);

void BM_IdlePollFloor(benchmark::State &state) {
    special_bench::Start();
    const auto &queries = special_bench::PollQueries();
    std::vector<std::vector<unsigned char>> records, copies;
    for (const auto &q : queries) {
        records.emplace_back(q.size);
        copies.emplace_back(q.size);
    }
    for (size_t i = 0; i < queries.size(); ++i) {
        noltDevSDK_special_runtime_info info = {queries[i].type, copies[i].data(),
                                                static_cast<int>(queries[i].size)};
        special_bench::GetRuntimeInfo(&info);
    }
    for (auto _ : state) {
        int changed = 0;
        for (size_t i = 0; i < queries.size(); ++i) {
            std::memset(records[i].data(), 0, queries[i].size);
            if (queries[i].selector >= 0) {
                std::memcpy(records[i].data(), &queries[i].selector, sizeof(int));
            }
            noltDevSDK_special_runtime_info info = {queries[i].type, records[i].data(),
                                                    static_cast<int>(queries[i].size)};
            special_bench::GetRuntimeInfo(&info);
            changed += std::memcmp(records[i].data(), copies[i].data(), queries[i].size) != 0;
        }
        benchmark::DoNotOptimize(changed);
    }
}
BENCHMARK(BM_IdlePollFloor);

} // namespace
