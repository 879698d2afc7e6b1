// The application operations of the "call" step, each one's parser beside its call.
#include <algorithm>
#include <cstring>

#include "noltDevSDK_special_protocol.h"
#include "runner_impl.h"
#include "scenario.h"
#include "scenario_words.h"
#include "step_table.h"

namespace sim {

namespace {

std::string NoWords(Cursor &, Step &, ParseContext &) {
    return "";
}

// The text requests (code, domain) take a 128-byte text record.
constexpr size_t kTextSize = 128;

std::string ParseText(Cursor &c, Step &s, ParseContext &) {
    std::string name = s.call->name;
    if (!c.Word(&s.arg)) {
        return name + " needs its text";
    }
    return s.arg.size() < kTextSize
               ? ""
               : name + " text is longer than " + std::to_string(kTextSize - 1) + " characters";
}

// raw CMD [seq N] [response 0|1] BODY
std::string ParseRaw(Cursor &c, Step &s, ParseContext &ctx) {
    std::string err = CommandAndSeq(c, s, ctx);
    long long response = 0;
    if (err.empty() && c.Keyword("response")) {
        err = NeedNumber(c, "response flag", 0, 255, &response);
    }
    s.response = static_cast<int>(response);
    return err.empty() ? ReadBody(c, ctx, &s.body) : err;
}

// One device request through noltDevSDK_special_send_msg.
int SendRequest(NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_TYPE_E type, void *record, std::string *what) {
    noltDevSDK_special_msg msg;
    std::memset(&msg, 0, sizeof msg);
    msg.msg_type = type;
    msg.msg_struct_ptr = record;
    static const char *const kNames[] = {"UNBIND_USER", "SEND_VERIFICATION_CODE", "QUERY_VODDNS_MAPPED_PORT",
                                         "TRANS_4G_FLOW_INFO"};
    *what = std::string("noltDevSDK_special_send_msg(") + kNames[type] + ")";
    return noltDevSDK_special_send_msg(&msg);
}

int SendText(NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_TYPE_E type, const Step &s, std::string *what) {
    char text[kTextSize] = {};
    std::strncpy(text, s.arg.c_str(), sizeof text - 1);
    return SendRequest(type, text, what);
}

int CallUnbind(Runner &, const Step &, std::string *what) {
    return SendRequest(NOLTDEVSDK_SPECIAL_UNBIND_USER, nullptr, what);
}

int CallVerificationCode(Runner &, const Step &s, std::string *what) {
    return SendText(NOLTDEVSDK_SPECIAL_SEND_VERIFICATION_CODE, s, what);
}

int CallMappedPortQuery(Runner &, const Step &s, std::string *what) {
    return SendText(NOLTDEVSDK_SPECIAL_QUERY_VODDNS_MAPPED_PORT, s, what);
}

// The rows of the device's flow4g group.
int CallFlow4G(Runner &run, const Step &, std::string *what) {
    FlowRows rows = run.Device().FlowInfo();
    noltDevSDK_special_4G_flow_info_page page;
    page.max_count = rows.max_count;
    page.flow_info = rows.flow_info;
    return SendRequest(NOLTDEVSDK_SPECIAL_TRANS_4G_FLOW_INFO, &page, what);
}

// The device's counting group.
int CallFlowCount(Runner &run, const Step &, std::string *what) {
    noltDevSDK_special_flow_counting_seg_count segs = run.Device().Counting();
    *what = "noltDevSDK_special_report_flow_counting";
    return noltDevSDK_special_report_flow_counting(&segs);
}

int CallRaw(Runner &, const Step &s, std::string *what) {
    std::string body = s.body;
    noltDevSDK_special_trans_cmd_msg raw;
    std::memset(&raw, 0, sizeof raw);
    raw.content = &body[0];
    raw.content_len = static_cast<int>(body.size());
    raw.cmd_id = static_cast<unsigned int>(s.number);
    raw.msg_type = static_cast<unsigned char>(s.response);
    raw.msg_seq = s.seq;
    *what = "noltDevSDK_special_send_msg_to_platform";
    return noltDevSDK_special_send_msg_to_platform(&raw);
}

int CallTrusteeshipReport(Runner &, const Step &, std::string *what) {
    *what = "noltDevSDK_special_report_trusteeship";
    return noltDevSDK_special_report_trusteeship();
}

const CallRow kCalls[] = {
    {"unbind", NoWords, CallUnbind},
    {"verification-code", ParseText, CallVerificationCode},
    {"mapped-port-query", ParseText, CallMappedPortQuery},
    {"4g-flow", NoWords, CallFlow4G},
    {"flow-count", NoWords, CallFlowCount},
    {"raw", ParseRaw, CallRaw},
    {"trusteeship-report", NoWords, CallTrusteeshipReport},
};

std::string CallNames() {
    std::string names;
    for (const CallRow &row : kCalls) {
        names += (names.empty() ? "" : ", ") + std::string(row.name);
    }
    return names;
}

} // namespace

std::string ParseCall(Cursor &c, Step &s, ParseContext &ctx) {
    std::string name;
    c.Word(&name);
    const CallRow *end = kCalls + sizeof kCalls / sizeof kCalls[0];
    s.call = std::find_if(kCalls, end, [&](const CallRow &row) { return name == row.name; });
    if (s.call == end) {
        s.call = nullptr;
        return "unknown operation '" + name + "' (" + CallNames() + ")";
    }
    return s.call->parse(c, s, ctx);
}

} // namespace sim
