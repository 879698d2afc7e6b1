// The message bus: the send paths, the "Result" element, the value formatters, the
// device sequence counter and the request/response frame around a test handler.
#include <cstdlib>

#include "bus/special_bus.h"
#include "kernel/special_commands.h"
#include "noltDevSDK_special_protocol.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_fixture.h"

namespace special_test {
namespace {

using BusTest = SpecialFixture;

struct Handled {
    int calls = 0;
    std::string req, rsp;
    int req_result = 0;
} g_handled;

// Records what it was given, then refuses (a no-op on an answer without skeleton).
int RefusingHandler(CMarkupSTL *req, CMarkupSTL *rsp) {
    g_handled = {g_handled.calls + 1, req->GetDoc(), rsp->GetDoc(), special_xml_check_result(*req)};
    special_set_result(rsp, SPECIAL_RESULT_REFUSED);
    return -1;
}

int JsonHandler(CMarkupSTL *, CMarkupSTL *rsp) {
    return rsp->SetDoc("{\"Result\":0}") ? 0 : -1;
}

TEST(BusFormat, FloatsAndUtcCalendarAndSequence) {
    setenv("TZ", "UTC-9", 1); // a local zone must not show
    tzset();
    char buf[64], when[13];
    EXPECT_STREQ(FloatToChar(0.5f, buf), "0.5000000");
    EXPECT_STREQ(ConvertCalendarEx(0, when), "197001010000");
    EXPECT_STREQ(ConvertCalendarEx(1700000000, when), "202311142213");
    EXPECT_EQ(GetNextSeqNum(), 0u);
    EXPECT_EQ(GetNextSeqNum(), 1u);
}

TEST_F(BusTest, SendPathsFillThePublishRecord) {
    const std::string v32(32, 'v');
    CMarkupSTL doc;
    noltdev_xml_init_req(doc);
    EXPECT_EQ(special_send_msg_to_platform(doc, kPu2CenPltReportKeyValueReq, v32.c_str(), 1, 7, nullptr), 0);
    SetSendResult(NOLTDEV_SDK_KERNEL_ERR_SEND);
    EXPECT_EQ(special_send_json_to_platform("{}", kPu2CenPltReportKeyValueReq, "v1.0.0", 0, 8),
              NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR);
    std::vector<Sent> sent = SentMessages();
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[0].domain, uint32_t(kDomain));
    EXPECT_EQ(sent[0].command, uint32_t(kPu2CenPltReportKeyValueReq));
    EXPECT_EQ(sent[0].seq, 7u);
    EXPECT_EQ(sent[0].response, 1);
    EXPECT_EQ(sent[0].version, v32.substr(0, 31));
    EXPECT_EQ(sent[0].body, doc.GetDoc());
    EXPECT_EQ(sent[1].body, "{}");
    EXPECT_EQ(sent[1].response, 0);
    EXPECT_EQ(CountLog("s:305e\n"), 2u);
    EXPECT_TRUE(HasLog(4, "\nsend:{}\n"));
}

TEST_F(BusTest, ResultIsFoundFromTheStartOfTheLevel) {
    struct Case {
        const char *result;
        int code;
    } cases[] = {{"<Result>0</Result>", 0},
                 {"<Result>abc</Result>", 0},
                 {"<Result> -5x</Result>", -5},
                 {"<Result>99999999999</Result>", 0x7fffffff},
                 {"", -1}};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.result);
        ClearLogs();
        CMarkupSTL doc;
        ASSERT_TRUE(doc.SetDoc(("<Response>" + std::string(c.result) + "<Info/></Response>").c_str()));
        doc.FindElem("Response", true);
        doc.IntoElem();
        doc.FindElem("Info", true); // the cursor now stands after "Result"
        EXPECT_EQ(special_xml_check_result(doc), c.code);
        char log[64];
        snprintf(log, sizeof log, "response result error, code %#x\n", static_cast<unsigned>(c.code));
        EXPECT_EQ(CountLog(log), c.code > 0 || c.code < -1 ? 1u : 0u);
    }
    CMarkupSTL rsp;
    noltdev_xml_init_rsp(rsp);
    rsp.AddElem("Info");
    special_set_result(&rsp, NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM);
    EXPECT_NE(rsp.GetDoc().find("<Result>-744910845</Result>"), std::string::npos);
    EXPECT_TRUE(HasLog(1, "SetResult 0xd3999003\n"));
}

