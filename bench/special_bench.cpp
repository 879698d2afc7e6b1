// The benchmark program: every scenario as a Google Benchmark with its heap allocations
// and bytes sent per operation, then a table of each scenario's ratio to its floor.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>

#include "alloc_count.h"
#include "bench_app.h"
#include "scenario.h"

namespace {

using special_bench::Scenario;

void Run(benchmark::State &state, const Scenario *s) {
    s->setup();
    s->op(); // first-use costs (lazy binding, first allocations) stay out of the count
    uint64_t allocs = special_bench::AllocationCount();
    size_t bytes = special_bench::SentBytes();
    for (auto _ : state) {
        s->op();
    }
    double n = static_cast<double>(state.iterations());
    state.counters["allocs"] = static_cast<double>(special_bench::AllocationCount() - allocs) / n;
    state.counters["bytes_sent"] = static_cast<double>(special_bench::SentBytes() - bytes) / n;
}

// Console output as usual, keeping each scenario's CPU time per operation (the median
// when the runs are repeated).
class Collector : public benchmark::ConsoleReporter {
  public:
    std::map<std::string, double> ns;
    std::map<std::string, double> allocs;

    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &r : runs) {
            bool single = r.run_type == Run::RT_Iteration && r.repetitions <= 1;
            bool median = r.run_type == Run::RT_Aggregate && r.aggregate_name == "median";
            if (single || median) {
                ns[r.run_name.str()] = r.GetAdjustedCPUTime();
                auto it = r.counters.find("allocs");
                allocs[r.run_name.str()] = it != r.counters.end() ? it->second.value : 0;
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }
};

void PrintRatios(const Collector &c) {
    std::printf("\n%-30s %12s %12s %8s %6s %8s\n", "scenario", "ns/op", "floor ns/op", "ratio", "goal",
                "allocs");
    for (const Scenario &s : special_bench::Scenarios()) {
        auto it = c.ns.find(s.name);
        auto floor = c.ns.find(s.floor);
        if (s.floor.empty() || it == c.ns.end() || floor == c.ns.end()) {
            continue;
        }
        double ratio = it->second / floor->second;
        std::printf("%-30s %12.0f %12.0f %8.2f %6.1f %8.2f %s\n", s.name.c_str(), it->second, floor->second,
                    ratio, s.goal, c.allocs.at(s.name), ratio <= s.goal ? "" : "over");
    }
}

} // namespace

int main(int argc, char **argv) {
    for (const Scenario &s : special_bench::Scenarios()) {
        benchmark::RegisterBenchmark(s.name.c_str(), Run, &s);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    PrintRatios(collector);
    benchmark::Shutdown();
    return 0;
}
