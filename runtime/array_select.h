/* Parts of arrays, sets and searching. Results are new arrays for the caller; what slots refer to
   stays shared with the original, as everywhere. Flags are kept but for QOR_FLAG_TAGGED, tags are
   not carried.

   Numbers are the same when they are equal or both NaN; strings when their bytes are; rows when
   they are one and the same row. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The first `n` elements and what remains without them, at most all; for a negative `n` the last -n
   and what remains without those. In the forms with _n a negative `n` counts as 0. */
QorArray* qor_array_take(const QorArray* array, int64_t n);
QorArray* qor_array_drop(const QorArray* array, int64_t n);
QorArray* qor_take_n(const QorArray* array, int64_t n);
QorArray* qor_drop_n(const QorArray* array, int64_t n);

/* The elements of `a` that are not in `b`, in order, repetitions included. */
QorArray* qor_array_diff(const QorArray* a, const QorArray* b);

/* Every element once, in the order of first occurrence. The second takes string arrays; of any
   other it gives none. */
QorArray* qor_array_unique(const QorArray* array);
QorArray* qor_array_unique_str(const QorArray* array);

/* Where the number first stands, -1 when nowhere. Whether it, or the string (null: ""), is there: 1
   or 0. */
int64_t qor_array_indexof(const QorArray* array, double value);
int qor_array_has_num(const QorArray* array, double value);
int qor_array_has_str(const QorArray* array, const char* value);

/* The elements of all rows in one array: a string array when all of them are strings. */
QorArray* qor_array_flatten(const QorArray* array);

#ifdef __cplusplus
}
#endif
