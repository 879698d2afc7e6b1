// The simulator's output: one block per message, callback or step, either as text for a
// person (bodies pretty-printed, records as "path = value" lines) or as JSON Lines for
// scripts (one object per line with "kind" and the same facts). Thread-safe: the
// kernel's thread, custom-voice workers and the scenario all write here.
#pragma once

#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>
#include <vector>

#include <cjson/cJSON.h>

namespace sim {

// A body pretty-printed: XML indented, JSON formatted, anything else as it is.
// format receives "xml", "json", "text" or "empty".
std::string PrettyBody(const std::string &body, std::string *format);

// "NAME (0xd3999022)", "0" or the plain number for a result code.
std::string DescribeCode(int code);

class Transcript {
  public:
    Transcript(FILE *out, bool json, bool keep_lines);

    // Everything written from now on is attributed to this scenario line; echo also
    // writes the line itself.
    void BeginStep(const std::string &file, int line, const std::string &text, bool echo);

    // A platform message in either direction.
    void Message(bool to_device, uint32_t command, uint32_t seq, int response, const std::string &body);
    // An application callback and the record it carried or answered (json is consumed).
    void Callback(const char *kind, int type, const std::string &type_name, int len, int result,
                  cJSON *record);
    // A shadow value in either direction (the platform's value before it is delivered;
    // the device's with the read's result and version).
    void Shadow(bool to_device, const std::string &key, int type, const std::string &value, int result,
                long long version);
    // A short outcome ("event", "call", "poll", ...): text, and extra JSON members (consumed).
    void Outcome(const char *kind, const std::string &text, cJSON *members);
    // The device state of a group (json is consumed).
    void State(const std::string &group, cJSON *record);
    void Log(int level, const std::string &line);

    // The JSON lines written so far (kept only when asked at construction).
    std::vector<std::string> Lines();

  private:
    void Write(cJSON *object, const std::string &text);

    std::mutex mu_;
    FILE *out_;
    bool json_;
    bool keep_;
    std::vector<std::string> lines_;
    int line_ = 0;
};

} // namespace sim
