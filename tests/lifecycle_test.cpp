// Start-up and shut-down of the module: the init flag, the stored callbacks and the
// domain's registration with the kernel.
#include "app/special_app.h"
#include "noltDevSDK_report_status.h"
#include "noltdev_sdk_kernel_error.h"
#include "special_fixture.h"

namespace special_test {
namespace {

using LifecycleTest = SpecialFixture;

TEST_F(LifecycleTest, SecondInitFailsWithoutALogLine) {
    ASSERT_EQ(Init(), 0);
    ClearLogs();
    EXPECT_EQ(Init(), NOLTDEVSDK_SPECIAL_CODE_FAIL);
    EXPECT_TRUE(Logs().empty());
    EXPECT_TRUE(SpecialAppInited());
}

TEST_F(LifecycleTest, NullInfoKeepsTheFlagUntilFini) {
    EXPECT_EQ(noltDevSDK_special_init(nullptr), NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM);
    EXPECT_TRUE(HasLog(1, "noltDevSDK_special_init param is error\n"));
    EXPECT_TRUE(SpecialAppInited());
    EXPECT_EQ(noltdev_host_domain_loaded(kDomain), 0);
    EXPECT_EQ(Init(), NOLTDEVSDK_SPECIAL_CODE_FAIL);
    EXPECT_EQ(noltDevSDK_special_fini(), 0);
    EXPECT_EQ(Init(), 0);
    EXPECT_EQ(noltdev_host_domain_loaded(kDomain), 1);
}

TEST_F(LifecycleTest, RefusedDomainFailsInitBeforeAnyRedirect) {
    noltdev_host_set_extend_load_result(NOLTDEV_SDK_KERNEL_ERR_REFUSED);
    EXPECT_EQ(Init(), NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL);
    EXPECT_FALSE(SpecialAppInited());
    EXPECT_TRUE(HasLog(1, "microkernel load special doamin error\n"));
    EXPECT_EQ(noltdev_host_redirect_count(), 0);
    EXPECT_EQ(noltdev_host_timer_init_count(), 0);
    noltdev_host_set_extend_load_result(0);
    EXPECT_EQ(Init(), 0); // the flag went back to 0
}

int Unchanged() {
    return 0;
}
int Report(int) {
    return 0;
}

TEST_F(LifecycleTest, FiniTwiceKeepsTheCallbacksAndCallsNothing) {
    EXPECT_EQ(noltDevSDK_special_fini(), 0);
    ASSERT_EQ(Init(), 0);
    ASSERT_TRUE(SpecialAppHasRecvMsg(nullptr));
    EXPECT_EQ(noltDevSDK_special_fini(), 0);
    EXPECT_FALSE(SpecialAppInited());
    // an item registered now survives the second fini, which would forget it
    noltDevSDK_report_status_info item{};
    item.status_value = NOLTDEVSDK_ReportSpecialSwitchEnableFlow;
    item.status_is_changed = Unchanged;
    item.report_status = Report;
    noltDevSDK_report_status_register(&item);
    ClearLogs();
    EXPECT_EQ(noltDevSDK_special_fini(), 0);
    uint32_t ids[4];
    EXPECT_EQ(noltdev_host_report_registered(ids, 4), 1);
    EXPECT_TRUE(Logs().empty());
    EXPECT_TRUE(SpecialAppHasRecvMsg(nullptr));
    EXPECT_TRUE(SpecialAppHasRuntimeInfo(nullptr));
}

TEST_F(LifecycleTest, InitAfterFiniNeedsTheKernelToDropTheDomain) {
    ASSERT_EQ(Init(), 0);
    EXPECT_EQ(noltDevSDK_special_fini(), 0);
    EXPECT_EQ(noltdev_host_domain_loaded(kDomain), 1); // fini leaves the domain loaded
    EXPECT_EQ(Init(), NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL);
    noltdev_host_kernel_reset();
    EXPECT_EQ(Init(), 0);
}

} // namespace
} // namespace special_test
