/* Whole-array arithmetic, comparisons and mathematical functions.

   Results are new arrays for the caller. Nested arrays are worked row by row and give rows (free
   them with qor_array_free_deep); a number beside a row stands for a row full of it. Of two arrays
   of different lengths the shorter decides. A string counts as 0.0 wherever a number is needed,
   and tags are not read. Result flags are 0 unless said otherwise. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Operation codes; any other code gives 0.0. The integer operations truncate both operands toward
   zero, saturating at the 64-bit range. */
enum {
  QOR_OP_ADD = 0, /* of two string arrays: concatenation */
  QOR_OP_SUBTRACT = 1,
  QOR_OP_MULTIPLY = 2,
  QOR_OP_DIVIDE = 3, /* 0.0 for a zero divisor */
  QOR_OP_AND = 4,
  QOR_OP_OR = 5,
  QOR_OP_XOR = 6,
  QOR_OP_SHIFT_LEFT = 7,  /* by the count modulo 64 */
  QOR_OP_SHIFT_RIGHT = 8, /* arithmetic, by the count modulo 64 */
  QOR_OP_REMAINDER = 9,   /* 0 for the divisors 0 and -1 */
  QOR_OP_POWER = 10
};

/* Comparison codes; any other code gives 0.0. Strings compare by their bytes and are true when not
   empty. */
enum {
  QOR_CMP_EQUAL = 0,
  QOR_CMP_NOT_EQUAL = 1,
  QOR_CMP_BOTH = 2, /* neither is 0.0 */
  QOR_CMP_EITHER = 3,
  QOR_CMP_LESS = 4,
  QOR_CMP_LESS_OR_EQUAL = 5,
  QOR_CMP_GREATER = 6,
  QOR_CMP_GREATER_OR_EQUAL = 7
};

/* a[i] op b[i]. Of two string arrays it is a string array: concatenated for QOR_OP_ADD, else of
   empty strings; of arrays of such rows an array of such rows. */
QorArray* qor_array_binop(const QorArray* a, const QorArray* b, int64_t code);

/* a[i] op s, or s op a[i] when `scalar_first` is non-zero. */
QorArray* qor_array_scalar_op(const QorArray* a, double s, int64_t code, int64_t scalar_first);

/* 1.0 where the comparison of a[i] with `s`, with b[i], with the string `s` (null: "") holds, else
   0.0. Two string arrays compare as strings. The last takes string arrays; others give 0.0. */
QorArray* qor_array_cmp_scalar(const QorArray* a, double s, int64_t code);
QorArray* qor_array_cmp_arr(const QorArray* a, const QorArray* b, int64_t code);
QorArray* qor_array_cmp_scalar_str(const QorArray* a, const char* s, int64_t code);

/* The function applied to every element: angles in radians; NaN and the infinities as the
   platform's mathematical library has them; round with ties away from zero. */
QorArray* qor_array_sin(const QorArray* array);
QorArray* qor_array_cos(const QorArray* array);
QorArray* qor_array_tan(const QorArray* array);
QorArray* qor_array_asin(const QorArray* array);
QorArray* qor_array_acos(const QorArray* array);
QorArray* qor_array_atan(const QorArray* array);
QorArray* qor_array_sinh(const QorArray* array);
QorArray* qor_array_cosh(const QorArray* array);
QorArray* qor_array_tanh(const QorArray* array);
QorArray* qor_array_exp(const QorArray* array);
QorArray* qor_array_log(const QorArray* array);
QorArray* qor_array_log10(const QorArray* array);
QorArray* qor_array_sqr(const QorArray* array); /* the square root */
QorArray* qor_array_abs(const QorArray* array);
QorArray* qor_array_floor(const QorArray* array);
QorArray* qor_array_ceil(const QorArray* array);
QorArray* qor_array_round(const QorArray* array);
QorArray* qor_array_trunc(const QorArray* array);

#ifdef __cplusplus
}
#endif
