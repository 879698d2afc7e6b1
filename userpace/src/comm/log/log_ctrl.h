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

#ifdef __cplusplus
}
#endif

#endif
