/* The network statuses: the port mappings the device holds with the dynamic-DNS
 * service (throttled to 100 reports an hour) and the state of its 4G modem (small
 * signal drift ignored). Both go out with sequence number 0. */
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include "app/special_app.h"
#include "bus/special_clock.h"
#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_status.h"
#include "special_status_item.h"

/* At most this many mapped-port reports go out in the hour that starts with the first. */
static const int kPortReportsPerPeriod = 100;
static const int kPortPeriodMs = 3600 * 1000;
/* A 4G signal that moved by less than this is not a change by itself. */
static const long long kSignalStep = 5;

static noltDevSDK_special_voddns_local_mapped_infos g_voddns_local_mapped_infos;
static int g_sp_port_report_count = 0;
static struct timespec g_sp_init_report_time;
static noltDevSDK_special_4G_Info_S g_st4GInfo;

/* ---- mapped ports ------------------------------------------------------------------------ */

static void TidyMapped(noltDevSDK_special_voddns_local_mapped_infos *infos) {
    SPECIAL_TERMINATE(infos->external_ip);
    SPECIAL_TERMINATE(infos->local_ip);
    for (int i = 0; i < kSpecialMappedPorts; i++) {
        SPECIAL_TERMINATE(infos->mapped_port_infos[i].type);
    }
}

/* The throttle, with this report already counted: the first report of a period starts
 * it; once the hour is over the report goes out and the count starts again. */
static bool PortReportAllowed(void) {
    if (g_sp_port_report_count < 2) {
        SpecialMonotonic(&g_sp_init_report_time);
    }
    struct timespec now;
    SpecialMonotonic(&now);
    if (noltdev_timespecMinusMs(&now, &g_sp_init_report_time) >= kPortPeriodMs) {
        g_sp_port_report_count = 0;
        return true;
    }
    return g_sp_port_report_count <= kPortReportsPerPeriod;
}

static bool MappedPortBody(CMarkupSTL *doc, const void *, int *result) {
    const noltDevSDK_special_voddns_local_mapped_infos &infos = g_voddns_local_mapped_infos;
    doc->AddElem("NatIP", infos.external_ip);
    doc->AddElem("LocalIP", infos.local_ip);
    for (int i = 0; i < kSpecialMappedPorts; i++) {
        const noltDevSDK_special_voddns_mapped_info &port = infos.mapped_port_infos[i];
        if (port.type[0] == '\0') {
            continue; /* an empty slot does not end the list */
        }
        doc->AddElem("PortMap");
        doc->SetAttrib("Type", port.type);
        doc->SetAttrib("LocalPort", port.local_port);
        doc->SetAttrib("NatPort", port.nat_port);
    }
    *result = 0; /* a dropped report is not an error */
    return PortReportAllowed();
}

/* Each report is counted for the throttle. */
static int MappedPortReport(const SpecialStatusItem &item) {
    g_sp_port_report_count++;
    return SpecialStatusReportItem(item);
}

/* The throttle starts again with the cache. */
static int MappedPortReset(const SpecialStatusItem &item) {
    memset(&g_sp_init_report_time, 0, sizeof g_sp_init_report_time);
    g_sp_port_report_count = 0;
    return SpecialStatusReset(item.watch);
}

static const SpecialStatusItem kMapped = {SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT,
                                                               g_voddns_local_mapped_infos, 0, LOG_ERROR,
                                                               NULL),
                                          kPu2CenPltReportPortInfoReq,
                                          MappedPortBody,
                                          kSpecialReportSerial,
                                          "SpecialReportVoddnsLocalMappedPort\n",
                                          NULL,
                                          0};

int SpecialVoddnsLocalMappedInfosIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_voddns_local_mapped_infos>(kMapped.watch, TidyMapped);
}

int SpecialReportVoddnsLocalMappedPort(int) {
    return MappedPortReport(kMapped);
}

int SpecialVoddnsLocalMappedInfosReset(void) {
    return MappedPortReset(kMapped);
}

/* ---- 4G information ------------------------------------------------------------------------ */

static int Dev4GDetect(const SpecialStatusItem &item) {
    if (!SpecialAppHasRuntimeInfo(NULL)) {
        return 0;
    }
    noltDevSDK_special_4G_Info_S fresh;
    int verdict;
    if (!SpecialStatusAsk(item.watch.runtime_type, &fresh, &verdict)) {
        noltdev_debug(LOG_DEBUG, "get_runtime_info: get 4G Info error\n");
        return verdict;
    }
    SPECIAL_TERMINATE(fresh.network);
    SPECIAL_TERMINATE(fresh.ICCID);
    SPECIAL_TERMINATE(fresh.IMEI);
    if (memcmp(&fresh, &g_st4GInfo, sizeof fresh) == 0) {
        return 0;
    }
    /* measured against the last reported signal, so a slow drift goes out once it adds
     * up; the texts alone never make a change */
    long long drift = llabs(static_cast<long long>(fresh.sigal) - g_st4GInfo.sigal);
    if (drift < kSignalStep && fresh.type == g_st4GInfo.type && fresh.status == g_st4GInfo.status) {
        return 0;
    }
    g_st4GInfo = fresh;
    return 1;
}

static bool Dev4GBody(CMarkupSTL *doc, const void *, int *result) {
    const SpecialJsonMember members[] = {
        {"status", NULL, g_st4GInfo.status}, {"sigal", NULL, g_st4GInfo.sigal},
        {"type", NULL, g_st4GInfo.type},     {"network", g_st4GInfo.network, 0},
        {"ICCID", g_st4GInfo.ICCID, 0},      {"IMEI", g_st4GInfo.IMEI, 0}};
    SpecialStatusAddStatus(doc, "4G_Info", NULL);
    return SpecialStatusJsonValue(doc, members, SPECIAL_COUNT_OF(members), true,
                                  "Failed to bscJSON_CreateObject\n", "Failed to bscJSON_Print.\n", result);
}

/* Sent with sequence number 0; a failed send is logged. */
static int Dev4GReport(const SpecialStatusItem &item) {
    CMarkupSTL doc;
    SpecialStatusStart(&doc, item.flags);
    int result = 0;
    if (!item.body(&doc, &item, &result)) {
        return result;
    }
    result = SpecialStatusSend(doc, item.cmd, 0);
    if (result != 0) {
        /* the platform's line shows the version text's address in its domain field */
        noltdev_debug(LOG_ERROR, "Failed to send msg to platform:domain[%#x], cmd[%#x].\n",
                      static_cast<unsigned int>(reinterpret_cast<uintptr_t>(g_special_status_version)),
                      static_cast<unsigned int>(item.cmd));
    }
    return result;
}

static const SpecialStatusItem k4G = {
    SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO, g_st4GInfo, 0, LOG_ERROR, NULL),
    kPu2CenPltReportKeyValueReq,
    Dev4GBody,
    kSpecialReportSerial,
    NULL,
    NULL,
    0};

int SpecialDev4GInfoIsChanged(void) {
    return Dev4GDetect(k4G);
}

int SpecialDev4GInfoReport(int) {
    return Dev4GReport(k4G);
}

int SpecialDev4GInfoReset(void) {
    return SpecialStatusReset(k4G.watch);
}
