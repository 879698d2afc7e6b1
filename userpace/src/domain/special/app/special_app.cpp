/* The application port (see special_app.h): stored callbacks, init flag, the envelope. */
#include "special_app.h"

#include "log_ctrl.h"

static noltDevSDK_special_callback g_special_cb = {NULL, NULL};
static bool g_special_inited = false;

void SpecialAppStore(const noltDevSDK_special_callback *cb) {
    g_special_cb.recv_msg = cb->recv_msg;
    g_special_cb.get_runtime_info = cb->get_runtime_info;
}

bool SpecialAppInited(void) {
    return g_special_inited;
}

void SpecialAppSetInited(bool inited) {
    g_special_inited = inited;
}

/* The one log policy: a missing callback logs the caller's line, if it gave one. */
static void SpecialAppMissing(const char *missing_log) {
    if (missing_log != NULL) {
        noltdev_debug(LOG_ERROR, "%s", missing_log);
    }
}

bool SpecialAppHasRecvMsg(const char *missing_log) {
    if (g_special_cb.recv_msg == NULL) {
        SpecialAppMissing(missing_log);
        return false;
    }
    return true;
}

bool SpecialAppHasRuntimeInfo(const char *missing_log) {
    if (g_special_cb.get_runtime_info == NULL) {
        SpecialAppMissing(missing_log);
        return false;
    }
    return true;
}

/* Both callbacks take the same envelope: a type, the record and its length. */
template <class Envelope> static Envelope MakeEnvelope(int type, void *record, size_t len) {
    Envelope envelope = Envelope(); /* zero-filled without a call: it is made at every poll */
    envelope.type = type;
    envelope.data = record;
    envelope.len = static_cast<int>(len);
    return envelope;
}

int SpecialAppRecvMsg(int type, void *record, size_t len, const char *missing_log) {
    if (g_special_cb.recv_msg == NULL) { /* tested here, not through a call: every poll asks */
        SpecialAppMissing(missing_log);
        return -1;
    }
    noltDevSDK_special_msg_to_dev msg = MakeEnvelope<noltDevSDK_special_msg_to_dev>(type, record, len);
    return g_special_cb.recv_msg(&msg);
}

int SpecialAppRuntimeInfo(int type, void **record, size_t len, const char *missing_log) {
    if (g_special_cb.get_runtime_info == NULL) {
        SpecialAppMissing(missing_log);
        return -1;
    }
    noltDevSDK_special_runtime_info info = MakeEnvelope<noltDevSDK_special_runtime_info>(type, *record, len);
    const int rc = g_special_cb.get_runtime_info(&info);
    *record = info.data;
    return rc;
}
