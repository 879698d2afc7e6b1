// The host shadow service with a fake domain: registration, delivering platform values,
// reading generated values, and persistence under the cache directory.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "noltDevSDK_shadow.h"
#include "noltdev_host.h"

namespace {

constexpr int kDomain = 3999;

// What the fake domain's callbacks saw and answer.
struct Fake {
    noltDevSDK_Shadow_value_t seen{};
    std::string seen_text;
    bool param_zeroed = false;
    int parse_rc = 0;
    std::string gen_text = "[{\"channel\":0}]";
    int gen_in_length = 0;
    int gen_in_type = 0;
} g_fake;

int ParseSync(const noltDevSDK_Shadow_value_t *value, noltDevSDK_Shadow_ParseSync_Param_S *param) {
    g_fake.seen = *value;
    bool text = value->type >= shd_data_type_string && value->type <= shd_data_type_object;
    g_fake.seen_text = text ? static_cast<const char *>(value->value) : "";
    g_fake.param_zeroed = param->pres == nullptr && param->pdomain == nullptr && param->pkey == nullptr;
    return g_fake.parse_rc;
}

// Writes the text when it fits, as a domain does; leaves the value alone otherwise.
int GenValue(noltDevSDK_Shadow_value_t *value, noltDevSDK_Shadow_GenValue_Param_S *param) {
    g_fake.gen_in_length = value->length;
    g_fake.gen_in_type = value->type;
    param->uiVersion = 7;
    if (g_fake.gen_text.size() <= static_cast<size_t>(value->length)) {
        std::memcpy(value->value, g_fake.gen_text.data(), g_fake.gen_text.size());
        value->type = shd_data_type_array;
        value->length = static_cast<int>(g_fake.gen_text.size());
    }
    return 0;
}

int Register(const char *key) {
    noltDevSDK_Shadow_Service_S service{};
    std::strncpy(service.acKey, key, sizeof service.acKey - 1);
    service.parse_sync = &ParseSync;
    service.gen_value_JsStr = &GenValue;
    noltDevSDK_Shadow_DomainReg_S reg{};
    reg.usNum = 1;
    reg.pstSrvList = &service;
    return noltDevSDK_Shadow_DomainReg(kDomain, &reg);
}

class ShadowTest : public ::testing::Test {
  protected:
    void SetUp() override {
        noltdev_host_shadow_reset();
        noltdev_host_shadow_set_cache_dir(nullptr);
        g_fake = Fake{};
    }
};

TEST_F(ShadowTest, Registration) {
    noltDevSDK_Shadow_DomainReg_S empty{};
    EXPECT_EQ(-1, noltDevSDK_Shadow_DomainReg(kDomain, nullptr));
    EXPECT_EQ(-1, noltDevSDK_Shadow_DomainReg(kDomain, &empty));
    EXPECT_EQ(0, Register("Trusteeship"));
    EXPECT_EQ(0, Register("Other")); // replaces the domain's table
    EXPECT_EQ(2, noltdev_host_shadow_reg_count());
    EXPECT_EQ(-1, noltdev_host_shadow_deliver(kDomain, "Trusteeship", shd_data_type_array, "[]", -1));
    EXPECT_EQ(0, noltDevSDK_Shadow_DomainDereg(kDomain));
    EXPECT_EQ(-1, noltDevSDK_Shadow_DomainDereg(kDomain));
    EXPECT_EQ(-1, noltdev_host_shadow_deliver(kDomain, "Other", shd_data_type_array, "[]", -1));
}

TEST_F(ShadowTest, DeliverBuildsTheValue) {
    struct Case {
        int type;
        const char *text;
        int length;
        int rc;
        int want_length;
        std::string want_text;
    } cases[] = {
        {shd_data_type_array, "[1,2]", -1, 0, 5, "[1,2]"},
        {shd_data_type_string, "abcdef", 3, 0, 3, "abc"},
        {shd_data_type_object, "{}", 99, 0, 2, "{}"},
        {shd_data_type_null, nullptr, 0, 0, 0, ""},
        {9, "[]", -1, -1, 0, ""},
    };
    ASSERT_EQ(0, Register("Trusteeship"));
    g_fake.parse_rc = 5;
    for (const Case &c : cases) {
        SCOPED_TRACE(c.type);
        g_fake.seen = {};
        int want_rc = c.rc == 0 ? 5 : c.rc;
        EXPECT_EQ(want_rc, noltdev_host_shadow_deliver(kDomain, "Trusteeship", c.type, c.text, c.length));
        if (c.rc == 0) {
            EXPECT_EQ(c.type, g_fake.seen.type);
            EXPECT_EQ(c.want_length, g_fake.seen.length);
            EXPECT_EQ(c.want_text, g_fake.seen_text);
            EXPECT_TRUE(g_fake.param_zeroed);
        }
    }
    EXPECT_EQ(5, noltdev_host_shadow_deliver(kDomain, "Trusteeship", shd_data_type_int, "42", -1));
    EXPECT_EQ(42, g_fake.seen.value_int);
    EXPECT_EQ(-1, noltdev_host_shadow_deliver(kDomain, "Missing", shd_data_type_array, "[]", -1));
    EXPECT_EQ(-1, noltdev_host_shadow_deliver(1, "Trusteeship", shd_data_type_array, "[]", -1));
}

TEST_F(ShadowTest, ReadCopiesTheGeneratedText) {
    struct Case {
        int buf_size, out_size;
        int want_in_length, want_type;
        std::string want;
    } cases[] = {
        {0, 64, 4096, shd_data_type_array, "[{\"channel\":0}]"},
        {15, 64, 15, shd_data_type_array, "[{\"channel\":0}]"},
        {14, 64, 14, shd_data_type_null, ""}, // too short: nothing generated
        {0, 4, 4096, shd_data_type_array, "[{\""},
    };
    ASSERT_EQ(0, Register("Trusteeship"));
    for (const Case &c : cases) {
        SCOPED_TRACE(c.buf_size * 100 + c.out_size);
        char out[64];
        int type = -1;
        uint32_t version = 0;
        EXPECT_EQ(0, noltdev_host_shadow_read(kDomain, "Trusteeship", c.buf_size, out, c.out_size, &type,
                                              &version));
        EXPECT_EQ(c.want_in_length, g_fake.gen_in_length);
        EXPECT_EQ(shd_data_type_null, g_fake.gen_in_type);
        EXPECT_EQ(c.want_type, type);
        EXPECT_EQ(7u, version);
        EXPECT_EQ(c.want, out);
    }
    char out[8] = "x";
    EXPECT_EQ(-1, noltdev_host_shadow_read(kDomain, "Missing", 0, out, sizeof out, nullptr, nullptr));
    EXPECT_STREQ("", out);
}

std::string Slurp(const std::filesystem::path &path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

TEST_F(ShadowTest, ValuesPersistUnderTheCacheDirectory) {
    std::filesystem::path dir = std::filesystem::path(testing::TempDir()) / "noltdev_shadow_cache";
    std::filesystem::remove_all(dir);
    noltdev_host_shadow_set_cache_dir(dir.c_str());
    ASSERT_EQ(0, Register("a/../b"));
    noltdev_host_shadow_deliver(kDomain, "a/../b", shd_data_type_array, "[3]", -1);
    noltdev_host_shadow_read(kDomain, "a/../b", 0, nullptr, 0, nullptr, nullptr);
    EXPECT_EQ("[3]", Slurp(dir / "3999.a____b.desired"));
    EXPECT_EQ(g_fake.gen_text, Slurp(dir / "3999.a____b.reported"));
    std::filesystem::remove_all(dir);
}

} // namespace
