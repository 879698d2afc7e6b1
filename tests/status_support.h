// Helpers of the status-item suites: scripted answers, declarative checks of a sent
// report, and a fixture with clocks the tests drive.
#pragma once

#include <string>
#include <vector>

#include "bus/special_clock.h"
#include "special_fixture.h"

namespace special_test {

using Hook = std::function<int(noltDevSDK_special_runtime_info *)>;
using Check = std::function<void(const Sent &)>;

template <class T> std::vector<unsigned char> Bytes(const T &value) {
    const unsigned char *p = reinterpret_cast<const unsigned char *>(&value);
    return std::vector<unsigned char>(p, p + sizeof value);
}

// A count-first list as the module offers it: the count, then room for 8 entries.
template <class E> struct ChildList {
    int num;
    E entries[8];
};

// Answers with these bytes (at most len of them).
inline Hook Answer(std::vector<unsigned char> bytes) {
    return [bytes](noltDevSDK_special_runtime_info *info) {
        std::memcpy(info->data, bytes.data(), std::min(bytes.size(), static_cast<size_t>(info->len)));
        return 0;
    };
}

// Answers one switch type on channel 0; any other question fails.
inline Hook SwitchAnswer(int type, int enable) {
    return [type, enable](noltDevSDK_special_runtime_info *info) {
        auto *sw = static_cast<noltDevSDK_special_switch_enable *>(info->data);
        if (sw->type != type || sw->channel != 0) {
            return static_cast<int>(NOLTDEVSDK_SPECIAL_CODE_FAIL);
        }
        sw->enable = enable;
        return 0;
    };
}

inline Check All(std::vector<Check> checks) {
    return [checks](const Sent &s) {
        for (const Check &c : checks) {
            c(s);
        }
    };
}
inline Check Attr(std::string path, std::string name, std::string want) {
    return [=](const Sent &s) { EXPECT_EQ(want, s.Attr(path, name.c_str())) << path << " @" << name; };
}
// The text of an element, "<none>" when there is no such element.
inline Check Text(std::string path, std::string want) {
    return [=](const Sent &s) { EXPECT_EQ(want, s.Node(path) ? s.Text(path) : "<none>") << path; };
}
inline Check Status(std::string type, std::string value) {
    return All({Attr("Request/Status", "Type", type), Attr("Request/Status", "Value", value)});
}
// The attribute of every child element of that name, joined by blanks.
inline Check Children(std::string path, std::string child, std::string attr, std::string want) {
    return [=](const Sent &s) {
        std::string got;
        for (pugi::xml_node n = s.Node(path).child(child.c_str()); n; n = n.next_sibling(child.c_str())) {
            got += (got.empty() ? "" : " ") + std::string(n.attribute(attr.c_str()).value());
        }
        EXPECT_EQ(want, got) << path << "/" << child << " @" << attr;
    };
}

// A JSON value as text: numbers as integers, strings as they are, arrays as "[size]".
// key "" is the value itself, "name" a member, "[i]name" a member of element i.
inline std::string JsonText(const cJSON *json, const std::string &key) {
    const cJSON *item = json;
    std::string member = key;
    if (!key.empty() && key[0] == '[') {
        item = cJSON_GetArrayItem(json, std::stoi(key.substr(1)));
        member = key.substr(key.find(']') + 1);
    }
    if (!member.empty()) {
        item = cJSON_GetObjectItemCaseSensitive(item, member.c_str());
    }
    if (cJSON_IsNumber(item)) {
        return std::to_string(static_cast<long long>(item->valuedouble));
    }
    if (cJSON_IsString(item)) {
        return item->valuestring;
    }
    if (cJSON_IsArray(item)) {
        return "[" + std::to_string(cJSON_GetArraySize(item)) + "]";
    }
    return "<absent>";
}

// A member of the JSON carried in the "Value" of "Status" of that "Type".
inline Check ValueJson(std::string type, std::string key, std::string want) {
    return [=](const Sent &s) {
        EXPECT_EQ(type, s.Attr("Request/Status", "Type"));
        std::shared_ptr<cJSON> json(cJSON_Parse(s.Attr("Request/Status", "Value").c_str()), cJSON_Delete);
        EXPECT_EQ(want, JsonText(json.get(), key)) << type << " " << key;
    };
}

// A member of a JSON text sent as the whole document.
inline Check DocJson(std::string key, std::string want) {
    return [=](const Sent &s) {
        EXPECT_TRUE(s.xml == nullptr); // JSON where other commands carry XML
        EXPECT_EQ(want, JsonText(s.json.get(), key)) << key;
    };
}

class StatusTest : public SpecialFixture {
  protected:
    void SetUp() override {
        SpecialFixture::SetUp();
        wall_ = 1000000;
        mono_ = {1000, 0};
    }
    void TearDown() override {
        SpecialSetClock(nullptr, nullptr);
        SpecialFixture::TearDown();
    }
    // Runs one poll and returns what it sent.
    std::vector<Sent> PollSent() {
        ClearSent();
        Poll();
        return SentMessages();
    }
    // The module reads these clocks from here on.
    void UseTestClocks() { SpecialSetClock(&TestWall, &TestMonotonic); }

    static time_t wall_;
    static timespec mono_;

  private:
    static time_t TestWall() { return wall_; }
    static void TestMonotonic(timespec *ts) { *ts = mono_; }
};

inline time_t StatusTest::wall_;
inline timespec StatusTest::mono_;

template <class P> std::string ParamName(const ::testing::TestParamInfo<P> &info) {
    return info.param.name;
}

} // namespace special_test
