/* The monotonic clock. It stands in a source of its own, so that a program which defines these two
   functions itself (a scripted clock) never pulls it in. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Milliseconds since the process started, with a fraction; never goes back. */
double qor_tick(void);

/* Suspends the calling thread for that many milliseconds; a signal may cut it short. */
void qor_sleep(uint32_t milliseconds);

#ifdef __cplusplus
}
#endif
