// Forced status reports: each of the 22 items' report function called as the service
// calls it for a forced report, with the steady device's values in the caches.
#include "bench_app.h"
#include "scenario.h"
#include "status/special_status.h"
#include "status_items.h"

namespace special_bench {
namespace {

// The mapped-port report sends at most 100 reports an hour; a reset opens a new period
// and the detector refills the cache, so every measured report is really sent.
int ReportMappedPort(int b_force) {
    static int sent = 0;
    if (++sent % 100 == 0) {
        SpecialVoddnsLocalMappedInfosReset();
        SpecialVoddnsLocalMappedInfosIsChanged();
    }
    return SpecialReportVoddnsLocalMappedPort(b_force);
}

const int kAdded = [] {
    for (size_t i = 0; i < kStatusItemCount; ++i) {
        const StatusItem &item = kStatusItems[i];
        int (*report)(int) =
            item.report == SpecialReportVoddnsLocalMappedPort ? ReportMappedPort : item.report;
        AddScenario({std::string("report/") + item.name, "", 0, [] { Start(); }, [report] { report(1); }});
    }
    return 0;
}();

} // namespace
} // namespace special_bench
