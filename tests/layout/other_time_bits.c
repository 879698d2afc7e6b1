/* An application translation unit built with the other time_t than the module's: the
 * public header must refuse it at compile time, naming what to change. */
#include "noltDevSDK_special_def.h"

int application_function(void) {
    return NOLTDEVSDK_SPECIAL_BUILT_TIME_T_SIZE;
}
