/* The clock: a tick and a sleep, the system's until somebody brings others. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Milliseconds with a fraction. The system's: since the process started, never going back. */
double qor_tick(void);

/* Waits for that many milliseconds. The system's suspends the calling thread; a signal may cut it
   short. */
void qor_sleep(uint32_t milliseconds);

/* A tick and a sleep for who plays a program back or lets time pass as it likes. */
typedef struct qor_clock {
  double (*tick)(void* context);
  void (*sleep)(void* context, uint32_t milliseconds);
  void* context; /* handed to both; the caller's, and alive for as long as the clock is in use */
} qor_clock;

/* From now on qor_tick and qor_sleep ask this clock, which is copied. A function that is NULL, or
   NULL for the whole clock, is the system's again. Not while another thread asks either. */
void qor_set_clock(const qor_clock* clock);

/* The clock that is asked now, for who puts another in front of it. Neither function is NULL. */
qor_clock qor_clock_in_use(void);

#ifdef __cplusplus
}
#endif
