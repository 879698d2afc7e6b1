// The faults the host SDK cannot see from its own services: the linking executable's
// calls to pthread_create and to the C allocator reach these wrappers through the
// linker's --wrap (see NOLTDEV_HOST_FAULT_THREAD_CREATE in noltdev_host.h), and cJSON
// allocates through a counting allocator that JSON_ALLOC fails.
#include <cerrno>
#include <cstdlib>

#include <atomic>

#include <cjson/cJSON.h>
#include <pthread.h>

#include "noltdev_host.h"

extern "C" {

int __real_pthread_create(pthread_t *thread, const pthread_attr_t *attr, void *(*start)(void *), void *arg);
void *__real_malloc(size_t size);
void *__real_calloc(size_t n, size_t size);
void *__real_realloc(void *p, size_t size);

int __wrap_pthread_create(pthread_t *thread, const pthread_attr_t *attr, void *(*start)(void *), void *arg) {
    int code = 0;
    if (noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_THREAD_CREATE, &code)) {
        return code > 0 ? code : EAGAIN;
    }
    return __real_pthread_create(thread, attr, start, arg);
}

void *__wrap_malloc(size_t size) {
    return noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_MALLOC, nullptr) ? nullptr : __real_malloc(size);
}

void *__wrap_calloc(size_t n, size_t size) {
    return noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_MALLOC, nullptr) ? nullptr : __real_calloc(n, size);
}

void *__wrap_realloc(void *p, size_t size) {
    return noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_MALLOC, nullptr) ? nullptr : __real_realloc(p, size);
}

} // extern "C"

namespace {

std::atomic<long> g_json_live{0};

void *JsonMalloc(size_t size) {
    if (noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_JSON_ALLOC, nullptr)) {
        return nullptr;
    }
    void *p = __real_malloc(size);
    g_json_live += p != nullptr ? 1 : 0;
    return p;
}

void JsonFree(void *p) {
    g_json_live -= p != nullptr ? 1 : 0;
    std::free(p);
}

} // namespace

extern "C" {

void noltdev_host_fault_json_hooks(int install) {
    cJSON_Hooks hooks = {&JsonMalloc, &JsonFree};
    cJSON_InitHooks(install != 0 ? &hooks : nullptr);
    g_json_live = 0;
}

long noltdev_host_fault_json_live(void) {
    return g_json_live.load();
}

} // extern "C"
