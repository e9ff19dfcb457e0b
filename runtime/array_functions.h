/* Functions applied to arrays (qor_filter_fn is in array.h).

   In the names qor_array_apply_..., the first letter is the kind of the function's result and the
   others are those of its arguments, the element first: f a number, s a string, i an integer. The
   arguments behind the element are the same for all. Strings that a function returns are its
   caller's, so the library takes them over. Results are new arrays for the caller. A null function
   gives an empty array, or 0.0. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Number to number; nested arrays are worked row by row. */
QorArray* qor_array_apply_ff(double (*function)(double), const QorArray* array);

/* String to string; the elements of an array without strings are "". */
QorArray* qor_array_apply_ss(char* (*function)(const char*), const QorArray* array);

/* Number and a string to integer (as a number). */
QorArray* qor_array_apply_ifs(int64_t (*function)(double, const char*), const QorArray* array,
                              const char* s);

/* Number and one or two integers to string. */
QorArray* qor_array_apply_sfi(char* (*function)(double, int64_t), const QorArray* array, int64_t i);
QorArray* qor_array_apply_sfii(char* (*function)(double, int64_t, int64_t), const QorArray* array,
                               int64_t i, int64_t j);

/* Number and an integer to number; nested arrays are worked row by row. */
QorArray* qor_array_apply_ffi(double (*function)(double, int64_t), const QorArray* array,
                              int64_t i);

/* The function of every slot, in order; of a nested array it gets the slot's bit pattern. */
QorArray* qor_select_fn(double (*function)(double), const QorArray* array);

/* function(... function(function(start, a[0]), a[1]) ..., a[n-1]); `start` of an empty array. */
double qor_agg_fn(double (*function)(double, double), const QorArray* array, double start);

/* The same from a[0] on; 0.0 of an empty array. */
double qor_reduce_fn(double (*function)(double, double), const QorArray* array);

/* The elements before the first for which the predicate gives 0.0, and the others. The predicate
   is called once for each element up to that one. Flags are kept but for QOR_FLAG_TAGGED. */
QorArray* qor_take_while_fn(double (*predicate)(double), const QorArray* array);
QorArray* qor_drop_while_fn(double (*predicate)(double), const QorArray* array);

/* A row for each a[i]: function(a[i], b[0]), function(a[i], b[1]), ... */
QorArray* qor_outer_fn(double (*function)(double, double), const QorArray* a, const QorArray* b);

#ifdef __cplusplus
}
#endif
