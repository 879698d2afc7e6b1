/* The key-value command: a named setting whose value is a number or a JSON object. The
 * name picks the record, the application gets it, and some settings force a report so
 * that the platform sees the new value at once. */
#include <stddef.h>
#include <string.h>

#include <string>

#include "app/special_app.h"
#include "bscJSON.h"
#include "bus/special_bus.h"
#include "bus/special_platform_keys.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "special_handler_util.h"
#include "special_handlers.h"

namespace {

/* Every record a setting can fill; each is a run of ints. */
union KeyValueRecord {
    noltDevSDK_special_battery_work_mode battery_work_mode;
    noltDevSDK_special_ring_type ring_type;
    noltDevSDK_special_net_work_mode net_work_mode;
    noltDevSDK_special_one_click_mute one_click_mute;
    noltDevSDK_special_speaker_config speaker_config;
};

/* One int field of the record and, for JSON values, the member that fills it. */
struct KeyValueField {
    const char *member;
    size_t offset;
};

struct KeyValueSetting {
    const char *name;
    int msg_type;
    size_t len;
    NOLTDEVSDK_REPORT_STATUS_E report; /* NOLTDEVSDK_ReportNone: no forced report */
    const char *parse_fail_log;        /* NULL: the value is a decimal integer */
    KeyValueField fields[4];
};

/* In the order the name is compared; names are case-sensitive. */
const KeyValueSetting kSettings[] = {
    {SPECIAL_KEY_BATTERY_WORK_MODE,
     NOLTDEVSDK_SPECIAL_ON_BATTERY_WORK_MODE,
     sizeof(noltDevSDK_special_battery_work_mode),
     NOLTDEVSDK_ReportBatteryWorkMode,
     NULL,
     {{NULL, offsetof(noltDevSDK_special_battery_work_mode, mode)}}},
    {SPECIAL_KEY_RING_TYPE,
     NOLTDEVSDK_SPECIAL_ON_RING_SOUND,
     sizeof(noltDevSDK_special_ring_type),
     NOLTDEVSDK_ReportSpecialRingType,
     "[SpecialSetKeyValueReq] parse CustomRing fail\n",
     {{"Type", offsetof(noltDevSDK_special_ring_type, type)},
      {"CustomRingIndex", offsetof(noltDevSDK_special_ring_type, index)},
      {"Volume", offsetof(noltDevSDK_special_ring_type, vol)}}},
    {SPECIAL_KEY_NETWORK_MODE,
     NOLTDEVSDK_SPECIAL_ON_NET_WORK_MODE,
     sizeof(noltDevSDK_special_net_work_mode),
     NOLTDEVSDK_ReportBatteryNetWorkMode,
     NULL,
     {{NULL, offsetof(noltDevSDK_special_net_work_mode, mode)}}},
    {SPECIAL_KEY_ONE_CLICK_MUTE,
     NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_ONE_CLICK_MUTE,
     sizeof(noltDevSDK_special_one_click_mute),
     NOLTDEVSDK_ReportNone,
     NULL,
     {{NULL, offsetof(noltDevSDK_special_one_click_mute, enable)}}},
    {SPECIAL_KEY_SPEAKER_CONFIG,
     NOLTDEVSDK_SPECIAL_ON_SET_SPECIAL_SPEAKER_CONFIG,
     sizeof(noltDevSDK_special_speaker_config),
     NOLTDEVSDK_ReportNone,
     "[SpecialSetKeyValueReq] parse SpeakerConfig fail\n",
     {{"RingSwitch", offsetof(noltDevSDK_special_speaker_config, ring_enable)},
      {"RingIndex", offsetof(noltDevSDK_special_speaker_config, ring_index)},
      {"IntelligentSwitch", offsetof(noltDevSDK_special_speaker_config, intel_enable)},
      {"IntelligentIndex", offsetof(noltDevSDK_special_speaker_config, intel_index)}}},
};

const KeyValueSetting *FindSetting(const std::string &name) {
    for (size_t i = 0; i < sizeof kSettings / sizeof kSettings[0]; ++i) {
        if (name == kSettings[i].name) {
            return &kSettings[i];
        }
    }
    return NULL;
}

int *Field(KeyValueRecord *record, const KeyValueField &field) {
    return reinterpret_cast<int *>(reinterpret_cast<char *>(record) + field.offset);
}

/* Fills the record from the JSON members present; false when the text is not JSON. */
bool ReadJsonValue(const KeyValueSetting &setting, const char *text, KeyValueRecord *record) {
    bscJSON *root = bscJSON_Parse(text);
    if (root == NULL) {
        return false;
    }
    for (size_t i = 0; i < sizeof setting.fields / sizeof setting.fields[0]; ++i) {
        const KeyValueField &field = setting.fields[i];
        const bscJSON *item = field.member != NULL ? bscJSON_GetObjectItem(root, field.member) : NULL;
        if (item != NULL) {
            *Field(record, field) = item->valueint;
        }
    }
    bscJSON_Delete(root);
    return true;
}

} // namespace

int SpecialSetKeyValueReq(CMarkupSTL *req, CMarkupSTL *rsp) {
    (void)rsp; /* the frame answers with what it prepared */
    if (!SpecialHandlerCanDeliver("SpecialSetKeyValueReq\n")) {
        return -1;
    }
    KeyValueRecord record;
    memset(&record, 0, sizeof record);

    if (!req->FindElem("Type", true)) {
        return 0;
    }
    /* an unknown name is ignored, so newer platform settings do not fail older devices */
    const KeyValueSetting *setting = FindSetting(req->GetData());
    if (setting == NULL || !req->FindElem("Value", true)) {
        return 0;
    }
    std::string value = req->GetData();
    if (setting->parse_fail_log == NULL) {
        *Field(&record, setting->fields[0]) = SpecialAtoi(value.c_str());
    } else if (!ReadJsonValue(*setting, value.c_str(), &record)) {
        noltdev_debug(LOG_ERROR, "%s", setting->parse_fail_log);
        return -1;
    }
    int rc = SpecialAppRecvMsg(setting->msg_type, &record, setting->len, NULL);
    if (setting->report != NOLTDEVSDK_ReportNone) {
        SpecialForceReport(setting->report);
    }
    return rc;
}
