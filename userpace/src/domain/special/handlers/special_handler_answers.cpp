/* The platform's answers to two device requests: the mapped ports of a domain (XML) and
 * the result of an unbind (JSON); each is delivered to the application. */
#include <string.h>

#include <string>

#include "app/special_app.h"
#include "app/special_capacity.h"
#include "bscJSON.h"
#include "bus/special_bus.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "special_handler_util.h"
#include "special_handlers.h"

/* The device status an answer's result stands for; false for a result that is dropped. */
static bool VoddnsStatusFromResult(int result, int *status) {
    switch (result) {
    case 0:
    case 0x100E01:
        *status = 2;
        return true;
    case 0x100009:
        *status = 3;
        return true;
    default:
        return false;
    }
}

/* Reads the children of "DevInfo" (the cursor is inside it). */
static void ReadDevInfo(CMarkupSTL *req, const CMarkupSTL *rsp, noltDevSDK_special_voddns_dev_info *record) {
    SpecialFindText(req, "SubSeral", true, record->dev_serial, sizeof record->dev_serial);
    if (req->FindElem("Domain", true) && !req->GetData().empty()) {
        SpecialCopyText(record->domain, sizeof record->domain, req->GetData().c_str());
    }
    if (req->FindElem("Status", true)) {
        /* read from the answer document, not the request, as the system has always done:
         * the platform's "Status" only decides whether this read happens */
        record->dev_status = SpecialAtoi(rsp->GetData().c_str());
    }
    SpecialFindText(req, "NatIP", true, record->nat_ip, sizeof record->nat_ip);
    SpecialFindText(req, "LocalIP", true, record->local_ip, sizeof record->local_ip);
    /* each "Port" continues after the last element found, so they follow "LocalIP";
     * the array holds 16 and later ones are ignored */
    const size_t max_ports = SPECIAL_COUNT_OF(record->mapped_port_infos);
    for (size_t i = 0; i < max_ports && req->FindElem("Port", false); ++i) {
        noltDevSDK_special_voddns_mapped_info *port = &record->mapped_port_infos[i];
        SpecialAttribText(req, "Type", port->type, sizeof port->type);
        port->nat_port = SpecialAttribInt(req, "NatPort");
        port->local_port = SpecialAttribInt(req, "LocalPort");
    }
}

int SpecialQueryVoddnsMappedPortRsp(CMarkupSTL *req, CMarkupSTL *rsp) {
    noltDevSDK_special_voddns_dev_info record;
    memset(&record, 0, sizeof record);
    record.dev_status = 2;
    if (!VoddnsStatusFromResult(special_xml_check_result(*req), &record.dev_status)) {
        return -1;
    }
    if (req->FindElem("DevInfo", true)) {
        req->IntoElem();
        ReadDevInfo(req, rsp, &record);
        req->OutOfElem();
    }
    return SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_SET_VODDNS_MAPPED_PORT, &record, sizeof record,
                             SPECIAL_APP_NO_CALLBACK);
}

int SpecialUnbindUserRsp(const char *text) {
    if (!SpecialHandlerCanDeliver("SpecialUnbindUserRsp\n")) {
        return -1;
    }
    noltDevSDK_special_unbind_user record;
    memset(&record, 0, sizeof record);
    /* a text that is not JSON gives no tree and is delivered with result 0 */
    bscJSON *root = bscJSON_Parse(text);
    const bscJSON *result = bscJSON_GetObjectItem(root, "Result");
    if (result != NULL) {
        record.result = result->valueint;
    }
    int rc = SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_UNBINDUSER, &record, sizeof record, NULL);
    bscJSON_Delete(root);
    return rc;
}

int UnbindUserReq_Bushandle(void *buf, int buf_len) {
    (void)buf_len; /* the kernel terminates the body */
    const char *text = static_cast<const char *>(buf);
    noltdev_debug(LOG_INFO, "%s\n", text != NULL ? text : "");
    return SpecialUnbindUserRsp(text);
}
