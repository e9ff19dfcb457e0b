/* Arrays: one-dimensional runs of 8-byte slots that hold numbers, strings or further arrays. A
   matrix is an array of row arrays.

   Every function that returns an array makes a new record that belongs to the caller; arguments
   are never changed, but for the setters and the two pops, which work in place. References are
   copied as they are: a reversed array of rows shares its rows with the original. An array's
   strings are malloc blocks of their own and end with qor_str_free or free(), one by one, or with
   qor_array_free_deep.

   A null array is an empty one. Indexes start at 0; reading out of range gives 0.0 (or null, or
   ""), writing out of range does nothing, and neither is an error. */
#pragma once

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
   string array; in a tagged array what each slot's tag says. Objects, functions and host values
   stay. A slot that two arrays share must have been made independent before. */
void qor_array_free_deep(QorArray* array);

/* A copy that shares nothing with the original: rows and strings are copied too (objects,
   functions and host values are not). Null stays null. */
QorArray* qor_array_copy_deep(const QorArray* array);

/* Stores a number; the slot's tag, if it has one, stays. */
void qor_array_set(QorArray* array, int64_t index, double value);

/* The slot as a number. */
double qor_array_get(const QorArray* array, int64_t index);

/* The slot as a reference that stays the array's. */
void* qor_array_get_ptr(const QorArray* array, int64_t index);

/* The slot as a string that stays the array's; a shared "" out of range and for a null slot. */
const char* qor_array_get_str(const QorArray* array, int64_t index);

/* The slot, with its tag in `*tag` (which may be null): the stored tag of a tagged array; else
   FLOAT64 unless the bit pattern looks like a reference, which is a STRING in a string array and
   an ARRAY otherwise. Out of range: 0.0 and FLOAT64. */
double qor_array_get_tagged(const QorArray* array, int64_t index, uint32_t* tag);

/* The tag of the first slot of a tagged array that equals `value`; otherwise what
   qor_array_get_tagged would say of `value` in an array with these flags. */
uint32_t qor_array_classify_elem(const QorArray* array, double value);

/* The number of slots, 0 for null. */
int64_t qor_array_len(const QorArray* array);

/* The slots and one more. Flags are kept; where there are tags the new slot's is INT64. */
QorArray* qor_array_append(const QorArray* array, double value);

/* The slots and one more under `tag`; the result is always tagged. `value` is the slot's bit
   pattern. Slots that had no tag before get tag 0. */
QorArray* qor_array_append_tagged(const QorArray* array, uint32_t tag, double value);

/* The slots of `a`, then those of `b`. Flags are those of both; tags are not carried. */
QorArray* qor_array_append_arr(const QorArray* a, const QorArray* b);

/* The slots in reverse order. Flags are kept; tags are not carried. */
QorArray* qor_array_reverse(const QorArray* array);

/* Removes the last slot and returns it; 0.0 when there is none. */
double qor_array_pop(QorArray* array);

/* Removes the last slot and returns a new copy of its string; a new "" when there is none or it is
   null. The removed string itself is not freed: other arrays may share it. Its owner, when that is
   the array alone, fetches it with qor_array_get_str before and frees it after. */
char* qor_array_pop_str(QorArray* array);

/* One slot for each of `indexes` (numbers, truncated toward zero): the slot there, or 0.0 when
   that is out of range. Flags are kept; tags are not carried. */
QorArray* qor_array_gather(const QorArray* array, const QorArray* indexes);

/* The smallest and the largest number, of a nested array over all its rows; 0.0 when there is
   none. NaN never wins against a number. */
double qor_array_min(const QorArray* array);
double qor_array_max(const QorArray* array);

/* Say what the slots are, in place. */
void qor_array_set_nested(QorArray* array);
void qor_array_set_string_elems(QorArray* array);
void qor_array_set_bool_elems(QorArray* array);

/* 1 when the slots are references (rows or strings), else 0. */
int qor_array_is_nested(const QorArray* array);

/* The lengths of the array, of its first row, of that row's first row, and so on. A null array has
   the shape [0]. */
QorArray* qor_array_len_shape(const QorArray* array);

/* The slots for which `predicate` gives a non-zero number, in order. It is called twice for every
   slot, once to count and once to keep, and must answer alike; of a nested array it gets the
   slot's bit pattern. Flags are kept but for QOR_FLAG_TAGGED; tags are not carried. A null
   predicate keeps nothing. */
QorArray* qor_filter_fn(double (*predicate)(double), const QorArray* array);

#ifdef __cplusplus
}
#endif
