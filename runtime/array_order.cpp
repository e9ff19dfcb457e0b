#include "runtime/array_order.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/array.h"
#include "runtime/internal/array_slots.h"
#include "runtime/internal/numbers.h"
#include "runtime/internal/stable_sort.h"
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

// The slots in order, each with what `payload` makes of its index.
template<typename Payload>
std::vector<qor::Sortable> sorted_numbers(const QorArray* array, Payload payload) {
  const auto slots = qor::slots_of(array);
  std::vector<qor::Sortable> items(slots.size());
  for (size_t i = 0; i < slots.size(); ++i)
    items[i] = {.key = qor::sort_key(slots[i]), .payload = payload(i)};
  for_each_part(slots, [&items](size_t first, size_t count) {
    qor::sort_stably(std::span(items).subspan(first, count));
  });
  return items;
}

// The same for numbers alone, where a list is short enough for the standard library's sort.
QorArray* new_sorted_short(const QorArray* array) {
  auto* result = qor_array_append_arr(array, nullptr);
  for_each_part(qor::slots_of(array), [result](size_t first, size_t count) {
    std::ranges::stable_sort(std::span(result->data + first, count));
  });
  return result;
}

template<typename Payload>
std::vector<qor::Sortable> sorted_strings(const QorArray* array, Payload payload) {
  std::vector<std::pair<std::string_view, double>> texts;
  for (size_t i = 0; i < static_cast<size_t>(array->length); ++i)
    texts.emplace_back(qor::bytes_of(qor_array_get_str(array, static_cast<int64_t>(i))),
                       payload(i));
  std::ranges::stable_sort(texts, {}, &std::pair<std::string_view, double>::first);
  std::vector<qor::Sortable> items(texts.size());
  std::ranges::transform(texts, items.begin(), [](const auto& text) {
    return qor::Sortable{.key = 0, .payload = text.second};
  });
  return items;
}

template<typename Payload>
QorArray* new_sorted(const QorArray* array, uint32_t flags, Payload payload) {
  const auto items =
      qor::has_strings(array) ? sorted_strings(array, payload) : sorted_numbers(array, payload);
  auto* result = qor::new_uninitialised_array(std::ssize(items), flags);
  std::ranges::transform(items, result->data, &qor::Sortable::payload);
  return result;
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
  constexpr int64_t shortest_for_radix = 4096;
  if (qor::has_rows(array))
    return new_copy(array);
  if (!qor::has_strings(array) && qor_array_len(array) < shortest_for_radix)
    return new_sorted_short(array);
  const auto slots = qor::slots_of(array);
  return new_sorted(array, array == nullptr ? 0 : array->flags,
                    [slots](size_t i) { return slots[i]; });
}

QorArray* qor_grade(const QorArray* array) {
  if (qor::has_rows(array))
    return qor_iota3(array->length, 0.0, 1.0);
  return new_sorted(array, 0, [](size_t i) { return static_cast<double>(i); });
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
