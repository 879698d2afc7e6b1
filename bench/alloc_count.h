// Counts heap allocations made by the benchmark process (malloc, calloc, realloc and
// operator new all pass through malloc), so a benchmark can report allocations per run.
#pragma once

#include <cstdint>

namespace special_bench {
uint64_t AllocationCount();
}
