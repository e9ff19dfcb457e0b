// What an array's slots refer to: their tags, ownership, shape and the extremes over all rows.
#include <algorithm>
#include <bit>
#include <functional>
#include <optional>
#include <utility>

#include "runtime/array.h"
#include "runtime/internal/array_slots.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/memory.h"
#include "runtime/internal/nesting.h"
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

// Marks an array that is met again within itself.
constexpr uint32_t being_freed = uint32_t{1} << 31U;

// Frees strings and shortens the array by each slot until that was a row, which is returned; null
// when there is no slot left.
QorArray* free_up_to_row(QorArray* array) {
  while (array->length > 0) {
    const auto index = --array->length;
    const auto kind = qor::reference_kind(array, index);
    if (kind == QOR_TAG_STRING)
      qor::free_string(qor::reference_in<char>(array->data[index]));
    if (kind != QOR_TAG_ARRAY)
      continue;
    auto* row = qor::reference_in<QorArray>(array->data[index]);
    if (row != nullptr && (row->flags & being_freed) == 0)
      return row;
  }
  return nullptr;
}

QorArray* new_deep_copy(const QorArray* array);

double copy_of_slot(const QorArray* array, int64_t index) {
  const double slot = array->data[index];
  switch (qor::reference_kind(array, index)) {
  case QOR_TAG_STRING: {
    const auto* s = qor::reference_in<const char>(slot);
    return s == nullptr ? slot : qor::slot_of(qor::new_whole_string(qor::bytes_of(s)));
  }
  case QOR_TAG_ARRAY:
    return qor::slot_of(new_deep_copy(qor::reference_in<const QorArray>(slot)));
  default:
    return slot;
  }
}

QorArray* new_deep_copy(const QorArray* array) {
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

// The number that no other precedes; NaN only when there is nothing else.
template<typename Precedes>
std::optional<double> first_by(const QorArray* array, Precedes precedes) {
  if (qor::has_strings(array))
    return {};
  std::optional<double> best;
  for (int64_t i = 0; i < qor_array_len(array); ++i) {
    const auto candidate = qor::has_rows(array) ? first_by(qor::row_of(array, i), precedes)
                                                : std::optional(array->data[i]);
    if (candidate && (!best || precedes(*candidate, *best) || *best != *best))
      best = candidate;
  }
  return best;
}

template<typename Precedes>
double extreme(const QorArray* array, Precedes precedes) {
  std::optional<double> found;
  qor::with_room_for(array, nullptr, [&] { found = first_by(array, precedes); });
  return found.value_or(0.0);
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

// From the last slot to the first. The slot that a row is freed from keeps the way back: the array
// above it. So this takes no stack and no memory, however deep the rows are nested.
void qor_array_free_deep(QorArray* array) {
  QorArray* above = nullptr;
  while (array != nullptr) {
    array->flags |= being_freed;
    if (auto* row = free_up_to_row(array); row != nullptr) {
      array->data[array->length] = qor::slot_of(above);
      above = std::exchange(array, row);
      continue;
    }
    qor_array_free(std::exchange(array, above));
    if (array != nullptr)
      above = qor::reference_in<QorArray>(array->data[array->length]);
  }
}

QorArray* qor_array_copy_deep(const QorArray* array) {
  QorArray* copy = nullptr;
  const bool has_end = qor::with_room_for(array, nullptr, [&] { copy = new_deep_copy(array); });
  return has_end ? copy : qor_array_new(0);
}

double qor_array_min(const QorArray* array) {
  return extreme(array, std::less<>());
}

double qor_array_max(const QorArray* array) {
  return extreme(array, std::greater<>());
}

QorArray* qor_array_len_shape(const QorArray* array) {
  if (qor::room_for(array, nullptr).is_endless)
    array = nullptr;
  qor::Vector<double> lengths{static_cast<double>(qor_array_len(array))};
  while (qor::has_rows(array) && array->length > 0) {
    array = qor::row_of(array, 0);
    lengths.push_back(static_cast<double>(qor_array_len(array)));
  }
  auto* shape = qor::new_uninitialised_array(std::ssize(lengths), 0);
  std::ranges::copy(lengths, shape->data);
  return shape;
}
