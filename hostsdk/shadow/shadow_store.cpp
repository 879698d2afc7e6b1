// The shadow service's store: registration, deregistration and key lookup.
#include "shadow_store.h"

#include <algorithm>
#include <cstring>

namespace noltdev_host {

int ShadowStore::Register(int domain_id, const noltDevSDK_Shadow_DomainReg_S &reg) {
    if (reg.usNum == 0 || reg.pstSrvList == nullptr) {
        return -1;
    }
    std::vector<noltDevSDK_Shadow_Service_S> services(reg.pstSrvList, reg.pstSrvList + reg.usNum);
    for (noltDevSDK_Shadow_Service_S &service : services) {
        service.acKey[sizeof service.acKey - 1] = '\0';
    }
    std::lock_guard<std::mutex> lock(mu_);
    domains_[domain_id] = std::move(services); // a second registration replaces the first
    ++reg_count_;
    return 0;
}

int ShadowStore::Deregister(int domain_id) {
    std::lock_guard<std::mutex> lock(mu_);
    return domains_.erase(domain_id) == 1 ? 0 : -1;
}

bool ShadowStore::Find(int domain_id, const char *key, noltDevSDK_Shadow_Service_S *out) const {
    if (key == nullptr) {
        return false;
    }
    std::lock_guard<std::mutex> lock(mu_);
    auto domain = domains_.find(domain_id);
    if (domain == domains_.end()) {
        return false;
    }
    const auto &services = domain->second;
    auto it = std::find_if(services.begin(), services.end(), [key](const noltDevSDK_Shadow_Service_S &s) {
        return std::strcmp(s.acKey, key) == 0;
    });
    if (it == services.end()) {
        return false;
    }
    *out = *it;
    return true;
}

int ShadowStore::RegCount() const {
    std::lock_guard<std::mutex> lock(mu_);
    return reg_count_;
}

void ShadowStore::Reset() {
    std::lock_guard<std::mutex> lock(mu_);
    domains_.clear();
    reg_count_ = 0;
}

void ShadowStore::SetCacheDir(const char *dir) {
    std::lock_guard<std::mutex> lock(mu_);
    cache_dir_ = dir != nullptr ? dir : "";
}

std::string ShadowStore::CacheDir() const {
    std::lock_guard<std::mutex> lock(mu_);
    return cache_dir_;
}

} // namespace noltdev_host
