// The device's own requests and the operations the application starts.
#include <climits>
#include <cmath>
#include <sstream>

#include "noltdev_sdk_kernel_error.h"
#include "special_fixture.h"

using namespace special_test;

extern "C" int special_c_send_msg_type(int type);

namespace {

// The request element as pugixml prints it raw, whatever the sender's printing.
std::string Raw(pugi::xml_node node) {
    std::ostringstream out;
    node.print(out, "", pugi::format_raw);
    return out.str();
}

int Send(int type, void *record) {
    noltDevSDK_special_msg msg = {static_cast<NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_TYPE_E>(type), record};
    return noltDevSDK_special_send_msg(&msg);
}

class RequestsTest : public SpecialFixture {
  protected:
    void SetUp() override {
        SpecialFixture::SetUp();
        noltdev_host_set_serial("DS1234");
        ASSERT_EQ(0, Init());
    }
    noltDevSDK_special_send_verification_code code_ = {"123456"};
    noltDevSDK_special_query_voddns_mapped_port domain_ = {"cam.example.net"};
    noltDevSDK_special_4G_flow_info rows_[2] = {{-2.7f, 1, "8986001", "3554001"},
                                                {5.9f, 2, "8986002", "3554002"}};
    noltDevSDK_special_4G_flow_info_page page_ = {2, rows_};
    noltDevSDK_special_flow_counting_seg_count flow_ = {1, {{3, 2, 0, 1700000000}}};
    // Sends the five requests in the order unbind, code, 4G, domain, flow count.
    std::vector<int> SendAll() {
        return {Send(0, nullptr), Send(1, &code_), Send(3, &page_), Send(2, &domain_),
                noltDevSDK_special_report_flow_counting(&flow_)};
    }
};

TEST_F(RequestsTest, EachRequestCarriesItsCommandNumberAndBody) {
    EXPECT_EQ(std::vector<int>(5, 0), SendAll());
    std::vector<Sent> sent = SentMessages();
    ASSERT_EQ(5u, sent.size());
    const uint32_t first = sent[0].seq; // numbered requests follow on; the 4G report carries 0
    struct Row {
        uint32_t command, seq;
        std::string body;
    } rows[] = {
        {kPu2CenPltUnBindUserReq, first, "<Request/>"},
        {kPu2CenPltSendVerificationCodeReq, first + 1,
         "<Request><Authorization/><DevSerial>DS1234</DevSerial>"
         "<VerificationCode>123456</VerificationCode></Request>"},
        {kPu2CenPltReport4GFlowInfoReq, 0,
         "<Request><DevSerial>DS1234</DevSerial><Type>4GFlow</Type>"
         "<Flow Incr=\"-2\" ICCID=\"8986001\" IMEI=\"3554001\" Type=\"1\"/>"
         "<Flow Incr=\"5\" ICCID=\"8986002\" IMEI=\"3554002\" Type=\"2\"/></Request>"},
        {kPu2CenPltQueryDevInfoByDomainReq, first + 2,
         "<Request><Authorization/><DevSerial>DS1234</DevSerial><Domain>cam.example.net</Domain></Request>"},
        {kPu2CenPltReportFlowCountReq, first + 3,
         "<Request><DevSerial>DS1234</DevSerial><Authorization/><Type>FlowCount</Type><Params>"
         "<Data In=\"3\" Out=\"2\" Begin=\"197001010000\" End=\"202311142213\"/></Params></Request>"},
    };
    for (size_t i = 0; i < 5; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ((std::vector<uint32_t>{kDomain, rows[i].command, rows[i].seq, 0}),
                  (std::vector<uint32_t>{sent[i].domain, sent[i].command, sent[i].seq, sent[i].response}));
        EXPECT_EQ("v1.0.0", sent[i].version);
        EXPECT_EQ(rows[i].body, Raw(sent[i].Node("Request")));
    }
}

TEST_F(RequestsTest, OfflineRefusesOnlyThe4GReport) {
    noltdev_host_set_registered(0);
    EXPECT_EQ((std::vector<int>{0, 0, NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR, 0, 0}), SendAll());
    EXPECT_TRUE(HasLog(1, "dev is Offline\n"));
    std::vector<uint32_t> commands;
    for (const Sent &s : SentMessages()) {
        commands.push_back(s.command);
    }
    EXPECT_EQ((std::vector<uint32_t>{kPu2CenPltUnBindUserReq, kPu2CenPltSendVerificationCodeReq,
                                     kPu2CenPltQueryDevInfoByDomainReq, kPu2CenPltReportFlowCountReq}),
              commands);
}

TEST_F(RequestsTest, FlowCountNeedsASegmentAndReadsAtMostTen) {
    flow_.seg_count = 0;
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM, noltDevSDK_special_report_flow_counting(&flow_));
    EXPECT_TRUE(HasLog(1, "ThirdParty Transfer Data Param Error \n"));
    EXPECT_EQ(0u, SentCount());
    flow_.seg_count = 11;
    EXPECT_EQ(0, noltDevSDK_special_report_flow_counting(&flow_));
    ASSERT_EQ(1u, SentCount());
    EXPECT_EQ(10u, SentMessages()[0].xml->select_nodes("/Request/Params/Data").size());
}

