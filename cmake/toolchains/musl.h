/* What the C++ headers that were made for glibc ask for, and musl has otherwise or not at all. Nothing calls it. */
#ifndef JKC_TOOLCHAIN_MUSL_H
#define JKC_TOOLCHAIN_MUSL_H

#define __GLIBC_PREREQ(major, minor) 0
#define __locale_t locale_t

#include <pthread.h>
#ifdef __cplusplus
extern "C" int pthread_cond_clockwait(pthread_cond_t *, pthread_mutex_t *, clockid_t, const struct timespec *);
#endif

#endif
