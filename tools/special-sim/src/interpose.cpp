// The simulator's own noltDevSDK_special_init. The executable exports it, so a user's
// application library that calls noltDevSDK_special_init binds here (symbols of the
// executable come first in the global lookup); it wraps the application's callbacks in
// the checking shims and then calls the module's init, the next definition in the
// lookup order. Only the public function is used, never the module's internals.
#include <dlfcn.h>

#include "app_check.h"

extern "C" int noltDevSDK_special_init(noltDevSDK_special_init_info *info) {
    using InitFn = int (*)(noltDevSDK_special_init_info *);
    static InitFn real = reinterpret_cast<InitFn>(dlsym(RTLD_NEXT, "noltDevSDK_special_init"));
    if (real == nullptr) {
        return -1;
    }
    if (info == nullptr) {
        return real(info); // the module's own answer to a null argument
    }
    noltDevSDK_special_init_info wrapped = *info;
    sim::AppChecker::Wrap(&wrapped.cb);
    return real(&wrapped);
}