TEST_F(RequestsTest, TrusteeshipReportPassesItsResultOn) {
    EXPECT_EQ(-1, noltDevSDK_special_report_trusteeship()); // the application cannot answer
    SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, noltDevSDK_Trusteeship{"BASE01"});
    SetSendResult(NOLTDEV_SDK_KERNEL_ERR_SEND);
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR, noltDevSDK_special_report_trusteeship());
    ASSERT_EQ(1u, SentCount());
    EXPECT_EQ(uint32_t(kPu2CenPltReportTrusteeshipReq), SentMessages()[0].command);
}

TEST_F(RequestsTest, TypesOutsideTheRequestsAreNotSupportedFromC) {
    // a C caller can store any int in msg_type; none of these may send or crash
    for (int type : {-1, int(NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_COUNT), 99, INT_MAX, INT_MIN}) {
        EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT, special_c_send_msg_type(type)) << type;
    }
    EXPECT_EQ(0u, SentCount());
    EXPECT_EQ(0, special_c_send_msg_type(NOLTDEVSDK_SPECIAL_UNBIND_USER)); // the same path works
    EXPECT_EQ(1u, SentCount());
}

TEST_F(RequestsTest, ResultMappingInitGuardAndRawPassThrough) {
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT, Send(NOLTDEVSDK_SPECIAL_MSG_TO_SERVER_COUNT, nullptr));
    EXPECT_EQ(-1, noltDevSDK_special_post_event(nullptr));
    SetSendResult(NOLTDEV_SDK_KERNEL_ERR_SEND);
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR, Send(1, &code_)); // refused by the kernel
    char body[] = "<Response><Result>0</Result></Response>tail";
    noltDevSDK_special_trans_cmd_msg msg = {body, 39, 0x1234, 1, 77};
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR, noltDevSDK_special_send_msg_to_platform(&msg));
    SetSendResult(0);
    noltDevSDK_special_fini();
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_NOT_INITED, Send(0, nullptr));
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_NOT_INITED, noltDevSDK_special_report_flow_counting(&flow_));
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_NOT_INITED, noltDevSDK_special_report_trusteeship());
    EXPECT_EQ(0, noltDevSDK_special_send_msg_to_platform(&msg)); // raw messages need no init
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM, noltDevSDK_special_send_msg_to_platform(nullptr));
    std::vector<Sent> sent = SentMessages();
    ASSERT_EQ(3u, sent.size());
    EXPECT_EQ((std::vector<uint32_t>{kDomain, 0x1234, 77, 1}),
              (std::vector<uint32_t>{sent[2].domain, sent[2].command, sent[2].seq, sent[2].response}));
    EXPECT_EQ("v1.0.0|" + std::string(body, 39), sent[2].version + "|" + sent[2].body);
}

