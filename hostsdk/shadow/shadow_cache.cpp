// Persistence of shadow values as files under the cache directory.
#include "shadow_cache.h"

#include <cctype>
#include <cstdio>
#include <filesystem>

#include "log_ctrl.h"

namespace noltdev_host {

std::string ShadowCacheFile(const std::string &dir, int domain_id, const char *key, ShadowSide side) {
    std::string name = std::to_string(domain_id) + ".";
    for (const char *p = key; *p != '\0'; ++p) {
        unsigned char c = static_cast<unsigned char>(*p);
        name += std::isalnum(c) || c == '_' || c == '-' ? static_cast<char>(c) : '_';
    }
    name += side == ShadowSide::Desired ? ".desired" : ".reported";
    return (std::filesystem::path(dir) / name).string();
}

void ShadowCacheWrite(const std::string &dir, int domain_id, const char *key, ShadowSide side,
                      const std::string &text) {
    if (dir.empty()) {
        return;
    }
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    std::string path = ShadowCacheFile(dir, domain_id, key, side);
    FILE *f = std::fopen(path.c_str(), "wb");
    bool ok = f != nullptr && std::fwrite(text.data(), 1, text.size(), f) == text.size();
    if (f != nullptr && std::fclose(f) != 0) {
        ok = false;
    }
    if (!ok) {
        noltdev_debug(LOG_WARNING, "shadow: cannot write %s\n", path.c_str());
    }
}

} // namespace noltdev_host
