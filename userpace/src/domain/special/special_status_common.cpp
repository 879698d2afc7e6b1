/* The shared machinery of the status items: the runtime-info question, change
 * detection against a cache, reset, and the report skeleton. */
#include "special_status_common.h"

#include <stdio.h>
#include <string.h>

#include "consts.h"
#include "log_ctrl.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special.h"
#include "special_app.h"
#include "special_bus.h"
#include "special_json.h"

const char g_special_status_version[] = SPECIAL_CMD_VERSION;

bool SpecialStatusAsk(int runtime_type, void *record, size_t size, int *verdict, int selector) {
    *verdict = 0;
    if (GetSpecialCallback()->get_runtime_info == NULL) {
        return false;
    }
    memset(record, 0, size);
    if (selector != 0) {
        memcpy(record, &selector, sizeof selector);
    }
    int rc = 0;
    if (!SpecialAppRuntimeInfo(runtime_type, &record, size, &rc)) {
        return false;
    }
    if (rc == 0) {
        return true;
    }
    /* the application's codes keep their meaning in the low twelve bits: 4 is "not supported" */
    *verdict = (rc & 0xFFF) == 4 ? -1 : 0;
    return false;
}

int SpecialStatusKeep(const SpecialWatch &watch, const void *record) {
    const unsigned char *fresh = static_cast<const unsigned char *>(record) + watch.offset;
    if (memcmp(fresh, watch.cache, watch.size) == 0) {
        return 0;
    }
    memcpy(watch.cache, fresh, watch.size);
    if (watch.change_log != NULL) {
        noltdev_debug(watch.log_level, "%s", watch.change_log);
    }
    return 1;
}

int SpecialStatusReset(const SpecialWatch &watch) {
    static const int not_seen = -1;
    memset(watch.cache, 0, watch.size);
    for (int i = 0; i < watch.not_seen_words; i++) {
        memcpy(static_cast<char *>(watch.cache) + i * sizeof(int), &not_seen, sizeof not_seen);
    }
    return 0;
}

int SpecialStatusBound(int count, int capacity) {
    if (count < 0) {
        return 0;
    }
    return count < capacity ? count : capacity;
}

void SpecialStatusStart(CMarkupSTL *doc, int flags) {
    noltdev_xml_init_req(*doc);
    if ((flags & kSpecialReportSerial) != 0) {
        doc->AddElem("DevSerial", SpecialDevSerial());
    }
    doc->AddElem("Authorization");
}

int SpecialStatusSend(const CMarkupSTL &doc, int cmd, unsigned int seq) {
    return special_send_msg_to_platform(doc, cmd, g_special_status_version, 0, seq, NULL);
}

int SpecialStatusReport(int cmd, SpecialReportBody body, const void *ctx, int flags) {
    CMarkupSTL doc;
    SpecialStatusStart(&doc, flags);
    int result = 0;
    if (body != NULL && !body(&doc, ctx, &result)) {
        return result;
    }
    unsigned int seq = (flags & kSpecialReportSequenced) != 0 ? GetNextSeqNum() : 0;
    return SpecialStatusSend(doc, cmd, seq);
}

bool SpecialStatusGiveUp(int *result, const char *line) {
    if (line != NULL) {
        noltdev_debug(LOG_ERROR, "%s", line);
    }
    *result = -1;
    return false;
}

void SpecialStatusAddStatus(CMarkupSTL *doc, const char *type, const char *value) {
    doc->AddElem("Status");
    doc->SetAttrib("Type", type);
    if (value != NULL) {
        doc->SetAttrib("Value", value);
    }
}

bool SpecialStatusSetJsonValue(CMarkupSTL *doc, bscJSON *obj, bool formatted) {
    char *text = formatted ? bscJSON_Print(obj) : bscJSON_PrintUnformatted(obj);
    bscJSON_Delete(obj);
    if (text == NULL) {
        return false;
    }
    doc->SetAttrib("Value", text);
    bscJSON_free(text);
    return true;
}

bscJSON *SpecialStatusJsonObject(const SpecialJsonMember *members, size_t count) {
    bscJSON *obj = bscJSON_CreateObject();
    for (size_t i = 0; obj != NULL && i < count; i++) {
        if (members[i].text != NULL) {
            bscJSON_AddStringToObject(obj, members[i].key, members[i].text);
        } else {
            SpecialJsonAddInt(obj, members[i].key, members[i].number);
        }
    }
    return obj;
}

bool SpecialStatusJsonValue(CMarkupSTL *doc, const SpecialJsonMember *members, size_t count, bool formatted,
                            const char *create_fail, const char *print_fail, int *result) {
    bscJSON *obj = SpecialStatusJsonObject(members, count);
    if (obj == NULL) {
        return SpecialStatusGiveUp(result, create_fail);
    }
    if (!SpecialStatusSetJsonValue(doc, obj, formatted)) {
        return SpecialStatusGiveUp(result, print_fail);
    }
    return true;
}

namespace {
struct StatusValue {
    const char *type;
    const char *value;
};
} // namespace

static bool StatusValueBody(CMarkupSTL *doc, const void *ctx, int *) {
    const StatusValue *status = static_cast<const StatusValue *>(ctx);
    SpecialStatusAddStatus(doc, status->type, status->value);
    return true;
}

int SpecialStatusReportValue(const char *type, const char *value) {
    StatusValue status = {type, value};
    return SpecialStatusReport(kPu2CenPltReportKeyValueReq, StatusValueBody, &status);
}

int SpecialStatusReportInt(const char *type, int value) {
    char text[16];
    snprintf(text, sizeof text, "%d", value);
    return SpecialStatusReportValue(type, text);
}

bool SpecialStatusJsonDocument(CMarkupSTL *doc, bscJSON *obj) {
    char *text = bscJSON_Print(obj);
    bscJSON_Delete(obj);
    if (text == NULL) {
        return false;
    }
    doc->SetDoc(text);
    bscJSON_free(text);
    return true;
}