TEST_F(BusTest, FrameAnswersUnderTheAnswerCommand) {
    const char *bad = "<Request><Open>";
    const char *good = "<Request><Value>1</Value></Request>";
    const char *no_rsp = "ThirdyPartyPlatformReqAndRspBushandle no rsp, cmd = 0xffffffff\n";
    struct Case {
        const char *body;
        int rsp_cmd, kernel_rc, calls, rc;
        const char *result; // the answer's "Result"; nullptr: nothing sent
        const char *log;
    } cases[] = {
        {bad, kCenPlt2PuSetKeyValueRsp, 0, 0, 0, "3",
         "SpecialPlatformReqAndRspBushandle XML parse failed, cmd = 0x498d\n"},
        {bad, 0, 0, 0, 0, nullptr, no_rsp},
        {good, kCenPlt2PuSetKeyValueRsp, 0, 1, 0, "4", nullptr},
        {good, kCenPlt2PuSetKeyValueRsp, NOLTDEV_SDK_KERNEL_ERR_SEND, 1,
         NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR, "4", nullptr},
        {good, 0, 0, 1, 0, nullptr, no_rsp},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(std::string(c.body) + " -> " + std::to_string(c.rsp_cmd));
        g_handled = Handled();
        ClearSent();
        ClearLogs();
        SetSendResult(c.kernel_rc);
        std::string body = c.body;
        EXPECT_EQ(SpecialPlatformReqAndRspXmlBushandle(&body[0], 0, c.rsp_cmd, "v1.0.0", 77, RefusingHandler,
                                                       nullptr),
                  c.rc);
        EXPECT_EQ(g_handled.calls, c.calls);
        EXPECT_TRUE(!c.log || HasLog(c.log));
        ASSERT_EQ(SentCount(), c.result ? 1u : 0u);
        if (c.result) {
            Sent s = SentMessages()[0];
            EXPECT_EQ(s.command, static_cast<uint32_t>(c.rsp_cmd));
            EXPECT_EQ(s.seq, 77u);
            EXPECT_EQ(s.response, 1);
            EXPECT_EQ(s.Text("Response/Result"), c.result);
        }
    }
}

TEST_F(BusTest, FrameStampsTheSequenceInsideTheRoot) {
    struct Case {
        const char *body, *root;
        uint32_t seq;
        const char *stamp; // "%d", so that a handler's atoi gives back every sequence number
    } cases[] = {
        {"<Other/>", "", 3, "3"}, // stamped beside the root
        {"<Request><Value>1</Value></Request>", "Request", 77, "77"},
        {"<Response><Result>0</Result></Response>", "Response", 0xFFFFFFFFu, "-1"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.body);
        std::string body = c.body;
        SpecialPlatformReqAndRspXmlBushandle(&body[0], 0, 0, "v1.0.0", c.seq, RefusingHandler, nullptr);
        pugi::xml_document req;
        ASSERT_TRUE(req.load_string(g_handled.req.c_str()));
        pugi::xml_node level = *c.root ? req.child(c.root) : req;
        EXPECT_STREQ(level.last_child().name(), "UserDefine");
        EXPECT_STREQ(level.last_child().attribute("MsgSeq").value(), c.stamp);
        EXPECT_TRUE(HasLog(4, "xml: " + g_handled.req + "\n")); // the stamped request
    }
    EXPECT_EQ(g_handled.req_result, 0); // last case: a stamp after "Result" does not hide it
}

TEST_F(BusTest, HandlerBuiltAnswersGetNoSkeletonAndNoStamp) {
    char bad[] = "<Request><Open>";
    SpecialPlatformReqAndRspXmlBushandle(bad, 0, kCenPlt2PuWakeRsp, "v1.0.0", 5, RefusingHandler, nullptr);
    EXPECT_EQ(g_handled.calls, 1);
    EXPECT_EQ(g_handled.rsp, "");
    EXPECT_EQ(g_handled.req.find("UserDefine"), std::string::npos);
    char good[] = "<Request/>";
    SpecialPlatformReqAndRspXmlBushandle(good, 0, kCenPlt2PuAIMemberPicSynRsp, "v1.0.0", 6, JsonHandler,
                                         nullptr);
    ASSERT_EQ(SentCount(), 2u);
    EXPECT_EQ(SentMessages()[0].command, uint32_t(kCenPlt2PuWakeRsp));
    EXPECT_EQ(SentMessages()[0].body, "");
    EXPECT_EQ(SentMessages()[1].body, "{\"Result\":0}");
    EXPECT_TRUE(HasLog(4, "\nsend:{\"Result\":0}\n"));
}

} // namespace
} // namespace special_test
