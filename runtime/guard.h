/* The recursion guard: a depth per thread that every routine raises on entry and lowers on exit. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Raises the depth and returns 0. At depth 256 it refuses instead: the depth stays, the error
   "Stack overflow: recursion too deep" (code 1) is set and 1 is returned. */
int qor_recursion_enter(void);

/* Lowers the depth; at 0 it stays 0, which is no error. */
void qor_recursion_leave(void);

/* The depth of the calling thread. */
int64_t qor_recursion_depth(void);

/* Sets the depth of the calling thread; a negative depth is ignored. */
void qor_recursion_reset_to(int64_t depth);

#ifdef __cplusplus
}
#endif
