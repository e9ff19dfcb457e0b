/* The pending error: one process-wide message and code, beside the last ones ever set. A function
   that reports an error sets both pairs; whoever handles it dismisses the pending one. Not
   synchronised: one thread runs the program. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
#define QOR_NORETURN [[noreturn]]
extern "C" {
#else
#define QOR_NORETURN _Noreturn
#endif

/* Makes `message` (cut to 511 bytes) and `code` both the pending and the last error. A null
   message empties the texts but still sets the code. */
void qor_err_set(const char* message, int64_t code);

/* Forgets everything: both messages empty, both codes 0. */
void qor_err_clear(void);

/* The code of the pending error, 0 when none is pending. */
int64_t qor_err_code(void);

/* The pending code or, when that is 0, the code of the last error. */
int64_t qor_err_code_visible(void);

/* Dismisses the pending error: its code becomes 0; the messages and the last code stay. */
void qor_err_code_clear(void);

/* The pending message or, when that is empty, the last one, as a new string for the caller. */
char* qor_err_msg(void);

/* Writes "Unhandled exception: " and the pending message to standard error and ends the process
   with exit status 1. */
QOR_NORETURN void qor_throw_uncaught(void);

#ifdef __cplusplus
}
#endif
