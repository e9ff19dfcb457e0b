#include "runtime/array.h"

#include <algorithm>
#include <cstdlib>

#include "runtime/internal/array_slots.h"
#include "runtime/internal/memory.h"
#include "runtime/internal/numbers.h"
#include "runtime/internal/strings.h"

namespace {

bool is_index(const QorArray* array, int64_t index) {
  return array != nullptr && index >= 0 && index < array->length;
}

uint32_t flags_of(const QorArray* array) {
  return array == nullptr ? 0 : array->flags;
}

// Copies the slots of `source` into `result` from slot `first` on.
void copy_slots(QorArray* result, int64_t first, const QorArray* source) {
  std::ranges::copy(qor::slots_of(source), result->data + first);
}

uint8_t* new_tags(const QorArray* array, int64_t length) {
  auto* tags = static_cast<uint8_t*>(qor::allocate_zeroed(static_cast<size_t>(length), 1));
  if (array != nullptr && array->tags != nullptr)
    std::copy_n(array->tags, array->length, tags);
  return tags;
}

} // namespace

QorArray* qor::new_uninitialised_array(int64_t length, uint32_t flags) {
  auto* array = static_cast<QorArray*>(allocate(sizeof(QorArray)));
  const auto count = static_cast<size_t>(std::max<int64_t>(length, 0));
  *array = {.data = static_cast<double*>(allocate_many(count, sizeof(double))),
            .length = static_cast<int64_t>(count),
            .flags = flags,
            .tags = nullptr};
  return array;
}

QorArray* qor_array_new(int64_t count) {
  auto* array = static_cast<QorArray*>(qor::allocate(sizeof(QorArray)));
  const auto length = static_cast<size_t>(std::max<int64_t>(count, 0));
  *array = {.data = static_cast<double*>(qor::allocate_zeroed(length, sizeof(double))),
            .length = static_cast<int64_t>(length),
            .flags = 0,
            .tags = nullptr};
  return array;
}

QorArray* qor::new_string_array(int64_t length) {
  auto* array = qor_array_new(length);
  qor_array_set_string_elems(array);
  return array;
}

QorArray* qor_zeros(int64_t count) {
  return qor_array_new(count);
}

QorArray* qor_ones(int64_t count) {
  auto* array = qor::new_uninitialised_array(count, 0);
  std::fill_n(array->data, array->length, 1.0);
  return array;
}

void qor_array_free(QorArray* array) {
  if (array == nullptr)
    return;
  std::free(array->data);
  std::free(array->tags);
  std::free(array);
}

void qor_array_set(QorArray* array, int64_t index, double value) {
  if (is_index(array, index))
    array->data[index] = value;
}

double qor_array_get(const QorArray* array, int64_t index) {
  return is_index(array, index) ? array->data[index] : 0.0;
}

void* qor_array_get_ptr(const QorArray* array, int64_t index) {
  return qor::reference_in<void>(qor_array_get(array, index));
}

const char* qor_array_get_str(const QorArray* array, int64_t index) {
  const auto* s = qor::reference_in<const char>(qor_array_get(array, index));
  return s == nullptr ? "" : s;
}

int64_t qor_array_len(const QorArray* array) {
  return array == nullptr ? 0 : array->length;
}

QorArray* qor_array_append(const QorArray* array, double value) {
  const auto length = qor_array_len(array);
  auto* result = qor::new_uninitialised_array(length + 1, flags_of(array));
  copy_slots(result, 0, array);
  result->data[length] = value;
  if (array != nullptr && array->tags != nullptr)
    result->tags = new_tags(array, length + 1);
  return result;
}

QorArray* qor_array_append_tagged(const QorArray* array, uint32_t tag, double value) {
  const auto length = qor_array_len(array);
  auto* result = qor::new_uninitialised_array(length + 1, flags_of(array) | QOR_FLAG_TAGGED);
  copy_slots(result, 0, array);
  result->data[length] = value;
  result->tags = new_tags(array, length + 1);
  result->tags[length] = static_cast<uint8_t>(tag);
  return result;
}

QorArray* qor_array_append_arr(const QorArray* a, const QorArray* b) {
  auto* result =
      qor::new_uninitialised_array(qor_array_len(a) + qor_array_len(b), flags_of(a) | flags_of(b));
  copy_slots(result, 0, a);
  copy_slots(result, qor_array_len(a), b);
  return result;
}

QorArray* qor_array_reverse(const QorArray* array) {
  auto* result = qor::new_uninitialised_array(qor_array_len(array), flags_of(array));
  std::ranges::reverse_copy(qor::slots_of(array), result->data);
  return result;
}

double qor_array_pop(QorArray* array) {
  if (qor_array_len(array) == 0)
    return 0.0;
  array->length -= 1;
  return array->data[array->length];
}

char* qor_array_pop_str(QorArray* array) {
  const auto* s = qor::reference_in<const char>(qor_array_pop(array));
  return qor::new_whole_string(qor::bytes_of(s));
}

QorArray* qor_array_gather(const QorArray* array, const QorArray* indexes) {
  auto* result = qor::new_uninitialised_array(qor_array_len(indexes), flags_of(array));
  std::ranges::transform(qor::slots_of(indexes), result->data, [array](double index) {
    return qor_array_get(array, qor::truncate_to_int64(index));
  });
  return result;
}

void qor_array_set_nested(QorArray* array) {
  if (array != nullptr)
    array->flags |= QOR_FLAG_NESTED;
}

void qor_array_set_string_elems(QorArray* array) {
  if (array != nullptr)
    array->flags |= qor::string_flags;
}

void qor_array_set_bool_elems(QorArray* array) {
  if (array != nullptr)
    array->flags |= QOR_FLAG_BOOLS;
}

int qor_array_is_nested(const QorArray* array) {
  return (flags_of(array) & QOR_FLAG_NESTED) != 0 ? 1 : 0;
}

QorArray* qor_filter_fn(double (*predicate)(double), const QorArray* array) {
  if (predicate == nullptr || array == nullptr)
    return qor_array_new(0);
  const auto keeps = [predicate](double slot) { return predicate(slot) != 0.0; };
  const auto slots = qor::slots_of(array);
  auto* result = qor_array_new(std::ranges::count_if(slots, keeps));
  result->flags = array->flags & ~uint32_t{QOR_FLAG_TAGGED};
  int64_t kept = 0;
  for (const double slot : slots)
    if (keeps(slot) && kept < result->length)
      result->data[kept++] = slot;
  return result;
}
