// Slots as references, and arrays whose slots are all about to be written.
#pragma once

#include <cstdint>
#include <span>

#include "runtime/value.h"

namespace qor {

inline constexpr uint32_t string_flags = QOR_FLAG_NESTED | QOR_FLAG_STRINGS;

// The numbers or bit patterns of an array; none for null.
inline std::span<const double> slots_of(const QorArray* array) {
  if (array == nullptr)
    return {};
  return {array->data, static_cast<size_t>(array->length)};
}

template<typename T>
T* reference_in(double slot) {
  return static_cast<T*>(qor_reference_in({.f64 = slot}));
}

inline double slot_of(const void* reference) {
  return qor_slot_of(reference).f64;
}

inline void set_reference(QorArray* array, int64_t index, const void* reference) {
  array->data[index] = slot_of(reference);
}

inline bool has_strings(const QorArray* array) {
  return array != nullptr && (array->flags & QOR_FLAG_STRINGS) != 0;
}

inline bool has_rows(const QorArray* array) {
  return array != nullptr && (array->flags & string_flags) == QOR_FLAG_NESTED;
}

inline bool is_tagged(const QorArray* array) {
  return array != nullptr && (array->flags & QOR_FLAG_TAGGED) != 0 && array->tags != nullptr;
}

// What a slot in range holds as its array declares it: tags first, then flags. STRING and ARRAY
// are references that the array owns; everything else it does not.
inline uint32_t reference_kind(const QorArray* array, int64_t index) {
  if (is_tagged(array))
    return array->tags[index];
  if (has_strings(array))
    return QOR_TAG_STRING;
  return has_rows(array) ? QOR_TAG_ARRAY : QOR_TAG_FLOAT64;
}

// The row in a slot in range; null when its tag says that it holds something else.
inline const QorArray* row_of(const QorArray* array, int64_t index) {
  return reference_kind(array, index) == QOR_TAG_ARRAY
             ? reference_in<const QorArray>(array->data[index])
             : nullptr;
}

// `length` slots of whatever the memory held; none when length is below 1.
QorArray* new_uninitialised_array(int64_t length, uint32_t flags);

// `length` null strings, each to be set.
QorArray* new_string_array(int64_t length);

// Puts an owned string into a slot that holds none.
inline void set_string(QorArray* array, int64_t index, char* owned) {
  set_reference(array, index, owned);
}

} // namespace qor
