/* The envelope around every call into the application (see special_app.h). */
#include "special_app.h"

#include <string.h>

#include "noltDevSDK_special_def.h"
#include "special.h"

/* Both callbacks take the same envelope: a type, the record and its length. */
template <class Envelope> static Envelope MakeEnvelope(int type, void *record, size_t len) {
    Envelope envelope;
    memset(&envelope, 0, sizeof envelope);
    envelope.type = type;
    envelope.data = record;
    envelope.len = static_cast<int>(len);
    return envelope;
}

bool SpecialAppRecvMsg(int type, void *record, size_t len, int *rc) {
    noltDevSDK_special_callback *cb = GetSpecialCallback();
    if (cb->recv_msg == NULL) {
        return false;
    }
    noltDevSDK_special_msg_to_dev msg = MakeEnvelope<noltDevSDK_special_msg_to_dev>(type, record, len);
    *rc = cb->recv_msg(&msg);
    return true;
}

bool SpecialAppRuntimeInfo(int type, void **record, size_t len, int *rc) {
    noltDevSDK_special_callback *cb = GetSpecialCallback();
    if (cb->get_runtime_info == NULL) {
        return false;
    }
    noltDevSDK_special_runtime_info info = MakeEnvelope<noltDevSDK_special_runtime_info>(type, *record, len);
    *rc = cb->get_runtime_info(&info);
    *record = info.data;
    return true;
}
