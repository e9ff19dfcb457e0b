/* Values: the tags that say what an 8-byte slot holds, the slot itself and the array record. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The numbers cross into the host library and never change. */
enum {
  QOR_TAG_INT64 = 0,   /* a signed 64-bit integer */
  QOR_TAG_FLOAT64 = 1, /* an IEEE double */
  QOR_TAG_STRING = 2,  /* a pointer to a NUL-terminated byte string */
  QOR_TAG_ARRAY = 3,   /* a pointer to a QorArray */
  QOR_TAG_OBJECT = 4,  /* a pointer to a map or a record */
  QOR_TAG_FUNCREF = 5, /* a pointer to a function */
  QOR_TAG_HOST = 6     /* an opaque value that the host library owns */
};

/* What the slots of an array are. */
enum {
  QOR_FLAG_NESTED = 1u,  /* slots are references: rows, or strings together with QOR_FLAG_STRINGS */
  QOR_FLAG_STRINGS = 2u, /* the references are strings; set together with QOR_FLAG_NESTED */
  QOR_FLAG_BOOLS = 4u,   /* elements are booleans */
  QOR_FLAG_TAGGED = 8u   /* `tags` is present and says what each slot holds */
};

/* Invariants: `data` holds exactly `length` slots of 8 bytes, each a double or a pointer;
   `tags` is null or holds `length` bytes. Record, slots and tags are three malloc blocks. */
typedef struct QorArray {
  double* data;
  int64_t length;
  uint32_t flags;
  uint8_t* tags;
} QorArray;

/* One argument of a host command; its tag says which member is meant. */
typedef union qor_slot {
  double f64;
  int64_t i64;
  const char* str;
  QorArray* arr;
  void* ptr;
} qor_slot;

/* The slot of a reference and the reference in a slot. All eight bytes hold the address as a
   number, on machines of 32 and of 64 bits; null is 0. Writing a slot's pointer members leaves
   half of it unwritten on a machine of 32 bits: slots are written here. */
static inline qor_slot qor_slot_of(const void* reference) {
  qor_slot slot;
  slot.i64 = (int64_t)(uintptr_t)reference;
  return slot;
}

static inline void* qor_reference_in(qor_slot slot) {
  return (void*)(uintptr_t)slot.i64;
}

#ifdef __cplusplus
}
#endif