// Records the application fills carelessly: numbers no int holds, texts without their
// terminator, rows announced but absent. Each gets a defined result, never a stray read.
TEST_F(RequestsTest, CarelessRecordsGetADefinedResult) {
    noltDevSDK_special_4G_flow_info rows[4] = {
        {NAN, 1, "", ""}, {3e9f, 2, "", ""}, {-3e9f, 3, "", ""}, {-2147483648.0f, 4, "", ""}};
    std::memset(rows[0].ICCID, 'C', sizeof rows[0].ICCID);
    std::memset(rows[0].IMEI, 'M', sizeof rows[0].IMEI);
    noltDevSDK_special_4G_flow_info_page page = {4, rows};
    std::memset(code_.code, '7', sizeof code_.code);
    EXPECT_EQ(0, Send(3, &page));
    EXPECT_EQ(0, Send(1, &code_));
    std::vector<Sent> sent = SentMessages();
    ASSERT_EQ(2u, sent.size());
    pugi::xpath_node_set flows = sent[0].xml->select_nodes("/Request/Flow");
    std::string incr;
    for (const pugi::xpath_node &n : flows) {
        incr += std::string(n.node().attribute("Incr").value()) + " ";
    }
    EXPECT_EQ("0 2147483647 -2147483648 -2147483648 ", incr);
    EXPECT_EQ(std::string(32, 'C') + "|" + std::string(32, 'M'),
              sent[0].Attr("Request/Flow", "ICCID") + "|" + sent[0].Attr("Request/Flow", "IMEI"));
    EXPECT_EQ(std::string(128, '7'), sent[1].Text("Request/VerificationCode"));

    ClearSent();
    noltDevSDK_special_4G_flow_info_page none = {0, nullptr}, no_rows = {2, nullptr};
    EXPECT_EQ(0, Send(3, &none)); // nothing announced, nothing read: the report goes out bare
    ASSERT_EQ(1u, SentCount());
    EXPECT_TRUE(SentMessages()[0].xml->select_nodes("/Request/Flow").empty());
    ClearSent();
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR, Send(3, &no_rows));
    EXPECT_TRUE(HasLog(1, "4G flow page has 2 rows but no row array\n"));
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR, Send(3, nullptr));
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM, noltDevSDK_special_report_flow_counting(nullptr));
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM, noltDevSDK_special_send_msg(nullptr));
    EXPECT_TRUE(HasLog(1, "noltDevSDK_special_send_msg: NULL msg\n"));
    char body[] = "x";
    noltDevSDK_special_trans_cmd_msg negative = {body, -1, 0x1234, 0, 1}, absent = {nullptr, 5, 0x1234, 0, 1};
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM, noltDevSDK_special_send_msg_to_platform(&negative));
    EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM, noltDevSDK_special_send_msg_to_platform(&absent));
    EXPECT_TRUE(HasLog(1, "send_msg_to_platform: no body of 5 bytes\n"));
    EXPECT_EQ(0u, SentCount());
}

// Times a 32-bit device cannot hold: a 64-bit host must still keep the 13-byte text.
TEST_F(RequestsTest, CalendarTimesBeyondTheTextAreCut) {
    if (sizeof(time_t) < 8) {
        GTEST_SKIP() << "a 32-bit time_t holds no such time";
    }
    flow_ = {2, {{1, 1, static_cast<time_t>(253402300800LL), static_cast<time_t>(1LL << 62)}}};
    flow_.seg[1] = flow_.seg[0];
    EXPECT_EQ(0, noltDevSDK_special_report_flow_counting(&flow_));
    ASSERT_EQ(1u, SentCount());
    Sent s = SentMessages()[0];
    EXPECT_EQ("100000101000|",
              s.Attr("Request/Params/Data", "Begin") + "|" + s.Attr("Request/Params/Data", "End"));
    EXPECT_EQ(4u, CountLog("ConvertCalendarEx time out of range\n"));
}

} // namespace
