#include "runtime/array_order.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <span>
#include <string_view>
#include <utility>

#include "runtime/array.h"
#include "runtime/internal/array_slots.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/numbers.h"
#include "runtime/internal/strings.h"

namespace {

// Calls `sort` with each part that a NaN begins or ends: no number moves past a NaN, nor a NaN past
// anything.
template<typename Sort>
void for_each_part(std::span<const double> slots, Sort sort) {
  const auto is_nan = [](double slot) { return slot != slot; };
  if (std::ranges::count_if(slots, is_nan) == 0) // which the compiler vectorises
    return sort(0, slots.size());
  size_t first = 0;
  for (size_t i = 0; i < slots.size(); ++i)
    if (std::isnan(slots[i])) {
      sort(first, i - first);
      first = i + 1;
    }
  sort(first, slots.size() - first);
}

// Sorts indexes in the order of what they stand for, which does not move.
template<typename ValueAt>
void sort_indexes(std::span<double> indexes, ValueAt value_at) {
  std::ranges::stable_sort(indexes, std::less<>(),
                           [&](double index) { return value_at(static_cast<size_t>(index)); });
}

void grade_numbers(std::span<double> indexes, std::span<const double> slots) {
  for_each_part(slots, [=](size_t first, size_t count) {
    sort_indexes(indexes.subspan(first, count), [slots](size_t i) { return slots[i]; });
  });
}

void grade_strings(std::span<double> indexes, std::span<const double> slots) {
  qor::Vector<std::string_view> texts(slots.size());
  std::ranges::transform(slots, texts.begin(), [](double slot) {
    return qor::bytes_of(qor::reference_in<const char>(slot));
  });
  sort_indexes(indexes, [&texts](size_t i) { return texts[i]; });
}

QorArray* new_copy(const QorArray* array) {
  return qor_array_append_arr(array, nullptr);
}

} // namespace

QorArray* qor_iota(int64_t n) {
  return qor_iota3(n, 1.0, 1.0);
}

QorArray* qor_iota3(int64_t n, double start, double step) {
  auto* result = qor::new_uninitialised_array(n, 0);
  for (int64_t i = 0; i < result->length; ++i)
    result->data[i] = start + static_cast<double>(i) * step;
  return result;
}

QorArray* qor_linspace(double start, double stop, int64_t n) {
  return qor_iota3(n, start, n > 1 ? (stop - start) / static_cast<double>(n - 1) : 0.0);
}

QorArray* qor_range(double start, double stop, double step) {
  constexpr double tolerance = 1e-9;
  const double steps = std::floor((stop - start) / step + tolerance);
  return qor_iota3(steps >= 0.0 && step != 0.0 ? qor::truncate_to_int64(steps + 1.0) : 0, start,
                   step);
}

QorArray* qor_array_sort(const QorArray* array) {
  if (qor::has_strings(array)) {
    auto* order = qor_grade(array);
    auto* sorted = qor_array_gather(array, order);
    qor_array_free(order);
    return sorted;
  }
  auto* sorted = new_copy(array);
  if (!qor::has_rows(array))
    for_each_part(qor::slots_of(array), [sorted](size_t first, size_t count) {
      std::ranges::stable_sort(std::span(sorted->data + first, count));
    });
  return sorted;
}

QorArray* qor_grade(const QorArray* array) {
  auto* order = qor_iota3(qor_array_len(array), 0.0, 1.0);
  const std::span<double> indexes(order->data, static_cast<size_t>(order->length));
  if (qor::has_strings(array))
    grade_strings(indexes, qor::slots_of(array));
  else if (!qor::has_rows(array))
    grade_numbers(indexes, qor::slots_of(array));
  return order;
}

// Fisher and Yates, from the end.
QorArray* qor_array_shuffle(const QorArray* array) {
  auto* result = new_copy(array);
  for (int64_t i = result->length - 1; i >= 1; --i) {
    const int64_t j = std::rand() % (i + 1);
    std::swap(result->data[i], result->data[j]);
  }
  return result;
}
