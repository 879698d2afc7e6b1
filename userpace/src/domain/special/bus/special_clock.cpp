/* The clocks of the status items: the system's by default, replaceable by tests. */
#include "special_clock.h"

#include <stddef.h>

static time_t SystemWall(void) {
    return time(NULL);
}

static void SystemMonotonic(struct timespec *ts) {
    clock_gettime(CLOCK_MONOTONIC, ts);
}

static time_t (*g_special_wall)(void) = SystemWall;
static void (*g_special_mono)(struct timespec *) = SystemMonotonic;

time_t SpecialNow(void) {
    return g_special_wall();
}

void SpecialMonotonic(struct timespec *ts) {
    g_special_mono(ts);
}

void SpecialSetClock(time_t (*wall)(void), void (*mono)(struct timespec *)) {
    g_special_wall = wall != NULL ? wall : SystemWall;
    g_special_mono = mono != NULL ? mono : SystemMonotonic;
}
