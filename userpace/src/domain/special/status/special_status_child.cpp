/* The child-device statuses: the device's own trusteeship, the connection of the child
 * devices it holds, their power states, and the associated chime's network connection;
 * plus the one-shot trusteeship report the application can ask for. */
#include <stdio.h>
#include <string.h>

#include "app/special_app.h"
#include "bus/special_bus.h"
#include "bus/special_clock.h"
#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_status.h"
#include "special_status_item.h"
#include "special_status_registry.h"

/* The module offers the application room for this many child devices. */
static const int kChildren = 8;
/* While every held child is connected, their list is re-sent after this many seconds. */
static const time_t kConnectRepeatSeconds = 600;

/* A count-first list as the application fills it: the count, then room for kChildren entries. */
template <class Entry> struct ChildList {
    int num;
    Entry entries[kChildren];
};
typedef ChildList<noltDevSDK_trusteeship_subserial> ConnectList;
typedef ChildList<noltDevSDK_PowerStatus_subserial> PowerList;
static_assert(sizeof(ConnectList) == sizeof(noltDevSDK_Trusteeship_connect) +
                                         kChildren * sizeof(noltDevSDK_trusteeship_subserial),
              "the connect list must be the buffer the application is offered");
static_assert(offsetof(ConnectList, entries) == offsetof(noltDevSDK_Trusteeship_connect, subserial),
              "the connect list must lay out as the application's record");
static_assert(offsetof(PowerList, entries) == offsetof(noltDevSDK_PowerStatus, subserial),
              "the power list must lay out as the application's record");

static noltDevSDK_Trusteeship g_trusteeship = {"000000000"};
/* zero-filled at build time (no flash for the entries) and put in their not-seen state,
 * count -1, as the library loads: see g_connect_load */
static ConnectList g_trusteeship_connect;
static PowerList g_power_status;
static noltDevSDK_special_associated_device_conn_status g_associated_device_conn_status = {-1, 0,  "", "",
                                                                                           "", "", "", ""};

/* The count-first rule: a different count is a change, then the first count entries are
 * compared. The count is kept as the application gives it; only the bytes touched stay
 * within the kChildren entries. */
template <class Entry>
static int KeepList(ChildList<Entry> *cache, const ChildList<Entry> &fresh, const char *change_log) {
    size_t bytes = static_cast<size_t>(SpecialStatusBound(fresh.num, kChildren)) * sizeof(Entry);
    if (fresh.num == cache->num && memcmp(fresh.entries, cache->entries, bytes) == 0) {
        return 0;
    }
    cache->num = fresh.num;
    memcpy(cache->entries, fresh.entries, bytes);
    noltdev_debug(LOG_ERROR, "%s", change_log);
    return 1;
}

/* ---- trusteeship: JSON as the whole document -------------------------------------------- */

static bscJSON *TrusteeshipJson(const char *baseserial) {
    const SpecialJsonMember members[] = {{"operateType", NULL, baseserial[0] != '\0' ? 1 : 2},
                                         {"baseserial", baseserial, 0},
                                         {"subserial", SpecialDevSerial(), 0}};
    return SpecialStatusJsonObject(members, SPECIAL_COUNT_OF(members));
}

/* The trusteeship is compared and kept as a string. */
static int TrusteeshipDetect(const SpecialStatusItem &item) {
    noltDevSDK_Trusteeship fresh;
    int verdict;
    if (!SpecialStatusAsk(item.watch.runtime_type, &fresh, &verdict)) {
        return verdict;
    }
    SPECIAL_TERMINATE(fresh.subserial);
    if (strcmp(fresh.subserial, g_trusteeship.subserial) == 0) {
        return 0;
    }
    memset(&g_trusteeship, 0, sizeof g_trusteeship);
    memcpy(g_trusteeship.subserial, fresh.subserial, strlen(fresh.subserial));
    noltdev_debug(LOG_ERROR, "trusteeship is changed\n");
    return 1;
}

/* The JSON is the whole document, without the request envelope. */
static int TrusteeshipReport(const SpecialStatusItem &item) {
    CMarkupSTL doc;
    bscJSON *obj = TrusteeshipJson(g_trusteeship.subserial);
    if (obj == NULL || !SpecialStatusJsonDocument(&doc, obj)) {
        return -1;
    }
    return SpecialStatusSend(doc, item.cmd, GetNextSeqNum());
}

static const SpecialStatusItem kTrusteeship = {
    SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, g_trusteeship, 0, LOG_ERROR, NULL),
    kPu2CenPltReportTrusteeshipReq,
    NULL,
    kSpecialReportUsual,
    NULL,
    NULL,
    0};

int SpecialTrusteeshipIsChanged(void) {
    return TrusteeshipDetect(kTrusteeship);
}

int SpecialReportTrusteeship(int) {
    return TrusteeshipReport(kTrusteeship);
}

int SpecialTrusteeshipReset(void) {
    return SpecialStatusReset(kTrusteeship.watch);
}

