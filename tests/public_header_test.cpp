// The public header compiles as C99 and lays the records out as the module does.
#include <gtest/gtest.h>

#include <cstddef>

#include "noltDevSDK_special_def.h"

extern "C" int special_c_record_sizes(size_t *out, int max);
extern "C" int special_c_init_info_ok(void);

TEST(PublicHeader, CLayoutMatchesCpp) {
    const size_t expected[] = {
        sizeof(noltDevSDK_special_msg_to_dev),
        sizeof(noltDevSDK_special_trans_cmd_msg),
        sizeof(noltDevSDK_special_flow_counting_cfg),
        sizeof(noltDevSDK_special_operate_custom_voice),
        sizeof(noltDevSDK_special_voddns_dev_info),
        sizeof(noltDevSDK_special_plan),
        sizeof(noltDevSDK_special_custom_voice_infos),
        sizeof(noltDevSDK_Special_DelTrusteeship_Param_S),
        sizeof(noltDevSDK_Special_DelTrusteeship_S),
        offsetof(noltDevSDK_Special_DelTrusteeship_S, astUnit),
        sizeof(noltDevSDK_special_voddns_local_mapped_infos),
        sizeof(noltDevSDK_special_associated_device_conn_status),
        sizeof(noltDevSDK_special_4G_Info_S),
        sizeof(noltDevSDK_special_flow_counting_seg_count),
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
