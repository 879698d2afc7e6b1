/* The SDK's debug log: printf-style lines with a level. */
#ifndef NOLTDEV_LOG_CTRL_H
#define NOLTDEV_LOG_CTRL_H

#define LOG_ERROR 1
#define LOG_WARNING 2
#define LOG_DEBUG 3
#define LOG_INFO 4

#ifdef __cplusplus
extern "C" {
#endif

void noltdev_debug(int level, const char *fmt, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 2, 3)))
#endif
    ;

/* Non-zero when a line of this level would be taken (printed or handed on), so that a
 * caller can skip building an argument nobody reads. Optional: a kernel may not provide
 * it, and callers then take every level as wanted. */
int noltdev_debug_wanted(int level);

#ifdef __cplusplus
}
#endif

#endif
