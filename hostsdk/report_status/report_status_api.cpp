// The report-status service's C entry points: the functions a domain module calls and
// the report section of the host control API, over one process-wide service.
#include <mutex>
#include <vector>

#include "noltDevSDK_report_status.h"
#include "noltdev_host.h"
#include "report_poller.h"
#include "report_registry.h"

namespace {

struct ReportService {
    noltdev_host::ReportRegistry registry;
    noltdev_host::ReportPoller poller{registry}; // declared last: stops before the registry goes
    std::mutex log_mu;
    std::vector<uint32_t> unregistered; // ids passed to unregister, in call order
};

ReportService &Service() {
    static ReportService service;
    return service;
}

} // namespace

extern "C" {

// The service needs no set-up: items may be registered before init, and init never
// starts the polling thread (the control API does).
int noltDevSDK_report_status_init(void) {
    Service();
    return 0;
}

int noltDevSDK_report_status_fini(void) {
    ReportService &s = Service();
    s.poller.Stop();
    s.poller.Quiesced([&s] { s.registry.Clear(); });
    return 0;
}

int noltDevSDK_report_status_register(const noltDevSDK_report_status_info *info) {
    if (info == nullptr || info->report_status == nullptr) {
        return -1;
    }
    int code = 0;
    if (noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_REPORT_REGISTER, &code)) {
        return code;
    }
    return Service().registry.Register(*info);
}

int noltDevSDK_report_status_unregister(const noltDevSDK_report_status_info *info) {
    if (info == nullptr) {
        return -1;
    }
    ReportService &s = Service();
    {
        std::lock_guard<std::mutex> lock(s.log_mu);
        s.unregistered.push_back(info->status_value);
    }
    int code = 0;
    if (noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_REPORT_UNREGISTER, &code)) {
        return code;
    }
    int rc = -1;
    s.poller.Quiesced([&] { rc = s.registry.Unregister(info->status_value); });
    return rc;
}

int noltDevSDK_report_set_force_report(int status_value) {
    int code = 0;
    if (noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_REPORT_FORCE, &code)) {
        return code;
    }
    return Service().registry.Force(static_cast<uint32_t>(status_value));
}

int noltdev_host_report_poll(void) {
    return Service().poller.Poll();
}

int noltdev_host_report_reset_all(void) {
    return Service().poller.ResetAll();
}

int noltdev_host_report_start(int period_ms) {
    return Service().poller.Start(period_ms);
}

void noltdev_host_report_stop(void) {
    Service().poller.Stop();
}

int noltdev_host_report_registered(uint32_t *ids, int max) {
    return Service().registry.Ids(ids, max);
}

int noltdev_host_report_has_reset(uint32_t id) {
    return Service().registry.HasReset(id);
}

int noltdev_host_report_unregister_log(uint32_t *ids, int max) {
    ReportService &s = Service();
    std::lock_guard<std::mutex> lock(s.log_mu);
    int n = static_cast<int>(s.unregistered.size());
    for (int i = 0; ids != nullptr && i < n && i < max; ++i) {
        ids[i] = s.unregistered[i];
    }
    return n;
}

void noltdev_host_report_clear_unregister_log(void) {
    ReportService &s = Service();
    std::lock_guard<std::mutex> lock(s.log_mu);
    s.unregistered.clear();
}

} // extern "C"
