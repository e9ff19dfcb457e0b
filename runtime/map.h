/* Maps: dictionaries from text to tagged values, in insertion order. Finding and inserting take
   constant time.

   A null map or key makes every setter do nothing and every getter give its empty result; neither
   is an error, nor is an absent key. Keys differ in case. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Invariants: the first `count` entries of the three arrays belong together and keep insertion
   order; keys are unique copies; a STRING value is an owned copy. Capacity is 0 or 8 doubled.
   The block of `keys` also holds what they are found by: only this library adds entries. */
typedef struct QorMap {
  int64_t count;
  int64_t capacity;
  char** keys;
  qor_slot* values;
  uint32_t* tags;
} QorMap;

/* An empty map for the caller, who ends it with qor_map_free. */
QorMap* qor_map_new(void);

/* Frees the map, its keys and its strings, but no array or object that it refers to. */
void qor_map_free(QorMap* map);

/* Store a value under `key`, replacing value and tag of an existing entry. Strings are copied
   (null as ""); other references are kept as they are and stay their owner's. */
void qor_map_set_f64(QorMap* map, const char* key, double value);
void qor_map_set_str(QorMap* map, const char* key, const char* value);
void qor_map_set_tagged(QorMap* map, const char* key, uint32_t tag, qor_slot value);

/* The number under `key`; 0.0 when it is absent or a string. An INT64 entry gives its integer. */
double qor_map_get_f64(const QorMap* map, const char* key);

/* The text under `key` as a new string: a copy of a string, a number in six significant digits
   ("%g"), "" when absent or a reference. */
char* qor_map_get_str(const QorMap* map, const char* key);

/* The slot under `key` as a reference: an array or object, still its owner's, or the map's own
   string. Of a number these are the bits, which refer to nothing. Null when absent. */
void* qor_map_get_obj(const QorMap* map, const char* key);

/* The value under `key` in `*value` and its tag as the result: a string as a new copy (STRING);
   an array, object or host value as it is; anything else as a double (FLOAT64). Absent: a zero
   slot and 0. */
uint32_t qor_map_get_tagged(const QorMap* map, const char* key, qor_slot* value);

/* 1 when `key` is present, else 0. */
int qor_map_has(const QorMap* map, const char* key);

/* The map as new text, entries in order: {"name": "Ada", "age": 36, "list": ARRAY}. Numbers are
   in six significant digits; quotes, backslashes and control bytes in texts are escaped as in
   JSON; a reference is the name of its tag. A null map is {}. */
char* qor_map_str(const QorMap* map);

#ifdef __cplusplus
}
#endif
