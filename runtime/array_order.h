/* Arrays made from nothing, and arrays in another order. Results are new and the caller's; what
   slots refer to stays shared with the original, as everywhere. Flags are kept, tags are not
   carried. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* 1, 2, ..., n; start + i * step for i = 0..n-1; `n` numbers from `start` to `stop` at equal
   distances (start alone for n = 1). Empty when n is below 1. */
QorArray* qor_iota(int64_t n);
QorArray* qor_iota3(int64_t n, double start, double step);
QorArray* qor_linspace(double start, double stop, int64_t n);

/* start, start + step, ... as far as `stop`, which is included when a step ends there (to within a
   billionth of a step). Empty when the step is 0, NaN or leads away from `stop`. */
QorArray* qor_range(double start, double stop, double step);

/* In ascending order, as a straight insertion sort leaves it in which an element moves only past
   strictly greater ones: equal ones keep their order, and a NaN stays where it is and parts what
   is before it from what is behind. Strings are sorted by their bytes; rows stay as they are. */
QorArray* qor_array_sort(const QorArray* array);

/* The indexes that put the array in that order, as numbers. */
QorArray* qor_grade(const QorArray* array);

/* In random order, drawn from the C library's rand (see qor_randomseed). */
QorArray* qor_array_shuffle(const QorArray* array);

#ifdef __cplusplus
}
#endif