int ReportTrusteeship_Immediately(void) {
    if (!SpecialAppHasRuntimeInfo("get_runtime_info, has not been registered!\n")) {
        return -1;
    }
    noltDevSDK_Trusteeship fresh;
    int verdict;
    if (!SpecialStatusAsk(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, &fresh, &verdict)) {
        noltdev_debug(LOG_ERROR, "get_runtime_info: trusteeship error\n");
        return -1;
    }
    SPECIAL_TERMINATE(fresh.subserial);
    bscJSON *obj = TrusteeshipJson(fresh.subserial);
    if (obj == NULL) {
        noltdev_debug(LOG_ERROR, "Failed to cJSON_CreateObject\n");
        return -1;
    }
    CMarkupSTL doc;
    if (!SpecialStatusJsonDocument(&doc, obj)) {
        noltdev_debug(LOG_ERROR, "Failed to cJSON_Print\n");
        return -1;
    }
    noltdev_debug(LOG_ERROR, "[ReportTrusteeship_Immediately]%s\n", doc.GetDoc().c_str());
    return SpecialStatusSend(doc, kPu2CenPltReportTrusteeshipReq, GetNextSeqNum());
}

/* ---- trusteeship connect: count first, and a ten-minute re-report ----------------------- */

static bool AllConnected(const ConnectList &list) {
    int count = SpecialStatusBound(list.num, kChildren);
    for (int i = 0; i < count; i++) {
        if (list.entries[i].connect_status == 0) {
            return false;
        }
    }
    return true;
}

static int TrusteeshipConnectDetect(const SpecialStatusItem &item) {
    static bool started = false;
    static time_t last_time = 0;
    if (!SpecialAppHasRuntimeInfo(NULL)) {
        return 0;
    }
    if (!started) {
        started = true;
        last_time = SpecialNow();
    }
    ConnectList fresh;
    int result;
    if (SpecialStatusAsk(item.watch.runtime_type, &fresh, &result)) {
        for (int i = 0; i < kChildren; i++) {
            SPECIAL_TERMINATE(fresh.entries[i].subserial);
        }
        result = KeepList(&g_trusteeship_connect, fresh, "trusteeship_connect is changed\n");
    }
    /* applies after a failed question too; the period restarts whenever it has run out
     * with a list cached, whether or not the list is re-sent */
    time_t now = SpecialNow();
    if (now - last_time > kConnectRepeatSeconds && g_trusteeship_connect.num >= 1) {
        last_time = now;
        if (AllConnected(g_trusteeship_connect)) {
            return 1;
        }
    }
    return result;
}

/* The JSON is the whole document, without the request envelope. */
static int TrusteeshipConnectReport(const SpecialStatusItem &item) {
    bscJSON *obj = bscJSON_CreateObject();
    if (obj == NULL) {
        return -1;
    }
    bscJSON_AddStringToObject(obj, "devseral", SpecialDevSerial());
    bscJSON *list = bscJSON_CreateArray();
    int count = SpecialStatusBound(g_trusteeship_connect.num, kChildren);
    for (int i = 0; list != NULL && i < count; i++) {
        const noltDevSDK_trusteeship_subserial &entry = g_trusteeship_connect.entries[i];
        const SpecialJsonMember members[] = {{"subserial", entry.subserial, 0},
                                             {"connect_status", NULL, entry.connect_status},
                                             {"channel", NULL, entry.iChannel}};
        bscJSON *child = SpecialStatusJsonObject(members, SPECIAL_COUNT_OF(members));
        if (child == NULL) {
            break;
        }
        bscJSON_AddItemToArray(list, child);
    }
    /* cJSON keeps a copy of the member name; when that copy fails the array is not added
     * and stays ours to free */
    if (list != NULL && !bscJSON_AddItemToObject(obj, "list", list)) {
        bscJSON_Delete(list);
    }
    CMarkupSTL doc;
    if (!SpecialStatusJsonDocument(&doc, obj)) {
        return -1;
    }
    if (SpecialLogWanted(LOG_DEBUG)) {
        noltdev_debug(LOG_DEBUG, "[TrusteeshipConnect]:%s\n", doc.GetDoc().c_str());
    }
    return SpecialStatusSend(doc, item.cmd, GetNextSeqNum());
}

static const SpecialStatusItem kConnect = {SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT,
                                                                g_trusteeship_connect, 1, LOG_ERROR, NULL),
                                           kPu2CenPltReportConnStatusReq,
                                           NULL,
                                           kSpecialReportUsual,
                                           NULL,
                                           NULL,
                                           0};
static const SpecialResetAtLoad g_connect_load(kConnect.watch);

int SpecialTrusteeshipConnectIsChanged(void) {
    return TrusteeshipConnectDetect(kConnect);
}

int SpecialReportTrusteeshipConnect(int) {
    return TrusteeshipConnectReport(kConnect);
}

int SpecialTrusteeshipConnectReset(void) {
    return SpecialStatusReset(kConnect.watch);
}

