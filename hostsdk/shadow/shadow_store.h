// The shadow service's store: the registered domains with copies of their service
// tables, the registration count and the cache directory. Safe to use from any thread.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "noltDevSDK_shadow.h"

namespace noltdev_host {

class ShadowStore {
  public:
    int Register(int domain_id, const noltDevSDK_Shadow_DomainReg_S &reg);
    int Deregister(int domain_id);
    // Copies the service of the domain that owns key; false when none does.
    bool Find(int domain_id, const char *key, noltDevSDK_Shadow_Service_S *out) const;
    int RegCount() const;
    void Reset();
    void SetCacheDir(const char *dir);
    std::string CacheDir() const;

  private:
    mutable std::mutex mu_;
    std::map<int, std::vector<noltDevSDK_Shadow_Service_S>> domains_;
    int reg_count_ = 0;
    std::string cache_dir_;
};

} // namespace noltdev_host
