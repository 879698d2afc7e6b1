// The row processes' ThreadSanitizer report files (see race_capture.h).
#include "race_capture.h"

#include <dirent.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define SIM_TSAN 1
#endif
#endif
#if defined(__SANITIZE_THREAD__)
#define SIM_TSAN 1
#endif

#if defined(SIM_TSAN)
// The sanitizer runtime's own call: reports go to PATH.PID instead of standard error.
extern "C" void __sanitizer_set_report_path(const char *path);
#endif

namespace sim {

namespace {
std::string g_dir;
const char kPrefix[] = "row";
} // namespace

bool RaceCheckBuilt() {
#if defined(SIM_TSAN)
    return true;
#else
    return false;
#endif
}

const std::string &RaceDir() {
    if (g_dir.empty() && RaceCheckBuilt()) {
        const char *tmp = std::getenv("TMPDIR");
        std::string pattern =
            std::string(tmp != nullptr && *tmp != '\0' ? tmp : "/tmp") + "/special-sim-races-XXXXXX";
        if (mkdtemp(&pattern[0]) != nullptr) {
            g_dir = pattern;
        }
    }
    return g_dir;
}

void RemoveRaceDir() {
    if (g_dir.empty()) {
        return;
    }
    DIR *d = opendir(g_dir.c_str());
    for (struct dirent *e = d ? readdir(d) : nullptr; e != nullptr; e = readdir(d)) {
        std::string name = e->d_name;
        if (name != "." && name != "..") {
            std::remove((g_dir + "/" + name).c_str());
        }
    }
    if (d != nullptr) {
        closedir(d);
    }
    rmdir(g_dir.c_str());
    g_dir.clear();
}

void CaptureRaces() {
#if defined(SIM_TSAN)
    if (!RaceDir().empty()) {
        __sanitizer_set_report_path((RaceDir() + "/" + kPrefix).c_str());
    }
#endif
}

std::string TakeRaces(pid_t pid) {
    if (g_dir.empty()) {
        return "";
    }
    std::string path = g_dir + "/" + kPrefix + "." + std::to_string(pid);
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    std::remove(path.c_str());
    return text.str();
}

} // namespace sim
