// The one way into the application: the envelope each callback receives, the block a
// runtime query hands back, and no call at all when a callback is missing. Also the
// capacities the module derives from the records, against the platform's numbers.
#include <cstdlib>

#include "app/special_app.h"
#include "app/special_capacity.h"
#include "special_fixture.h"

namespace special_test {
namespace {

class AppEnvelope : public SpecialFixture {
  protected:
    void SetUp() override {
        SpecialFixture::SetUp();
        ASSERT_EQ(0, Init());
    }
};

TEST_F(AppEnvelope, RecvMsgGetsTypeRecordAndLenAndItsAnswerComesBack) {
    struct Row {
        int type;
        int rc;
    } rows[] = {{NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP, 0}, {NOLTDEVSDK_SPECIAL_ON_DELAY_SLEEP, -9}};
    for (const Row &row : rows) {
        SetRecvResult(row.type, row.rc);
        noltDevSDK_special_delay_sleep_type record = {3, 4};
        EXPECT_EQ(row.rc, SpecialAppRecvMsg(row.type, &record, sizeof record, nullptr)) << row.type;
        ASSERT_FALSE(Deliveries().empty());
        const Delivery d = Deliveries().back();
        EXPECT_EQ(row.type, d.type);
        EXPECT_EQ(static_cast<int>(sizeof record), d.len);
        EXPECT_EQ(3, d.As<noltDevSDK_special_delay_sleep_type>().channel);
    }
}

TEST_F(AppEnvelope, RuntimeQueryFillsTheRecordOrHandsBackTheApplicationsBlock) {
    SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, noltDevSDK_Trusteeship{"BASE01"});
    noltDevSDK_Trusteeship trusteeship = {};
    void *record = &trusteeship;
    EXPECT_EQ(0, SpecialAppRuntimeInfo(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, &record, sizeof trusteeship,
                                       nullptr));
    EXPECT_EQ(&trusteeship, record);
    EXPECT_STREQ("BASE01", trusteeship.subserial);

    // type 9 starts from no block; what the application allocated comes back to free
    void *allocated = std::malloc(8);
    SetRuntimeHook(NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP,
                   [allocated](noltDevSDK_special_runtime_info *info) {
                       EXPECT_EQ(nullptr, info->data);
                       EXPECT_EQ(0, info->len);
                       info->data = allocated;
                       return 0;
                   });
    void *block = nullptr;
    ASSERT_EQ(0, SpecialAppRuntimeInfo(NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP, &block, 0, nullptr));
    EXPECT_EQ(allocated, block);
    std::free(block);
}

TEST_F(AppEnvelope, MissingCallbacksAreNotCalled) {
    noltDevSDK_special_fini();
    noltdev_host_kernel_reset();
    ASSERT_EQ(0, Init(false));
    noltDevSDK_wake wake = {};
    void *record = &wake;
    ClearLogs();
    // nothing is called: -1, and the caller's line (when it gives one) says what was missing
    EXPECT_FALSE(SpecialAppHasRecvMsg(nullptr));
    EXPECT_EQ(-1, SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_WAKE, &wake, sizeof wake, "no recv\n"));
    EXPECT_EQ(-1,
              SpecialAppRuntimeInfo(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, &record, sizeof wake, nullptr));
    EXPECT_EQ(&wake, record);
    EXPECT_TRUE(Deliveries().empty());
    EXPECT_TRUE(HasLog(1, "no recv\n"));
    EXPECT_EQ(1u, Logs().size());
}

// The capacities the module walks are the ones the platform's documents give.
TEST(Capacity, DerivedFromTheRecordsAsThePlatformCountsThem) {
    EXPECT_EQ(7, kSpecialPlanDays);
    EXPECT_EQ(5, kSpecialPlanSegments);
    EXPECT_EQ(16, kSpecialVoices);
    EXPECT_EQ(16, kSpecialMappedPorts);
}

} // namespace
} // namespace special_test
