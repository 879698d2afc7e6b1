// An integer member prints exactly as a cJSON number member of the same value, in
// formatted and compact text, inside objects and arrays.
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "bus/special_json.h"

namespace {

// {"a": value, "b": [{"c": value}]} built with number members or with integer members.
std::string Print(int value, bool as_int, bool formatted) {
    bscJSON *root = bscJSON_CreateObject();
    bscJSON *array = bscJSON_CreateArray();
    bscJSON *inner = bscJSON_CreateObject();
    if (as_int) {
        SpecialJsonAddInt(root, "a", value);
        SpecialJsonAddInt(inner, "c", value);
    } else {
        bscJSON_AddNumberToObject(root, "a", value);
        bscJSON_AddNumberToObject(inner, "c", value);
    }
    bscJSON_AddItemToArray(array, inner);
    bscJSON_AddItemToObject(root, "b", array);
    char *text = formatted ? bscJSON_Print(root) : bscJSON_PrintUnformatted(root);
    std::string out = text != nullptr ? text : "(null)";
    bscJSON_free(text);
    bscJSON_Delete(root);
    return out;
}

TEST(SpecialJson, IntegerMembersPrintAsNumberMembers) {
    for (int value : {0, 1, -1, 7, -70, 100000, 123456789, -1000000000, INT_MAX, INT_MIN}) {
        for (bool formatted : {true, false}) {
            EXPECT_EQ(Print(value, false, formatted), Print(value, true, formatted))
                << value << (formatted ? " formatted" : " compact");
        }
    }
}

} // namespace
