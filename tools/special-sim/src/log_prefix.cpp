// Taking off what a logger puts before the module's text (see log_prefix.h). No regular
// expressions: each form is read by hand, so a megabyte line costs one scan.
#include "log_prefix.h"

#include <cctype>
#include <cmath>

namespace sim {

namespace {

bool Digit(char c) {
    return c >= '0' && c <= '9';
}

// Reads digits at pos into *value; how many were read.
size_t Number(const std::string &s, size_t pos, long *value) {
    size_t n = 0;
    long v = 0;
    while (pos + n < s.size() && Digit(s[pos + n]) && n < 9) {
        v = v * 10 + (s[pos + n] - '0');
        n++;
    }
    *value = v;
    return n;
}

// "HH:MM:SS" at pos: its seconds, or -1.
double ClockAt(const std::string &s, size_t pos) {
    long h = 0, m = 0, sec = 0;
    if (pos + 8 > s.size() || Number(s, pos, &h) != 2 || s[pos + 2] != ':' || Number(s, pos + 3, &m) != 2 ||
        s[pos + 5] != ':' || Number(s, pos + 6, &sec) != 2) {
        return -1;
    }
    return static_cast<double>(h * 3600 + m * 60 + sec);
}

// After a prefix: one blank belongs to it.
size_t AfterBlank(const std::string &s, size_t pos) {
    return pos < s.size() && s[pos] == ' ' ? pos + 1 : pos;
}

// "[  123.456789]": the kernel's timestamp.
size_t KernelStamp(const std::string &s, size_t pos, double *time) {
    size_t p = pos + 1;
    while (p < s.size() && s[p] == ' ') {
        p++;
    }
    long whole = 0, frac = 0;
    size_t n = Number(s, p, &whole);
    if (s.compare(pos, 1, "[") != 0 || n == 0 || p + n >= s.size() || s[p + n] != '.') {
        return 0;
    }
    size_t f = Number(s, p + n + 1, &frac);
    size_t end = p + n + 1 + f;
    if (f == 0 || end >= s.size() || s[end] != ']') {
        return 0;
    }
    // digits past the ninth are not read: the timestamp keeps microseconds at most
    *time = static_cast<double>(whole) + static_cast<double>(frac) / std::pow(10.0, static_cast<double>(f));
    return AfterBlank(s, end + 1) - pos;
}

// "[ERROR]", "[tid 1234]", "[main:12]": a bracketed tag of letters, digits and a few marks.
size_t BracketTag(const std::string &s, size_t pos) {
    if (s.compare(pos, 1, "[") != 0) {
        return 0;
    }
    size_t p = pos + 1;
    while (p < s.size() && p - pos <= 64 &&
           (std::isalnum(static_cast<unsigned char>(s[p])) ||
            std::string(" _.:/-").find(s[p]) != std::string::npos)) {
        p++;
    }
    return p > pos + 1 && p < s.size() && s[p] == ']' ? AfterBlank(s, p + 1) - pos : 0;
}

// "<6>": a kernel log priority.
size_t Priority(const std::string &s, size_t pos) {
    long v = 0;
    size_t n = s.compare(pos, 1, "<") == 0 ? Number(s, pos + 1, &v) : 0;
    return n > 0 && n <= 3 && pos + 1 + n < s.size() && s[pos + 1 + n] == '>'
               ? AfterBlank(s, pos + 2 + n) - pos
               : 0;
}

// A word up to the next blank or the end (at least one character); its end, or npos.
size_t WordEnd(const std::string &s, size_t pos) {
    size_t end = pos < s.size() ? s.find(' ', pos) : pos;
    end = end == std::string::npos ? s.size() : end;
    return end == pos ? std::string::npos : end;
}

// "Nov 24 ": a syslog date; the day of the month, or -1.
long SyslogDay(const std::string &s, size_t pos) {
    if (pos + 16 > s.size() || !std::isupper(static_cast<unsigned char>(s[pos])) ||
        !std::islower(static_cast<unsigned char>(s[pos + 1])) || s[pos + 3] != ' ' || s[pos + 6] != ' ') {
        return -1;
    }
    long day = 0;
    size_t digits = s[pos + 4] == ' ' ? Number(s, pos + 5, &day) + 1 : Number(s, pos + 4, &day);
    return digits == 2 ? day : -1;
}

// "Nov 24 10:00:01 cam app[123]: ": a syslog line's head.
size_t Syslog(const std::string &s, size_t pos, double *time) {
    long day = SyslogDay(s, pos);
    double clock = day >= 0 ? ClockAt(s, pos + 7) : -1;
    size_t host_end = clock >= 0 && s[pos + 15] == ' ' ? WordEnd(s, pos + 16) : std::string::npos;
    size_t tag_end = host_end == std::string::npos ? std::string::npos : WordEnd(s, host_end + 1);
    if (tag_end == std::string::npos || s[tag_end - 1] != ':') {
        return 0;
    }
    *time = static_cast<double>(day) * 86400 + clock;
    return AfterBlank(s, tag_end) - pos;
}

// "2026-11-24T" or "2026-11-24 ": an ISO date; the day of the month, or -1.
long IsoDay(const std::string &s, size_t pos) {
    long y = 0, mo = 0, d = 0;
    bool date = Number(s, pos, &y) == 4 && s.compare(pos + 4, 1, "-") == 0 && Number(s, pos + 5, &mo) == 2 &&
                s.compare(pos + 7, 1, "-") == 0 && Number(s, pos + 8, &d) == 2;
    return date && pos + 11 <= s.size() && (s[pos + 10] == 'T' || s[pos + 10] == ' ') ? d : -1;
}

// "2026-11-24T10:00:01.123Z " or with a blank for the "T".
size_t IsoStamp(const std::string &s, size_t pos, double *time) {
    long d = IsoDay(s, pos);
    double clock = d >= 0 ? ClockAt(s, pos + 11) : -1;
    if (clock < 0) {
        return 0;
    }
    size_t p = pos + 19;
    long frac = 0;
    size_t f = p < s.size() && s[p] == '.' ? Number(s, p + 1, &frac) : 0;
    p += f > 0 ? f + 1 : 0;
    p += p < s.size() && s[p] == 'Z' ? 1 : 0;
    *time = static_cast<double>(d) * 86400 + clock +
            static_cast<double>(frac) / std::pow(10.0, static_cast<double>(f));
    return AfterBlank(s, p) - pos;
}

// The length of one prefix at pos (0: none); a timestamp's seconds go to *time.
size_t OnePrefix(const std::string &s, size_t pos, double *time) {
    size_t n = KernelStamp(s, pos, time);
    if (n == 0) {
        n = BracketTag(s, pos);
    }
    if (n == 0) {
        n = Priority(s, pos);
    }
    if (n == 0) {
        n = Syslog(s, pos, time);
    }
    return n != 0 ? n : IsoStamp(s, pos, time);
}

// "#0" and two octal digits up to 37 at i: syslog's escape of a control character.
bool ControlEscape(const std::string &line, size_t i) {
    return i + 3 < line.size() && line.compare(i, 2, "#0") == 0 && line[i + 2] >= '0' && line[i + 2] <= '3' &&
           line[i + 3] >= '0' && line[i + 3] <= '7';
}

} // namespace

// A message with syslog's escapes of control characters ("#012" for a line end, "#011"
// for a tab) turned back; other text as it is.
std::string SyslogUnescaped(const std::string &line) {
    if (line.find("#012") == std::string::npos) {
        return line;
    }
    std::string out;
    for (size_t i = 0; i < line.size(); i++) {
        bool escape = ControlEscape(line, i);
        out += escape ? static_cast<char>((line[i + 2] - '0') * 8 + (line[i + 3] - '0')) : line[i];
        i += escape ? 3 : 0;
    }
    return out;
}

std::string StripLogPrefix(const std::string &line, double *time) {
    size_t pos = 0;
    *time = -1;
    for (int i = 0; i < 8; i++) {
        size_t n = OnePrefix(line, pos, time);
        if (n == 0) {
            break;
        }
        pos += n;
    }
    return line.substr(pos);
}

} // namespace sim
