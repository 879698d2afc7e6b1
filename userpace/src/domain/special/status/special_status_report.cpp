/* The report skeleton of the status items and the bodies they share. */
#include "special_status_report.h"

#include "special_status_item.h"

#include <stdio.h>
#include <string.h>

#include "app/special_app.h"
#include "bus/special_bus.h"
#include "bus/special_json.h"
#include "consts.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_sdk_kernel_struct.h"

const char g_special_status_version[] = SPECIAL_CMD_VERSION;

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

int SpecialStatusReportItem(const SpecialStatusItem &item) {
    if (item.entry_log != NULL) {
        noltdev_debug(LOG_DEBUG, "%s", item.entry_log);
    }
    if ((item.flags & kSpecialReportNeedsApp) != 0 && !SpecialAppHasRuntimeInfo(NULL)) {
        return -1;
    }
    return SpecialStatusReport(item.cmd, item.body, &item, item.flags);
}

bool SpecialStatusKeyValueBody(CMarkupSTL *doc, const void *ctx, int *) {
    const SpecialStatusItem *item = static_cast<const SpecialStatusItem *>(ctx);
    char text[16];
    snprintf(text, sizeof text, "%d", *static_cast<const int *>(item->watch.cache));
    SpecialStatusAddStatus(doc, item->key, text);
    return true;
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
