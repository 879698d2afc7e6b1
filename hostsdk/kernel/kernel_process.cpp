// Figures of the running process, read from /proc/self/status, for the storms and the
// soak that measure threads and resident memory.
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "noltdev_host.h"

long noltdev_host_process_status(const char *key) {
    if (key == nullptr) {
        return 0;
    }
    const size_t n = std::strlen(key);
    std::ifstream in("/proc/self/status");
    std::string line;
    while (std::getline(in, line)) {
        if (line.size() > n && line.compare(0, n, key) == 0 && line[n] == ':') {
            return std::atol(line.c_str() + n + 1);
        }
    }
    return 0;
}
