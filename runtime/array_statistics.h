/* Reductions, statistics and running totals. A nested array counts with the numbers of all its
   rows; strings are no numbers. Null and empty arrays give what each comment says. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The sum (0.0 of nothing) and the product (1.0 of nothing). From 64 numbers on, eight partial sums
   are kept side by side, which is faster and rounds less than one. */
double qor_array_sum(const QorArray* array);
double qor_array_product(const QorArray* array);

/* The sum of a[i] * b[i] over the shorter length; row by row for nested arrays. */
double qor_array_dot(const QorArray* a, const QorArray* b);

/* 1 when any / every number is not zero, else 0: 0 / 1 of nothing. How many are not zero. */
int qor_array_any(const QorArray* array);
int qor_array_all(const QorArray* array);
int64_t qor_array_count(const QorArray* array);

/* The mean, the population variance and standard deviation (divided by n), and the median: the
   middle one in ascending order, or the mean of the two middle ones. 0.0 of nothing. */
double qor_mean(const QorArray* array);
double qor_array_variance(const QorArray* array);
double qor_stdev(const QorArray* array);
double qor_array_median(const QorArray* array);

/* The sums / products of the first 1, 2, 3, ... elements, in order, as a new array; of a nested
   array row by row. */
QorArray* qor_array_cumsum(const QorArray* array);
QorArray* qor_array_cumprod(const QorArray* array);

#ifdef __cplusplus
}
#endif
