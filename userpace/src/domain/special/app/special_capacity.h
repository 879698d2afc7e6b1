/* How many entries the module walks in the application's fixed-size records, derived
 * from the records themselves so that a capacity is written only where the record is. */
#ifndef SPECIAL_CAPACITY_H
#define SPECIAL_CAPACITY_H

#include "noltDevSDK_special_def.h"

/* Number of elements of a fixed array; in C++11 also of a member named through its type
 * (SPECIAL_COUNT_OF(Record::member)), as sizeof needs no object. */
#define SPECIAL_COUNT_OF(array) (sizeof(array) / sizeof((array)[0]))

/* Weekdays and segments a day of the work-mode plan. */
static const int kSpecialPlanDays =
    static_cast<int>(SPECIAL_COUNT_OF(noltDevSDK_special_work_mode_plan::time));
static const int kSpecialPlanSegments =
    static_cast<int>(SPECIAL_COUNT_OF(noltDevSDK_special_work_mode_plan::time[0]));
/* Stored custom voices. */
static const int kSpecialVoices =
    static_cast<int>(SPECIAL_COUNT_OF(noltDevSDK_special_custom_voice_infos::voice_info));
/* Mapped ports of the dynamic-DNS service. */
static const int kSpecialMappedPorts =
    static_cast<int>(SPECIAL_COUNT_OF(noltDevSDK_special_voddns_local_mapped_infos::mapped_port_infos));

#endif
