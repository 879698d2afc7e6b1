// The public header compiles as C99 and lays the records out as the module does.
#include <gtest/gtest.h>

#include <cstddef>

#include "noltDevSDK_special_def.h"

extern "C" int special_c_record_sizes(size_t *out, int max);
extern "C" int special_c_init_info_ok(void);

TEST(PublicHeader, CLayoutMatchesCpp) {
    const size_t expected[] = {
#define SPECIAL_RECORD(expr) expr,
#include "public_records.inc"
#undef SPECIAL_RECORD
    };
    size_t got[32] = {};
    int n = special_c_record_sizes(got, 32);
    ASSERT_EQ(n, static_cast<int>(sizeof expected / sizeof expected[0]));
    for (int i = 0; i < n; ++i) {
        EXPECT_EQ(got[i], expected[i]) << "record " << i;
    }
}

TEST(PublicHeader, CodesAreNegativeAndCallbacksUsableFromC) {
    EXPECT_TRUE(special_c_init_info_ok());
    const int codes[] = {NOLTDEVSDK_SPECIAL_CODE_FAIL, NOLTDEVSDK_SPECIAL_CODE_NOT_INITED,
                         NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR,
                         NOLTDEVSDK_SPECIAL_CODE_VOICE_COUNT_LIMITED};
    for (int code : codes) {
        EXPECT_LT(code, 0);
    }
    EXPECT_EQ(static_cast<unsigned>(NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR), 0xD3999020u);
}
