/* Numbers and truth values as text, and back. All results are new strings for the caller. The text
   never depends on the C library's locale, only on qor_setlocale. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Selects the German form (1.234.567 and 2,5) when the name contains "de" or "DE", the plain one
   otherwise and for null. Process-wide; plain at start. */
void qor_setlocale(const char* name);

/* The integer in decimal, grouped by threes with '.' in the German form. */
char* qor_int_to_str(int64_t value);

/* A whole number below 1e15 in magnitude as qor_int_to_str writes it (2, never 2.0); any other in
   six significant digits ("%g": 0.1, 1e+20), with ',' for '.' in the German form. */
char* qor_double_to_str(double value);

/* At most six decimals, as qor_format_double: three names for one conversion, never German. */
char* qor_str(double value);
char* qor_tostr(double value);
char* qor_cstr(double value);

/* "TRUE" when `value` is non-zero, else "FALSE". */
char* qor_str_bool(int value);

/* Upper-case hexadecimal, octal and binary digits without leading zeros. */
char* qor_hex(uint64_t value);
char* qor_oct(uint64_t value);
char* qor_bin(uint64_t value);

/* The number that `s` starts with, after white space, as atof reads it; 0.0 when there is none. */
double qor_val(const char* s);

#ifdef __cplusplus
}
#endif
