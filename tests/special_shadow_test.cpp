// Trusteeship deletion through the host shadow service, as the platform drives it.
#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <thread>

#include "special_fixture.h"

using namespace special_test;

namespace {

typedef noltDevSDK_Special_DelTrusteeship_S Block;
typedef noltDevSDK_Special_DelTrusteeship_Param_S Unit;

class ShadowTrusteeshipTest : public SpecialFixture {
  protected:
    void SetUp() override {
        SpecialFixture::SetUp();
        ASSERT_EQ(0, Init());
    }
    int Deliver(int type, const std::string &text) {
        return noltdev_host_shadow_deliver(kDomain, "Trusteeship", type, text.c_str(), (int)text.size());
    }
    // The application answers type 9 with a malloc'ed block of these results (channels
    // 1, 2, ...), claiming usNum units and giving len (0: not given).
    void SetResults(std::vector<char> results, unsigned short usNum, int len) {
        SetRuntimeHook(9, [=](noltDevSDK_special_runtime_info *info) {
            Block *b = (Block *)calloc(1, sizeof(Block) + results.size() * sizeof(Unit));
            b->uiVersion = 7;
            b->usNum = usNum;
            for (size_t i = 0; i < results.size(); ++i) {
                b->astUnit[i] = Unit{int(i + 1), "", "", results[i], "", ""};
            }
            info->data = b;
            info->len = len;
            return 0;
        });
    }
    // Reads the key through a buffer of buf_size bytes (0: the default) as
    // "result type version text", the JSON text minified unless asked raw.
    std::string Read(int buf_size, bool raw = false) {
        char out[4096] = {};
        int type = -1;
        uint32_t version = 0;
        int rc = noltdev_host_shadow_read(kDomain, "Trusteeship", buf_size, out, sizeof out, &type, &version);
        if (!raw) {
            cJSON_Minify(out);
        }
        return std::to_string(rc) + " " + std::to_string(type) + " " + std::to_string(version) + " " + out;
    }
};

class ShadowStartUpTest : public SpecialFixture {};

// With resetReportAll the service asks for the key's value on its own thread after init's
// registrations (a report still waiting is not asked twice); without it, never at start.
TEST_F(ShadowStartUpTest, ResetReportAllAsksForTheValueOnTheServicesThread) {
    for (int reset : {0, 1}) {
        SCOPED_TRACE(reset);
        std::mutex mu;
        std::vector<std::thread::id> threads;
        SetRuntimeHook(9, [&](noltDevSDK_special_runtime_info *info) {
            std::lock_guard<std::mutex> lock(mu);
            threads.push_back(std::this_thread::get_id());
            info->data = calloc(1, sizeof(Block));
            return 0;
        });
        int before = noltdev_host_shadow_startup_reports();
        ASSERT_EQ(0, Init(true, reset));
        noltdev_host_shadow_drain();
        size_t runs = static_cast<size_t>(noltdev_host_shadow_startup_reports() - before);
        EXPECT_EQ(reset != 0, runs >= 1 && runs <= 2) << runs;
        std::lock_guard<std::mutex> lock(mu);
        EXPECT_EQ(runs, threads.size());
        EXPECT_EQ(threads.end(), std::find(threads.begin(), threads.end(), std::this_thread::get_id()));
        noltDevSDK_special_fini();
        noltdev_host_kernel_reset(); // the kernel keeps the domain after fini
    }
}

TEST_F(ShadowTrusteeshipTest, InitStartsTheServiceTwiceAndFiniStopsIt) {
    EXPECT_EQ(2, noltdev_host_shadow_reg_count());
    noltDevSDK_special_fini();
    EXPECT_EQ(-1, Deliver(4, R"([{"channel":1,"subserial":"S1","baseserial":"B1"}])"));
}

TEST_F(ShadowTrusteeshipTest, CommandReachesTheApplicationAsOneBlock) {
    SetRecvResult(6, 5);
    EXPECT_EQ(5, Deliver(4, R"([{"channel":3,"subserial":"SUB-0123456789abcdef","baseserial":"B1"},
                                {"channel":4,"subserial":"S2","baseserial":"B2","newbase":"N2","pwd":"key"}])"));
    std::vector<Delivery> d = Deliveries();
    ASSERT_EQ(1u, d.size());
    ASSERT_EQ((std::vector<int>{6, int(sizeof(Block) + 2 * sizeof(Unit))}),
              (std::vector<int>{d[0].type, d[0].len}));
    const Block *b = reinterpret_cast<const Block *>(d[0].bytes.data());
    auto unit = [b](int i) {
        const Unit &u = b->astUnit[i];
        return std::to_string(u.iChannel) + " " + u.acSubserial + " " + u.acBaseserial + " " +
               u.acNewShipSerial + " " + u.acNewShipKey;
    };
    EXPECT_EQ(2, b->usNum);
    EXPECT_EQ("3 SUB-0123456789a B1  ", unit(0)); // serials keep 15 characters
    EXPECT_EQ("4 S2 B2 N2 key", unit(1));
    EXPECT_TRUE(HasLog(1, "Failed to ParseSync_DelTrusteeship while in recv_msg.\n"));
}

TEST_F(ShadowTrusteeshipTest, BadCommandsDeliverNothing) {
    struct Row {
        int type;
        const char *text, *log;
    } rows[] = {
        {4, R"([{"subserial":"S1","baseserial":"B1"},{"subserial":"S2"}])",
         "Failed to find item:baseserial\n"},
        {3, R"([{"subserial":"S1","baseserial":"B1"}])", " pValue type err.\n"},
        {4, R"({"subserial":"S1"})", "Value String is not json array\n"},
        {4, "[]", "Array value, item num is empty\n"},
        {4, "[{", "Failed to bscJSON_Parse:[{\n"},
        {4, R"([{"channel":1,"baseserial":"B1"}])", "Failed to find item:subserial\n"},
        {6, "null", "NULL input param.\n"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(-1, Deliver(row.type, row.text));
        EXPECT_TRUE(HasLog(1, row.log));
    }
    EXPECT_TRUE(Deliveries().empty());
}

// Members of another JSON type than the field's reach the application as empty or 0.
TEST_F(ShadowTrusteeshipTest, MembersOfAnotherTypeAreReadAsEmpty) {
    EXPECT_EQ(0, Deliver(4, R"([{"channel":"7","subserial":5,"baseserial":{"a":1},"pwd":null}])"));
    std::vector<Delivery> d = Deliveries();
    ASSERT_EQ(1u, d.size());
    const Unit &u = reinterpret_cast<const Block *>(d[0].bytes.data())->astUnit[0];
    EXPECT_EQ("0|||",
              std::to_string(u.iChannel) + "|" + u.acSubserial + "|" + u.acBaseserial + "|" + u.acNewShipKey);
    EXPECT_TRUE(HasLog(1, "item:subserial is not a string\n"));
}

TEST_F(ShadowTrusteeshipTest, WithoutCallbacksNothingIsDeliveredOrGenerated) {
    noltDevSDK_special_fini();
    noltdev_host_kernel_reset();
    ASSERT_EQ(0, Init(false));
    EXPECT_EQ(-1, Deliver(4, R"([{"channel":1,"subserial":"S1","baseserial":"B1"}])"));
    EXPECT_TRUE(HasLog(1, "Error, Special domain:recv_msg is NULL.\n"));
    EXPECT_EQ("-1", Read(0).substr(0, 2));
    EXPECT_TRUE(HasLog(1, "Error, Special domain:get_runtime_info is NULL.\n"));
}

TEST_F(ShadowTrusteeshipTest, ResultsGoBackAsAnArray) {
    struct Row {
        std::vector<char> results;
        unsigned short usNum;
        int buf_size;
        std::string read;
    } rows[] = {
        {{0, 1, static_cast<char>(-1)},
         3,
         0,
         R"(0 4 7 [{"channel":1,"result":0},{"channel":2,"result":-1},{"channel":3,"result":-1}])"},
        {{}, 0, 0, R"(0 4 7 [{"channel":0}])"},
        {{}, 0, 8, "0 6 7 "}, // too small a buffer: the value is left as it was
    };
    for (const Row &row : rows) {
        SetResults(row.results, row.usNum, 0);
        EXPECT_EQ(row.read, Read(row.buf_size));
    }
    EXPECT_EQ("0 4 7 [{\n\t\t\"channel\":\t0\n\t}]", Read(0, true)); // printed formatted
    SetRuntimeHook(9, [](noltDevSDK_special_runtime_info *info) {
        info->data = malloc(64); // refused, yet the block is the module's to free
        return NOLTDEVSDK_SPECIAL_CODE_FAIL;
    });
    EXPECT_EQ(std::to_string(NOLTDEVSDK_SPECIAL_CODE_FAIL) + " 6 0 ", Read(0));
    SetRuntimeHook(9, [](noltDevSDK_special_runtime_info *info) {
        info->data = nullptr; // a zero answer without its block
        return 0;
    });
    EXPECT_EQ("-1 6 0 ", Read(0));
    EXPECT_TRUE(HasLog(1, "get_runtime_info type:9 gave no deletion block\n"));
}

TEST_F(ShadowTrusteeshipTest, EveryCountedUnitIsReportedWhateverLenSays) {
    // len is the application's to set as it likes: none of these may cut the units
    const int exact = int(sizeof(Block) + 2 * sizeof(Unit));
    for (int len : {0, 1, int(sizeof(Block)), exact}) {
        SetResults({0, 3}, 2, len);
        EXPECT_EQ(R"(0 4 7 [{"channel":1,"result":0},{"channel":2,"result":-1}])", Read(0)) << "len " << len;
    }
}

} // namespace
