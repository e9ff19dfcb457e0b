/* Strings: NUL-terminated bytes.

   Every function that returns a string makes a new one for the caller, who ends it with
   qor_str_free; free() does, too, and leaves a byte string's length registered until a new string
   stands at its address. Arguments are never changed or freed. A null string is an empty one unless
   said otherwise. Positions and lengths are bytes, from 0.

   A byte string may hold NUL bytes: the host knows its length (qorrt_strlen). qor_chr(0), qor_mid,
   qor_mid_lax, qor_left, qor_right and qor_str_slice make them; qor_len_str, these cuts, qor_instr
   and the comparisons read them whole, as do copying and qor_str_concat. All other functions see
   the bytes up to the first NUL. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Frees a string, and makes the host forget its length if it was a byte string. Null is fine. */
void qor_str_free(char* s);

/* A copy of `s`; `a` followed by `b`. */
char* qor_str_str(const char* s);
char* qor_str_concat(const char* a, const char* b);

/* The length in bytes. */
int64_t qor_len_str(const char* s);

/* `count` bytes from `start`; all to the end when `count` is negative or too large. A `start`
   below 0 or past the end sets the error "MID: index out of range" (code 1) and gives ""; a
   start at the end is none. */
char* qor_mid(const char* s, int64_t start, int64_t count);

/* As qor_mid, but a negative start counts as 0 and one past the end gives "" without error. */
char* qor_mid_lax(const char* s, int64_t start, int64_t count);

/* The first `n` bytes, or all when `n` is negative or too large. */
char* qor_left(const char* s, int64_t n);

/* The last `n` bytes; a copy of `s` when `n` is its length or more. A negative `n` starts past the
   end: the error of qor_mid. */
char* qor_right(const char* s, int64_t n);

/* The first `n` bytes when `from_left` is non-zero, else the last `n`; `n` is clamped to 0..length.
 */
char* qor_str_slice(const char* s, int64_t n, int64_t from_left);

/* Where `needle` first occurs in `s`: 0 for an empty needle, -1 when absent or for a null argument.
 */
int64_t qor_instr(const char* s, const char* needle);

/* Length and bytes compared: 1 or 0. The same pointer is equal; null equals only null. */
int qor_str_eq(const char* a, const char* b);
int qor_str_ne(const char* a, const char* b);

/* -1, 0 or 1 by unsigned bytes, a prefix before what it begins; null before everything else. */
int qor_str_cmp(const char* a, const char* b);

/* ASCII letters mapped; all other bytes stay. */
char* qor_upper(const char* s);
char* qor_lower(const char* s);

/* White space (isspace) removed at both ends, at the start, at the end. */
char* qor_trim(const char* s);
char* qor_ltrim(const char* s);
char* qor_rtrim(const char* s);

/* Every occurrence of `find`, left to right and not overlapping, replaced by `with`; a copy of `s`
   when `find` is empty. */
char* qor_replace(const char* s, const char* find, const char* with);

/* `n` spaces; `s` repeated `n` times. "" when n is below 1. */
char* qor_space(int64_t n);
char* qor_str_repeat(const char* s, int64_t n);

/* `s` padded on the left / right to `width` bytes with `pad`, repeated and cut as needed (a null
   or empty pad is " "); a copy when `s` is that long already. The short forms pad with spaces. */
char* qor_lpad(const char* s, int64_t width, const char* pad);
char* qor_rpad(const char* s, int64_t width, const char* pad);
char* qor_lpad2(const char* s, int64_t width);
char* qor_rpad2(const char* s, int64_t width);

/* `s` with `t` put in at `position`, clamped to 0..length of `s`. */
char* qor_insert_str(const char* s, const char* t, int64_t position);

/* 1 when `s` starts / ends with `t` (every string does with ""), else 0. */
int qor_startswith(const char* s, const char* t);
int qor_endswith(const char* s, const char* t);

/* The pieces between the occurrences of `separator` as a new string array: one piece when there
   is none, also when the separator is empty. */
QorArray* qor_split(const char* s, const char* separator);

/* The characters of `s` as a new string array, told apart by their UTF-8 lead bytes alone: below
   0xC0 one byte, below 0xE0 two, below 0xF0 three, else four; the last is cut at the end of s. */
QorArray* qor_str_to_chars(const char* s);

/* The elements joined, `separator` between them (null: none). Numbers are in six significant
   digits ("%g"), a null string is "", a row is its elements joined likewise. "" when empty. */
char* qor_join_arr(const QorArray* array, const char* separator);

/* A string of the one byte that the low 8 bits of `code` name; code 0 gives a byte string of
   length 1. */
char* qor_chr(int64_t code);

/* The first byte, 0 when there is none. */
int qor_asc(const char* s);

#ifdef __cplusplus
}
#endif
