// The shadow service's C entry points: domain registration for the modules and the
// shadow section of the host control API, over one process-wide store. The store's lock
// is never held while a domain's callback runs.
#include <algorithm>
#include <cstring>
#include <vector>

#include "noltDevSDK_shadow.h"
#include "noltdev_host.h"
#include "shadow_cache.h"
#include "shadow_reporter.h"
#include "shadow_store.h"
#include "shadow_value.h"

namespace {

constexpr int kDefaultBufSize = 4096;

noltdev_host::ShadowStore &Store() {
    static noltdev_host::ShadowStore store;
    return store;
}

void CopyOut(const std::string &text, char *out, int out_size) {
    if (out == nullptr || out_size <= 0) {
        return;
    }
    size_t n = std::min(text.size(), static_cast<size_t>(out_size - 1));
    std::memcpy(out, text.data(), n);
    out[n] = '\0';
}

} // namespace

extern "C" {

int noltDevSDK_Shadow_DomainReg(int domain_id, const noltDevSDK_Shadow_DomainReg_S *reg) {
    int code = 0;
    if (reg != nullptr && noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_SHADOW_REGISTER, &code)) {
        return code;
    }
    if (reg == nullptr || Store().Register(domain_id, *reg) != 0) {
        return -1;
    }
    // a key registered with usResetReportAll is reported afresh, on the service's thread
    for (uint16_t i = 0; i < reg->usNum; ++i) {
        const noltDevSDK_Shadow_Service_S &service = reg->pstSrvList[i];
        if (service.usResetReportAll != 0 && service.gen_value_JsStr != nullptr) {
            noltdev_host::ShadowQueueReport(
                domain_id, std::string(service.acKey, strnlen(service.acKey, sizeof service.acKey)));
        }
    }
    return 0;
}

int noltDevSDK_Shadow_DomainDereg(int domain_id) {
    int code = 0;
    if (noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_SHADOW_DEREGISTER, &code)) {
        return code;
    }
    return Store().Deregister(domain_id);
}

int noltdev_host_shadow_reg_count(void) {
    return Store().RegCount();
}

void noltdev_host_shadow_drain(void) {
    noltdev_host::ShadowDrainReports();
}

int noltdev_host_shadow_startup_reports(void) {
    return noltdev_host::ShadowReportsRun();
}

void noltdev_host_shadow_reset(void) {
    noltdev_host::ShadowDrainReports(); // no start-up report runs into a forgotten domain
    Store().Reset();
}

void noltdev_host_shadow_set_cache_dir(const char *dir) {
    Store().SetCacheDir(dir);
}

int noltdev_host_shadow_deliver(int domain_id, const char *key, int type, const char *text, int length) {
    noltDevSDK_Shadow_Service_S service;
    noltdev_host::DeliveredValue value;
    int code = 0;
    if (noltdev_host_fault_hit(NOLTDEV_HOST_FAULT_SHADOW_DELIVER, &code)) {
        return code;
    }
    if (!Store().Find(domain_id, key, &service) || service.parse_sync == nullptr ||
        !value.Build(type, text, length)) {
        return -1;
    }
    noltdev_host::ShadowCacheWrite(Store().CacheDir(), domain_id, key, noltdev_host::ShadowSide::Desired,
                                   value.Text());
    noltDevSDK_Shadow_ParseSync_Param_S param{};
    return service.parse_sync(&value.Value(), &param);
}

int noltdev_host_shadow_read(int domain_id, const char *key, int buf_size, char *out, int out_size, int *type,
                             uint32_t *version) {
    CopyOut("", out, out_size);
    noltDevSDK_Shadow_Service_S service;
    if (buf_size < 0 || !Store().Find(domain_id, key, &service) || service.gen_value_JsStr == nullptr) {
        return -1;
    }
    int size = buf_size > 0 ? buf_size : kDefaultBufSize;
    std::vector<char> buf(static_cast<size_t>(size) + 1, '\0'); // one spare byte stays NUL
    noltDevSDK_Shadow_value_t value{};
    value.type = shd_data_type_null;
    value.length = size;
    value.value = buf.data();
    noltDevSDK_Shadow_GenValue_Param_S param{};
    int rc = service.gen_value_JsStr(&value, &param);

    std::string text = noltdev_host::GeneratedText(value, buf.data(), size);
    CopyOut(text, out, out_size);
    if (type != nullptr) {
        *type = value.type;
    }
    if (version != nullptr) {
        *version = param.uiVersion;
    }
    if (rc == 0 && value.type != shd_data_type_null) {
        noltdev_host::ShadowCacheWrite(Store().CacheDir(), domain_id, key, noltdev_host::ShadowSide::Reported,
                                       text);
    }
    return rc;
}

} // extern "C"
