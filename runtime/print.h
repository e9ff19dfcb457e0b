/* Output of single values to standard output, and trace lines to standard error. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Print one value without a newline and without flushing. A null string prints nothing; a bool
   prints as TRUE or FALSE; a double as qor_format_double writes it. */
void qor_print_str(const char* text);
void qor_print_int(int64_t value);
void qor_print_double(double value);
void qor_print_bool(int64_t value);
void qor_print_space(void);

/* Ends the line and flushes: the only print that does. */
void qor_print_nl(void);

/* Writes `value` with at most six decimals into the 64 bytes at `destination`: trailing zeros and
   a bare point are dropped (2.5, 3, -0). Text of 64 bytes or more is cut to 63, untrimmed. */
void qor_format_double(char* destination, double value);

/* "[TRACE] file:line" to standard error, or "[TRACE] line n" when `file` is null or empty. */
void qor_trace(const char* file, int64_t line);

#ifdef __cplusplus
}
#endif
