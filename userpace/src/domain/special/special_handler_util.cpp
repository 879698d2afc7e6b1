/* Bounded copies, delivery to the application and forced reports for the handlers. */
#include "special_handler_util.h"

#include <string.h>

#include <string>

#include "log_ctrl.h"
#include "special.h"
#include "special_bus.h"

static const char kCallbackMissing[] = "special domain cb is not init\n";

void SpecialCopyText(char *dst, size_t size, const char *src) {
    if (dst == NULL || size == 0) {
        return;
    }
    size_t n = 0;
    if (src != NULL) {
        while (n + 1 < size && src[n] != '\0') {
            ++n;
        }
        memcpy(dst, src, n);
    }
    dst[n] = '\0';
}

bool SpecialFindText(CMarkupSTL *doc, const char *name, bool restart, char *dst, size_t size) {
    if (!doc->FindElem(name, restart)) {
        return false;
    }
    SpecialCopyText(dst, size, doc->GetData().c_str());
    return true;
}

bool SpecialFindInt(CMarkupSTL *doc, const char *name, bool restart, int *value) {
    if (!doc->FindElem(name, restart)) {
        return false;
    }
    *value = SpecialAtoi(doc->GetData().c_str());
    return true;
}

int SpecialAttribInt(const CMarkupSTL *doc, const char *name) {
    return SpecialAtoi(doc->GetAttrib(name).c_str());
}

void SpecialAttribText(const CMarkupSTL *doc, const char *name, char *dst, size_t size) {
    SpecialCopyText(dst, size, doc->GetAttrib(name).c_str());
}

bool SpecialRecvMsgReady(const char *trace) {
    if (GetSpecialCallback()->recv_msg == NULL) {
        noltdev_debug(LOG_ERROR, kCallbackMissing);
        return false;
    }
    if (trace != NULL) {
        noltdev_debug(LOG_DEBUG, "%s", trace);
    }
    return true;
}

/* Both callbacks take the same envelope: a type, the record and its length. */
template <class Envelope> static Envelope MakeEnvelope(int type, void *record, size_t len) {
    Envelope envelope;
    memset(&envelope, 0, sizeof envelope);
    envelope.type = type;
    envelope.data = record;
    envelope.len = static_cast<int>(len);
    return envelope;
}

/* Some handlers call the application without checking first; a missing callback gets a
 * defined failure instead of a call through NULL. */
int SpecialDeliver(int type, void *record, size_t len) {
    if (!SpecialRecvMsgReady(NULL)) {
        return -1;
    }
    noltDevSDK_special_msg_to_dev msg = MakeEnvelope<noltDevSDK_special_msg_to_dev>(type, record, len);
    return GetSpecialCallback()->recv_msg(&msg);
}

int SpecialGetRuntime(int type, void *record, size_t len) {
    noltDevSDK_special_callback *cb = GetSpecialCallback();
    if (cb->get_runtime_info == NULL) {
        noltdev_debug(LOG_ERROR, kCallbackMissing);
        return -1;
    }
    noltDevSDK_special_runtime_info info = MakeEnvelope<noltDevSDK_special_runtime_info>(type, record, len);
    return cb->get_runtime_info(&info);
}

void SpecialForceReport(NOLTDEVSDK_REPORT_STATUS_E id) {
    noltDevSDK_report_set_force_report(id);
}
