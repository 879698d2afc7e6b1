/* The clocks behind the status items' time rules (the trusteeship-connect re-report
 * period and the mapped-port report throttle). Tests replace them to drive time. */
#ifndef SPECIAL_CLOCK_H
#define SPECIAL_CLOCK_H

#include <time.h>

/* Wall-clock seconds, time() unless replaced. */
time_t SpecialNow(void);
/* The monotonic clock, clock_gettime(CLOCK_MONOTONIC) unless replaced. */
void SpecialMonotonic(struct timespec *ts);
/* Replaces the clocks; NULL restores the system clock for that one. */
void SpecialSetClock(time_t (*wall)(void), void (*mono)(struct timespec *));

#endif
