// Runs one scenario a fixed number of times for callgrind: costs are zeroed before the
// loop and dumped after it, so the dump holds exactly the loop (every thread included).
//   special_callgrind --list          name, floor and goal of every scenario
//   special_callgrind NAME [COUNT]    runs NAME COUNT times (default 200); prints
//                                     allocations and bytes sent per operation
#include <cstdio>
#include <cstdlib>
#include <string>

#include <valgrind/callgrind.h>

#include "alloc_count.h"
#include "bench_app.h"
#include "scenario.h"

int main(int argc, char **argv) {
    using special_bench::Scenario;
    if (argc >= 2 && std::string(argv[1]) == "--list") {
        for (const Scenario &s : special_bench::Scenarios()) {
            std::printf("%s %s %g\n", s.name.c_str(), s.floor.empty() ? "-" : s.floor.c_str(), s.goal);
        }
        return 0;
    }
    const Scenario *s = argc >= 2 ? special_bench::FindScenario(argv[1]) : nullptr;
    if (s == nullptr) {
        std::fprintf(stderr, "usage: %s --list | NAME [COUNT]\n", argv[0]);
        return 2;
    }
    long count = argc >= 3 ? std::strtol(argv[2], nullptr, 10) : 200;
    if (count <= 0) {
        return 2;
    }
    s->setup();
    for (int i = 0; i < 3; ++i) {
        s->op(); // first-use costs stay out of the count
    }
    uint64_t allocs = special_bench::AllocationCount();
    size_t bytes = special_bench::SentBytes();
    CALLGRIND_ZERO_STATS;
    for (long i = 0; i < count; ++i) {
        s->op();
    }
    CALLGRIND_DUMP_STATS_AT("loop");
    std::printf("allocs_per_op %.2f bytes_per_op %.1f\n",
                static_cast<double>(special_bench::AllocationCount() - allocs) / count,
                static_cast<double>(special_bench::SentBytes() - bytes) / count);
    return 0;
}
