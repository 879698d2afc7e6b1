/* Bounded copies and forced reports for the handlers. */
#include "special_handler_util.h"

#include <string.h>

#include <string>

#include "app/special_app.h"
#include "bus/special_bus.h"
#include "log_ctrl.h"

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

bool SpecialHandlerCanDeliver(const char *trace) {
    if (!SpecialAppHasRecvMsg(SPECIAL_APP_NO_CALLBACK)) {
        return false;
    }
    noltdev_debug(LOG_DEBUG, "%s", trace);
    return true;
}

void SpecialForceReport(NOLTDEVSDK_REPORT_STATUS_E id) {
    noltDevSDK_report_set_force_report(id);
}
