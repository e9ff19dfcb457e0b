// Walking arrays element by element, row by row.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include "runtime/internal/array_slots.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/cpu.h"
#include "runtime/internal/nesting.h"

namespace qor {

// The elements of an array as numbers; strings and rows count as 0.0.
class Numbers {
public:
  explicit Numbers(const QorArray* array) {
    values_ = slots_of(array);
    if (array == nullptr || (array->flags & string_flags) == 0)
      return;
    zeros_.assign(values_.size(), 0.0);
    values_ = zeros_;
  }
  Numbers(const Numbers&) = delete;
  Numbers& operator=(const Numbers&) = delete;

  const double* data() const { return values_.data(); }
  size_t size() const { return values_.size(); }
  double operator[](size_t i) const { return values_[i]; }

private:
  Vector<double> zeros_;
  std::span<const double> values_;
};

// A nested array of `length` rows, each made by `make_row(index)`.
template<typename MakeRow>
QorArray* new_rows(int64_t length, MakeRow make_row) {
  auto* result = new_uninitialised_array(length, QOR_FLAG_NESTED);
  for (int64_t i = 0; i < result->length; ++i)
    set_reference(result, i, make_row(i));
  return result;
}

// Calls `step` with every index below `length`.
template<typename Step>
void for_each_index(size_t length, const Step& step) {
  for (size_t i = 0; i < length; ++i)
    step(i);
}

// The same, vectorised as wide as the processor can: twice as wide as every processor can, which
// makes up for the call and the allocation around it in arrays of a thousand numbers
// (scripts/bench runtime_arrays).
#if defined(__x86_64__)
template<typename Step>
__attribute__((target("avx2"))) void for_each_index_avx2(size_t length, const Step& step) {
  for_each_index(length, step);
}
#endif

template<typename Step>
void for_each_index_widely(size_t length, const Step& step) {
#if defined(__x86_64__)
  if (has_avx2())
    return for_each_index_avx2(length, step);
#endif
  for_each_index(length, step);
}

// What `make` makes in as much stack as recursing into the arrays takes; empty when one of them
// holds itself.
template<typename Make>
QorArray* made_with_room_for(const QorArray* a, const QorArray* b, Make make) {
  QorArray* result = nullptr;
  const bool has_end = with_room_for(a, b, [&] { result = make(); });
  return has_end ? result : new_uninitialised_array(0, 0);
}

template<typename Function>
QorArray* mapped_below(const QorArray* array, Function function) {
  if (has_rows(array))
    return new_rows(array->length,
                    [=](int64_t i) { return mapped_below(row_of(array, i), function); });
  const Numbers values(array);
  auto* result = new_uninitialised_array(static_cast<int64_t>(values.size()), 0);
  std::transform(values.data(), values.data() + values.size(), result->data, function);
  return result;
}

// The function applied to every number.
template<typename Function>
QorArray* mapped(const QorArray* array, Function function) {
  return made_with_room_for(array, nullptr, [&] { return mapped_below(array, function); });
}

// `with_operation` calls what it is given with the binary operation that is meant, which lets the
// compiler see the operation inside the loop.
template<typename WithOperation>
QorArray* combined_with_scalar_below(const QorArray* array, double s, bool is_scalar_first,
                                     const WithOperation& with_operation) {
  if (has_rows(array))
    return new_rows(array->length, [&](int64_t i) {
      return combined_with_scalar_below(row_of(array, i), s, is_scalar_first, with_operation);
    });
  const Numbers values(array);
  auto* result = new_uninitialised_array(static_cast<int64_t>(values.size()), 0);
  with_operation([&](auto operation) {
    const auto* in = values.data();
    auto* out = result->data;
    if (is_scalar_first)
      for_each_index_widely(values.size(), [=](size_t i) { out[i] = operation(s, in[i]); });
    else
      for_each_index_widely(values.size(), [=](size_t i) { out[i] = operation(in[i], s); });
  });
  return result;
}

template<typename WithOperation>
QorArray* combined_with_scalar(const QorArray* array, double s, bool is_scalar_first,
                               const WithOperation& with_operation) {
  return made_with_room_for(array, nullptr, [&] {
    return combined_with_scalar_below(array, s, is_scalar_first, with_operation);
  });
}

template<typename WithOperation, typename CombinedStrings>
QorArray* combined_below(const QorArray* a, const QorArray* b, const WithOperation& with_operation,
                         const CombinedStrings& combined_strings) {
  if (has_strings(a) && has_strings(b))
    return combined_strings(a, b);
  const Numbers left(a);
  const Numbers right(b);
  const auto length = std::min(left.size(), right.size());
  if (has_rows(a) || has_rows(b))
    return new_rows(static_cast<int64_t>(length), [&](int64_t i) {
      const auto at = static_cast<size_t>(i);
      if (!has_rows(a))
        return combined_with_scalar_below(row_of(b, i), left[at], true, with_operation);
      if (!has_rows(b))
        return combined_with_scalar_below(row_of(a, i), right[at], false, with_operation);
      return combined_below(row_of(a, i), row_of(b, i), with_operation, combined_strings);
    });
  auto* result = new_uninitialised_array(static_cast<int64_t>(length), 0);
  with_operation([&](auto operation) {
    const auto* first = left.data();
    const auto* second = right.data();
    auto* out = result->data;
    for_each_index_widely(length, [=](size_t i) { out[i] = operation(first[i], second[i]); });
  });
  return result;
}

// `combined_strings` makes an array of two string arrays.
template<typename WithOperation, typename CombinedStrings>
QorArray* combined(const QorArray* a, const QorArray* b, const WithOperation& with_operation,
                   const CombinedStrings& combined_strings) {
  return made_with_room_for(a, b,
                            [&] { return combined_below(a, b, with_operation, combined_strings); });
}

template<typename Take>
void for_each_run_below(const QorArray* array, const Take& take) {
  if (!has_rows(array) && !has_strings(array))
    take(slots_of(array));
  for (int64_t i = 0; has_rows(array) && i < array->length; ++i)
    for_each_run_below(row_of(array, i), take);
}

// Calls `take` with the numbers of the array or, one after the other, of all its rows.
template<typename Take>
void for_each_run(const QorArray* array, const Take& take) {
  with_room_for(array, nullptr, [&] { for_each_run_below(array, take); });
}

} // namespace qor
