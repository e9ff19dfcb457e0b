// What an array's slots refer to: their tags, ownership, shape and the extremes over all rows.
#include <algorithm>
#include <bit>
#include <functional>
#include <optional>

#include "runtime/array.h"
#include "runtime/internal/array_slots.h"
#include "runtime/internal/memory.h"
#include "runtime/internal/strings.h"
#include "runtime/text.h"

namespace {

// A non-null pointer of a user process, minus 1, is below this; arm64's addresses have one bit
// more. Every number a program handles has a bit pattern far above it: small integers too, since
// they are stored as doubles.
#ifdef __aarch64__
constexpr uint64_t reference_bound = 0xFFFFFFFFFFFF;
#else
constexpr uint64_t reference_bound = 0x7FFFFFFFFFFF;
#endif

bool looks_like_reference(double slot) {
  return std::bit_cast<uint64_t>(slot) - 1 < reference_bound;
}

uint32_t tag_by_pattern(const QorArray* array, double slot) {
  if (!looks_like_reference(slot))
    return QOR_TAG_FLOAT64;
  return qor::has_strings(array) ? QOR_TAG_STRING : QOR_TAG_ARRAY;
}

double copy_of_slot(const QorArray* array, int64_t index) {
  const double slot = array->data[index];
  switch (qor::reference_kind(array, index)) {
  case QOR_TAG_STRING: {
    const auto* s = qor::reference_in<const char>(slot);
    return s == nullptr ? slot : qor::slot_of(qor::new_whole_string(qor::bytes_of(s)));
  }
  case QOR_TAG_ARRAY:
    return qor::slot_of(qor_array_copy_deep(qor::reference_in<const QorArray>(slot)));
  default:
    return slot;
  }
}

// The number that no other precedes; NaN only when there is nothing else.
template<typename Precedes>
std::optional<double> first_by(const QorArray* array, Precedes precedes) {
  if (qor::has_strings(array))
    return {};
  std::optional<double> best;
  for (const double slot : qor::slots_of(array)) {
    const auto candidate = qor::has_rows(array)
                               ? first_by(qor::reference_in<const QorArray>(slot), precedes)
                               : std::optional(slot);
    if (candidate && (!best || precedes(*candidate, *best) || *best != *best))
      best = candidate;
  }
  return best;
}

} // namespace

double qor_array_get_tagged(const QorArray* array, int64_t index, uint32_t* tag) {
  const bool in_range = index >= 0 && index < qor_array_len(array);
  const double slot = in_range ? array->data[index] : 0.0;
  if (tag != nullptr)
    *tag = in_range && qor::is_tagged(array) ? array->tags[index] : tag_by_pattern(array, slot);
  return slot;
}

uint32_t qor_array_classify_elem(const QorArray* array, double value) {
  if (qor::is_tagged(array)) {
    const auto slots = qor::slots_of(array);
    const auto found = std::ranges::find_if(slots, [value](double slot) {
      return slot == value || std::bit_cast<uint64_t>(slot) == std::bit_cast<uint64_t>(value);
    });
    if (found != slots.end())
      return array->tags[found - slots.begin()];
  }
  return tag_by_pattern(array, value);
}

void qor_array_free_deep(QorArray* array) {
  const auto length = qor_array_len(array);
  for (int64_t i = 0; i < length; ++i) {
    const auto kind = qor::reference_kind(array, i);
    if (kind == QOR_TAG_STRING)
      qor::free_string(qor::reference_in<char>(array->data[i]));
    else if (kind == QOR_TAG_ARRAY)
      qor_array_free_deep(qor::reference_in<QorArray>(array->data[i]));
  }
  qor_array_free(array);
}

QorArray* qor_array_copy_deep(const QorArray* array) {
  if (array == nullptr)
    return nullptr;
  auto* copy = qor::new_uninitialised_array(array->length, array->flags);
  for (int64_t i = 0; i < array->length; ++i)
    copy->data[i] = copy_of_slot(array, i);
  if (array->tags != nullptr) {
    copy->tags = static_cast<uint8_t*>(qor::allocate(static_cast<size_t>(array->length)));
    std::copy_n(array->tags, array->length, copy->tags);
  }
  return copy;
}

double qor_array_min(const QorArray* array) {
  return first_by(array, std::less<>()).value_or(0.0);
}

double qor_array_max(const QorArray* array) {
  return first_by(array, std::greater<>()).value_or(0.0);
}

QorArray* qor_array_len_shape(const QorArray* array) {
  auto* shape = qor_array_new(1);
  shape->data[0] = static_cast<double>(qor_array_len(array));
  while (qor::has_rows(array) && array->length > 0) {
    array = qor::reference_in<const QorArray>(array->data[0]);
    auto* longer = qor_array_append(shape, static_cast<double>(qor_array_len(array)));
    qor_array_free(shape);
    shape = longer;
  }
  return shape;
}
