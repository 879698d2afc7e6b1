/* The registry of the 22 status items: handed to the report-status service at start in
 * this order, and taken back at the end (all but the associated-device item). */
#include <string.h>

#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_protocol.h"
#include "special.h"
#include "special_capacity.h"
#include "special_status.h"

namespace {
struct StatusItem {
    NOLTDEVSDK_REPORT_STATUS_E id;
    int (*is_changed)(void);
    int (*report)(int b_force);
    int (*reset)(void);
};
} // namespace

/* The application and the report-status service know an item by the same number, the
 * installed protocol header's NOLTDEVSDK_SPECIAL_ITEM_<id>. */
#define SPECIAL_ITEM_ID(id) static_cast<NOLTDEVSDK_REPORT_STATUS_E>(NOLTDEVSDK_SPECIAL_ITEM_##id)

static const StatusItem kStatusItems[] = {
#define SPECIAL_STATUS_ITEM(id, is_changed, report, reset) {SPECIAL_ITEM_ID(id), is_changed, report, reset},
#define SPECIAL_STATUS_ITEM_FORCED(id, is_changed, report) {SPECIAL_ITEM_ID(id), is_changed, report, NULL},
#include "special_status_items.inc"
#undef SPECIAL_STATUS_ITEM
#undef SPECIAL_STATUS_ITEM_FORCED
};

static_assert(SPECIAL_COUNT_OF(kStatusItems) == NOLTDEVSDK_SPECIAL_STATUS_ITEM_COUNT,
              "the module registers every status item of the protocol header");

/* The associated-device item (92) stays registered after the module ends. */
static const NOLTDEVSDK_REPORT_STATUS_E kUnregisterOrder[] = {
    SPECIAL_ITEM_ID(SWITCH_ENABLE_FLOW),
    SPECIAL_ITEM_ID(FLOW_COUNT_CONFIG),
    SPECIAL_ITEM_ID(KEY_VALUE),
    SPECIAL_ITEM_ID(BATTERY_WORK_STATUS),
    SPECIAL_ITEM_ID(CUSTOM_VOICE),
    SPECIAL_ITEM_ID(LINKAGE_MODE_STATUS),
    SPECIAL_ITEM_ID(TRUSTEESHIP),
    SPECIAL_ITEM_ID(POWER_STATUS),
    SPECIAL_ITEM_ID(TRUSTEESHIP_CONNECT),
    SPECIAL_ITEM_ID(VODDNS_MAPPED_PORT),
    SPECIAL_ITEM_ID(BATTERY_WORK_MODE),
    SPECIAL_ITEM_ID(SWITCH_ENABLE_LINGER_ALARM),
    SPECIAL_ITEM_ID(SWITCH_ENABLE_FACE_RECG),
    SPECIAL_ITEM_ID(RING_TYPE),
    SPECIAL_ITEM_ID(DISTORTION_CORRECTION),
    SPECIAL_ITEM_ID(BATTERY_WORK_MODE_PLAN),
    SPECIAL_ITEM_ID(NETWORK_MODE),
    SPECIAL_ITEM_ID(SWITCH_ENABLE_CHIME_INDICATOR),
    SPECIAL_ITEM_ID(4G_INFO),
    SPECIAL_ITEM_ID(ONE_CLICK_MUTE),
    SPECIAL_ITEM_ID(SPEAKER_CONFIG),
};

void SpecialStatusRegisterAll(void) {
    /* one record for every item: the service copies what it keeps */
    noltDevSDK_report_status_info info;
    memset(&info, 0, sizeof info);
    for (size_t i = 0; i < SPECIAL_COUNT_OF(kStatusItems); i++) {
        info.status_value = kStatusItems[i].id;
        info.status_is_changed = kStatusItems[i].is_changed;
        info.report_status = kStatusItems[i].report;
        info.status_reset = kStatusItems[i].reset;
        noltDevSDK_report_status_register(&info);
    }
}

void SpecialStatusUnregisterAll(void) {
    noltDevSDK_report_status_info info;
    memset(&info, 0, sizeof info);
    for (size_t i = 0; i < SPECIAL_COUNT_OF(kUnregisterOrder); i++) {
        info.status_value = kUnregisterOrder[i];
        noltDevSDK_report_status_unregister(&info);
    }
}
