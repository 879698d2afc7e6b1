// The kernel's time helpers: "HH:MM[:SS]" to seconds of the day and back, and the
// difference of two timespecs in milliseconds.
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "noltdev_sdk_kernel_struct.h"

namespace {

constexpr int kDay = 24 * 3600;

// Two decimal digits at text; -1 when they are not.
int TwoDigits(const char *text) {
    if (text[0] < '0' || text[0] > '9' || text[1] < '0' || text[1] > '9') {
        return -1;
    }
    return (text[0] - '0') * 10 + (text[1] - '0');
}

int Saturate(int64_t value) {
    return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<int>(value);
}

} // namespace

extern "C" {

int noltdev_ParseTimeHHMM(const char *text) {
    if (text == nullptr) {
        return 0;
    }
    size_t len = strnlen(text, 9);
    if ((len != 5 && len != 8) || text[2] != ':' || (len == 8 && text[5] != ':')) {
        return 0;
    }
    int hours = TwoDigits(text);
    int minutes = TwoDigits(text + 3);
    int seconds = len == 8 ? TwoDigits(text + 6) : 0;
    if (hours < 0 || minutes < 0 || minutes > 59 || seconds < 0 || seconds > 59) {
        return 0;
    }
    int value = hours * 3600 + minutes * 60 + seconds;
    return value <= kDay ? value : 0; // "24:00" ends a whole-day plan
}

int noltdev_MakeTimeString(time_t value, char *buf, int buf_size) {
    if (buf == nullptr || buf_size < 6) {
        if (buf != nullptr && buf_size > 0) {
            buf[0] = '\0';
        }
        return -1;
    }
    // The end of a day stays "24:00"; any other value is taken as a time of that day.
    int seconds = value == kDay ? kDay : static_cast<int>(((value % kDay) + kDay) % kDay);
    return std::snprintf(buf, static_cast<size_t>(buf_size), "%02d:%02d", seconds / 3600, seconds / 60 % 60);
}

int noltdev_timespecMinusMs(const struct timespec *later, const struct timespec *earlier) {
    if (later == nullptr || earlier == nullptr) {
        return 0;
    }
    int64_t seconds;
    if (__builtin_sub_overflow(static_cast<int64_t>(later->tv_sec), static_cast<int64_t>(earlier->tv_sec),
                               &seconds)) {
        return later->tv_sec > earlier->tv_sec ? INT_MAX : INT_MIN;
    }
    const int64_t kLimit = INT_MAX / 1000 + 2; // beyond this, the result saturates anyway
    if (seconds > kLimit || seconds < -kLimit) {
        return seconds > 0 ? INT_MAX : INT_MIN;
    }
    int64_t nanos = seconds * 1000000000 + (static_cast<int64_t>(later->tv_nsec) - earlier->tv_nsec);
    return Saturate(nanos / 1000000);
}

} // extern "C"
