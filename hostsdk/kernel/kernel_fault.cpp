// The fault table: one row per platform operation a test can make fail, with its
// counters and its armed pattern; every service asks it at the top of each operation.
#include <cstring>
#include <mutex>

#include "kernel_internal.h"
#include "noltdev_host.h"

namespace {

struct FaultRow {
    const char *name;
    int calls = 0;
    int injected = 0;
    int skip = 0;
    int count = 0; // failures left; < 0: without end
    int every = 0;
    int code = 0;
    bool armed = false;
};

// Indexed by noltdev_host_fault_op; the names are those of the simulator's fail step.
// Every row starts disarmed, its counters at zero.
FaultRow g_rows[NOLTDEV_HOST_FAULT_COUNT] = {
    {"send"},         {"redirect"},        {"extend_load"},       {"report_register"}, {"report_unregister"},
    {"report_force"}, {"shadow_register"}, {"shadow_deregister"}, {"shadow_deliver"},  {"thread_create"},
    {"json_alloc"},   {"malloc"},
};

// A plain mutex: the table is asked from the allocator wrappers, so nothing here may
// allocate.
std::mutex g_mu;

bool Known(int op) {
    return op >= 0 && op < NOLTDEV_HOST_FAULT_COUNT;
}

} // namespace

namespace noltdev_kernel {

void ResetFaults() {
    noltdev_host_fault_clear();
}

} // namespace noltdev_kernel

extern "C" {

int noltdev_host_fault_set(int op, int skip, int count, int every, int code) {
    if (!Known(op)) {
        return -1;
    }
    std::lock_guard<std::mutex> lock(g_mu);
    FaultRow &row = g_rows[op];
    row.calls = 0;
    row.injected = 0;
    row.skip = skip > 0 ? skip : 0;
    row.count = count;
    row.every = every > 1 ? every : 1;
    row.code = code;
    row.armed = count != 0;
    return 0;
}

void noltdev_host_fault_clear(void) {
    std::lock_guard<std::mutex> lock(g_mu);
    for (FaultRow &row : g_rows) {
        row.calls = 0;
        row.injected = 0;
        row.armed = false;
    }
}

const char *noltdev_host_fault_name(int op) {
    return Known(op) ? g_rows[op].name : nullptr;
}

int noltdev_host_fault_find(const char *name) {
    for (int op = 0; name != nullptr && op < NOLTDEV_HOST_FAULT_COUNT; ++op) {
        if (std::strcmp(g_rows[op].name, name) == 0) {
            return op;
        }
    }
    return -1;
}

int noltdev_host_fault_calls(int op) {
    std::lock_guard<std::mutex> lock(g_mu);
    return Known(op) ? g_rows[op].calls : 0;
}

int noltdev_host_fault_injected(int op) {
    std::lock_guard<std::mutex> lock(g_mu);
    return Known(op) ? g_rows[op].injected : 0;
}

int noltdev_host_fault_hit(int op, int *code) {
    if (!Known(op)) {
        return 0;
    }
    std::lock_guard<std::mutex> lock(g_mu);
    FaultRow &row = g_rows[op];
    int n = ++row.calls;
    if (!row.armed || n <= row.skip || (n - row.skip) % row.every != 0) {
        return 0;
    }
    ++row.injected;
    if (row.count > 0 && --row.count == 0) {
        row.armed = false;
    }
    if (code != nullptr) {
        *code = row.code;
    }
    return 1;
}

} // extern "C"
