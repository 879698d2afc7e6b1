// What a logger puts before the module's text on a line of a device's log: a kernel
// timestamp ("[  123.456789] "), a syslog head ("Nov 24 10:00:01 cam app[123]: "), an ISO
// timestamp, a kernel priority ("<6>"), bracketed level tags and thread ids ("[INFO] ",
// "[tid 812] "); and syslog's escapes of control characters inside one message.
#pragma once

#include <string>

namespace sim {

// The module's text of one log line without what stands before it (one blank after each
// form belongs to it); *time gets the seconds of a timestamp taken off (-1 without one;
// syslog and ISO times count from the first of their month).
std::string StripLogPrefix(const std::string &line, double *time);

// A message with syslog's escapes ("#012" a line end, "#011" a tab: "#0" and two octal
// digits up to 37) turned back into the characters; text without "#012" as it is.
std::string SyslogUnescaped(const std::string &line);

} // namespace sim
