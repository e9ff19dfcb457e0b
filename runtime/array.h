/* Arrays: one-dimensional runs of 8-byte slots that hold numbers, strings or further arrays. A
   matrix is an array of row arrays.

   Every function that returns an array makes a new record that belongs to the caller; arguments
   are never changed, but for the setters and the two pops, which work in place. A null array is
   an empty one. Indexes start at 0; reading out of range gives 0.0 (or null, or ""), writing out
   of range does nothing, and neither is an error. */
#ifndef QOR_ARRAY_H
#define QOR_ARRAY_H

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* `count` slots of 0.0 (both) or 1.0; none when count is below 1. */
QorArray* qor_array_new(int64_t count);
QorArray* qor_zeros(int64_t count);
QorArray* qor_ones(int64_t count);

/* Frees the record, its slots and its tags, but nothing that the slots refer to. */
void qor_array_free(QorArray* array);

/* Frees the array and all that it owns: rows of a nested array, recursively, and the strings of a
   string array. A slot that two arrays share must have been made independent before. */
void qor_array_free_deep(QorArray* array);

/* A copy that shares nothing with the original: rows and strings are copied too. Null stays null. */
QorArray* qor_array_copy_deep(const QorArray* array);

#ifdef __cplusplus
}
#endif

#endif