/* ---- power status ----------------------------------------------------------------------- */

/* The count-first rule in place of the common comparison. */
static int PowerStatusDetect(const SpecialStatusItem &item) {
    PowerList fresh;
    int verdict;
    if (!SpecialStatusAsk(item.watch.runtime_type, &fresh, &verdict)) {
        return verdict;
    }
    for (int i = 0; i < kChildren; i++) {
        SPECIAL_TERMINATE(fresh.entries[i].subserial);
        SPECIAL_TERMINATE(fresh.entries[i].des);
        SPECIAL_TERMINATE(fresh.entries[i].baseserial);
    }
    return KeepList(&g_power_status, fresh, "power_status is changed\n");
}

static bool PowerStatusBody(CMarkupSTL *doc, const void *, int *) {
    doc->AddElem("Type", "PowerStatus");
    doc->AddElem("Params");
    doc->IntoElem();
    int count = SpecialStatusBound(g_power_status.num, kChildren);
    for (int i = 0; i < count; i++) {
        const noltDevSDK_PowerStatus_subserial &entry = g_power_status.entries[i];
        /* a child of a base station is named by both serials */
        char serial[32];
        if (entry.baseserial[0] != '\0') {
            snprintf(serial, sizeof serial, "%s-%s", entry.baseserial, entry.subserial);
        } else {
            snprintf(serial, sizeof serial, "%s", entry.subserial);
        }
        doc->AddElem("Power");
        doc->SetAttrib("SubSerial", serial);
        doc->SetAttrib("Type", entry.type);
        doc->SetAttrib("Value", entry.value);
        doc->SetAttrib("Des", entry.des);
        doc->SetAttrib("Remaining", entry.remaining);
        doc->SetAttrib("Status", entry.status);
    }
    return true;
}

static const SpecialStatusItem kPower = {
    SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_POWERSTATUS, g_power_status, 1, LOG_ERROR, NULL),
    kPu2CenPltReportPowerStatusReq,
    PowerStatusBody,
    kSpecialReportUsual,
    NULL,
    NULL,
    0};
static const SpecialResetAtLoad g_power_load(kPower.watch);

int SpecialPowerStatusIsChanged(void) {
    return PowerStatusDetect(kPower);
}

int SpecialReportPowerStatus(int) {
    return SpecialStatusReportItem(kPower);
}

int SpecialPowerStatusReset(void) {
    return SpecialStatusReset(kPower.watch);
}

/* ---- associated device connection: a JSON "Value" -------------------------------------- */

static void TidyAssociated(noltDevSDK_special_associated_device_conn_status *status) {
    SPECIAL_TERMINATE(status->ssid);
    SPECIAL_TERMINATE(status->interface_name);
    SPECIAL_TERMINATE(status->local_ip);
    SPECIAL_TERMINATE(status->mask);
    SPECIAL_TERMINATE(status->gateway);
    SPECIAL_TERMINATE(status->db_serial);
}

static bool AssociatedBody(CMarkupSTL *doc, const void *, int *result) {
    const noltDevSDK_special_associated_device_conn_status &status = g_associated_device_conn_status;
    /* the platform takes at most three characters of each number: -100 goes out as -10 */
    char conn[4];
    char signal[4];
    snprintf(conn, sizeof conn, "%d", status.conn_status);
    snprintf(signal, sizeof signal, "%d", status.signal);
    const SpecialJsonMember members[] = {
        {"Conn", conn, 0},        {"Name", status.interface_name, 0}, {"Address", status.local_ip, 0},
        {"Mask", status.mask, 0}, {"Gateway", status.gateway, 0},     {"Signal", signal, 0},
        {"SSID", status.ssid, 0}, {"Dbserial", status.db_serial, 0}};
    SpecialStatusAddStatus(doc, "DB_Chime_ConnInfo", NULL);
    bscJSON *obj = SpecialStatusJsonObject(members, SPECIAL_COUNT_OF(members));
    if (obj == NULL) {
        return SpecialStatusGiveUp(result, NULL);
    }
    SpecialStatusSetJsonValue(doc, obj, true); /* without a printed text it goes out without "Value" */
    return true;
}

static const SpecialStatusItem kAssociated = {
    SPECIAL_RECORD_WATCH(NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS,
                         g_associated_device_conn_status, 1, LOG_ERROR, NULL),
    kPu2CenPltReportKeyValueReq,
    AssociatedBody,
    kSpecialReportUsual,
    NULL,
    NULL,
    0};

int SpecialAssociatedDeviceConnStatusIsChanged(void) {
    return SpecialStatusDetect<noltDevSDK_special_associated_device_conn_status>(kAssociated.watch,
                                                                                 TidyAssociated);
}

int SpecialReportAssociatedDeviceConnStatus(int) {
    return SpecialStatusReportItem(kAssociated);
}

int SpecialAssociatedDeviceConnStatusReset(void) {
    return SpecialStatusReset(kAssociated.watch);
}
