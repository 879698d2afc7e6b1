// Shadow values as text, both directions.
#include "shadow_value.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace noltdev_host {

bool IsTextType(int type) {
    return type == shd_data_type_string || type == shd_data_type_array || type == shd_data_type_object;
}

bool DeliveredValue::Build(int type, const char *text, int length) {
    if (type < shd_data_type_bool || type > shd_data_type_null) {
        return false;
    }
    const char *src = text != nullptr ? text : "";
    // A negative length takes the whole text; a length beyond the text stops at its end.
    size_t n = length < 0 ? std::strlen(src) : strnlen(src, static_cast<size_t>(length));
    text_.assign(src, n);
    value_ = noltDevSDK_Shadow_value_t{};
    value_.type = static_cast<shd_data_type_e>(type);
    value_.length = static_cast<NOLTDEV_SDK_INT32>(n);
    switch (type) {
    case shd_data_type_bool:
        value_.value_bool = text_ == "true" || std::strtol(text_.c_str(), nullptr, 10) != 0;
        break;
    case shd_data_type_int: {
        long v = std::strtol(text_.c_str(), nullptr, 10);
        value_.value_int = static_cast<int>(std::clamp<long>(v, INT_MIN, INT_MAX));
        break;
    }
    case shd_data_type_double:
        value_.value_double = std::strtod(text_.c_str(), nullptr);
        break;
    case shd_data_type_null:
        value_.length = 0;
        value_.value = nullptr;
        break;
    default:
        value_.value = const_cast<char *>(text_.c_str());
        break;
    }
    return true;
}

std::string GeneratedText(const noltDevSDK_Shadow_value_t &value, const char *buf, int buf_size) {
    char number[32];
    switch (value.type) {
    case shd_data_type_bool:
        return value.value_bool ? "true" : "false";
    case shd_data_type_int:
        std::snprintf(number, sizeof number, "%d", value.value_int);
        return number;
    case shd_data_type_double:
        std::snprintf(number, sizeof number, "%.17g", value.value_double);
        return number;
    default:
        break;
    }
    if (!IsTextType(value.type)) {
        return "";
    }
    // Read from the buffer handed out, never from wherever the value may point now.
    int n = std::clamp<int>(value.length, 0, buf_size);
    return std::string(buf, static_cast<size_t>(n));
}

} // namespace noltdev_host
