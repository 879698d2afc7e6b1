// A malloc hook: the benchmark executable defines the allocator entry points and counts
// each call before handing it to glibc's own allocator.
#include "alloc_count.h"

#include <atomic>
#include <cstddef>

extern "C" void *__libc_malloc(size_t);
extern "C" void *__libc_calloc(size_t, size_t);
extern "C" void *__libc_realloc(void *, size_t);

namespace {
std::atomic<uint64_t> g_allocations{0};
}

extern "C" void *malloc(size_t size) {
    g_allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}

extern "C" void *calloc(size_t n, size_t size) {
    g_allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(n, size);
}

extern "C" void *realloc(void *p, size_t size) {
    g_allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(p, size);
}

namespace special_bench {
uint64_t AllocationCount() {
    return g_allocations.load(std::memory_order_relaxed);
}
} // namespace special_bench
