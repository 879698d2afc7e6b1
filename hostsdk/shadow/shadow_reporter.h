// The shadow service's own thread: the start-up reports that a registration with
// usResetReportAll asks for run there, one at a time, as a device's service would ask
// the domain for its keys' values after start-up.
#pragma once

#include <string>

namespace noltdev_host {

// Queues the report of a key: its value is generated on the service's thread. A report
// of the same key still waiting is not queued twice.
void ShadowQueueReport(int domain_id, const std::string &key);

// Waits until every queued report has run.
void ShadowDrainReports();

// Start-up reports run since load.
int ShadowReportsRun();

} // namespace noltdev_host
