/* Requests the device sends to the platform on the application's initiative: unbind,
 * verification code, mapped-port query, 4G traffic and people-flow counting. None waits
 * for an answer; the platform's answers arrive later as platform messages. */
#include <limits.h>
#include <string.h>

#include <string>

#include "bus/special_bus.h"
#include "consts.h"
#include "log_ctrl.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_requests.h"

/* A text field of a record, read no further than the field even when unterminated. */
static std::string SpecialFieldText(const char *field, size_t size) {
    return field == NULL ? std::string() : std::string(field, strnlen(field, size));
}

/* Sends a request document; the numbered requests pass GetNextSeqNum(). */
static int SpecialSendReq(const CMarkupSTL &doc, int cmd_id, unsigned int seq) {
    return special_send_msg_to_platform(doc, cmd_id, SPECIAL_CMD_VERSION, 0, seq, NULL);
}

/* The verification-code and mapped-port requests: "Authorization", "DevSerial" and one
 * text element. */
static int SpecialSendSerialTextReq(int cmd_id, const char *name, const char *text, size_t size) {
    CMarkupSTL doc;
    noltdev_xml_init_req(doc);
    doc.AddElem("Authorization");
    doc.AddElem("DevSerial", SpecialDevSerial());
    doc.AddElem(name, SpecialFieldText(text, size).c_str());
    return SpecialSendReq(doc, cmd_id, GetNextSeqNum());
}

/* Truncates toward zero; NaN and values beyond the int range, whose conversion C++
 * leaves undefined, give 0 and the nearest bound. */
static int SpecialTruncToInt(float value) {
    if (!(value == value)) {
        return 0;
    }
    if (value >= 2147483648.0f) {
        return INT_MAX;
    }
    if (value <= -2147483648.0f) {
        return INT_MIN;
    }
    return (int)value;
}

int SpecialUnbindUserReq(void) {
    CMarkupSTL doc;
    noltdev_xml_init_req(doc);
    return SpecialSendReq(doc, kPu2CenPltUnBindUserReq, GetNextSeqNum());
}

int SpecialSendVerificationCodeReq(char *code) {
    return SpecialSendSerialTextReq(kPu2CenPltSendVerificationCodeReq, "VerificationCode", code,
                                    sizeof(noltDevSDK_special_send_verification_code::code));
}

int SpecialQueryVoddnsMappedPortReq(char *domain) {
    return SpecialSendSerialTextReq(kPu2CenPltQueryDevInfoByDomainReq, "Domain", domain,
                                    sizeof(noltDevSDK_special_query_voddns_mapped_port::domain));
}

int Special4GFlowReportReq(void *page) {
    const noltDevSDK_special_4G_flow_info_page *flow =
        static_cast<const noltDevSDK_special_4G_flow_info_page *>(page);
    if (flow == NULL) {
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    if (noltdev_get_register_status() == 0) {
        noltdev_debug(LOG_ERROR, "dev is Offline\n");
        return NOLTDEVSDK_SPECIAL_CODE_FAIL;
    }
    /* rows announced without rows to read would be read through a null pointer */
    if (flow->flow_info == NULL && flow->max_count > 0) {
        noltdev_debug(LOG_ERROR, "4G flow page has %d rows but no row array\n", flow->max_count);
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    CMarkupSTL doc;
    noltdev_xml_init_req(doc);
    doc.AddElem("DevSerial", SpecialDevSerial());
    doc.AddElem("Type", "4GFlow");
    for (int i = 0; i < flow->max_count; ++i) {
        const noltDevSDK_special_4G_flow_info &row = flow->flow_info[i];
        doc.AddElem("Flow");
        doc.SetAttrib("Incr", SpecialTruncToInt(row.incr));
        doc.SetAttrib("ICCID", SpecialFieldText(row.ICCID, sizeof row.ICCID).c_str());
        doc.SetAttrib("IMEI", SpecialFieldText(row.IMEI, sizeof row.IMEI).c_str());
        doc.SetAttrib("Type", row.type);
    }
    /* the 4G report is not numbered: it always carries sequence 0 */
    return SpecialSendReq(doc, kPu2CenPltReport4GFlowInfoReq, 0);
}

int ReportFlowCountReq(noltDevSDK_special_flow_counting_seg_count *seg_info) {
    if (seg_info == NULL || seg_info->seg_count <= 0) {
        noltdev_debug(LOG_ERROR, "ThirdParty Transfer Data Param Error \n");
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    int count = seg_info->seg_count;
    const int seg_max = (int)(sizeof seg_info->seg / sizeof seg_info->seg[0]);
    /* the record holds ten segments; a larger count must not read past them */
    if (count > seg_max) {
        noltdev_debug(LOG_WARNING, "flow count seg_count %d, the record holds %d\n", count, seg_max);
        count = seg_max;
    }
    CMarkupSTL doc;
    noltdev_xml_init_req(doc);
    doc.AddElem("DevSerial", SpecialDevSerial());
    doc.AddElem("Authorization");
    doc.AddElem("Type", "FlowCount");
    doc.AddElem("Params");
    doc.IntoElem();
    for (int i = 0; i < count; ++i) {
        const noltDevSDK_special_flow_counting_seg &seg = seg_info->seg[i];
        char begin[13]; /* "YYYYMMDDhhmm" */
        char end[13];
        doc.AddElem("Data");
        doc.SetAttrib("In", seg.enter_num);
        doc.SetAttrib("Out", seg.leave_num);
        doc.SetAttrib("Begin", ConvertCalendarEx(seg.start_time, begin));
        doc.SetAttrib("End", ConvertCalendarEx(seg.stop_time, end));
    }
    doc.OutOfElem();
    return SpecialSendReq(doc, kPu2CenPltReportFlowCountReq, GetNextSeqNum());
}
