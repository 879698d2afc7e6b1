// Shadow values as text: building a value the platform delivers from its type and text,
// and turning a generated value back into text.
#pragma once

#include <string>

#include "noltDevSDK_shadow.h"

namespace noltdev_host {

// A value built from the platform's text. For string, array and object values `value`
// points to a NUL-terminated copy that lives as long as this object.
class DeliveredValue {
  public:
    // False when type is not a shd_data_type_e.
    bool Build(int type, const char *text, int length);
    const noltDevSDK_Shadow_value_t &Value() const { return value_; }
    const std::string &Text() const { return text_; }

  private:
    std::string text_;
    noltDevSDK_Shadow_value_t value_{};
};

bool IsTextType(int type);
// The text of a generated value: the first `length` bytes of buf (at most buf_size) for
// string, array and object values, the number for scalar values, "" for null.
std::string GeneratedText(const noltDevSDK_Shadow_value_t &value, const char *buf, int buf_size);

} // namespace noltdev_host
