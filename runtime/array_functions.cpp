#include "runtime/array_functions.h"

#include <algorithm>
#include <functional>
#include <numeric>

#include "runtime/array.h"
#include "runtime/array_select.h"
#include "runtime/internal/elementwise.h"

namespace {

template<typename MakeString>
QorArray* new_strings(int64_t length, MakeString make_string) {
  auto* result = qor::new_string_array(length);
  for (int64_t i = 0; i < length; ++i)
    qor::set_string(result, i, make_string(i));
  return result;
}

template<typename Function>
QorArray* numbers_to_strings(const QorArray* array, Function function) {
  const qor::Numbers values(array);
  return new_strings(static_cast<int64_t>(values.size()),
                     [&](int64_t i) { return function(values[static_cast<size_t>(i)]); });
}

int64_t prefix_length(double (*predicate)(double), const QorArray* array) {
  const auto slots = qor::slots_of(array);
  return std::ranges::find(slots, 0.0, predicate) - slots.begin();
}

} // namespace

QorArray* qor_array_apply_ff(double (*function)(double), const QorArray* array) {
  return function == nullptr ? qor_array_new(0) : qor::mapped(array, function);
}

QorArray* qor_array_apply_ss(char* (*function)(const char*), const QorArray* array) {
  if (function == nullptr)
    return qor::new_string_array(0);
  return new_strings(qor_array_len(array), [=](int64_t i) {
    return function(qor::has_strings(array) ? qor_array_get_str(array, i) : "");
  });
}

QorArray* qor_array_apply_ifs(int64_t (*function)(double, const char*), const QorArray* array,
                              const char* s) {
  if (function == nullptr)
    return qor_array_new(0);
  return qor::mapped(array, [=](double x) { return static_cast<double>(function(x, s)); });
}

QorArray* qor_array_apply_sfi(char* (*function)(double, int64_t), const QorArray* array,
                              int64_t i) {
  if (function == nullptr)
    return qor::new_string_array(0);
  return numbers_to_strings(array, [=](double x) { return function(x, i); });
}

QorArray* qor_array_apply_sfii(char* (*function)(double, int64_t, int64_t), const QorArray* array,
                               int64_t i, int64_t j) {
  if (function == nullptr)
    return qor::new_string_array(0);
  return numbers_to_strings(array, [=](double x) { return function(x, i, j); });
}

QorArray* qor_array_apply_ffi(double (*function)(double, int64_t), const QorArray* array,
                              int64_t i) {
  if (function == nullptr)
    return qor_array_new(0);
  return qor::mapped(array, [=](double x) { return function(x, i); });
}

QorArray* qor_select_fn(double (*function)(double), const QorArray* array) {
  if (function == nullptr)
    return qor_array_new(0);
  auto* result = qor::new_uninitialised_array(qor_array_len(array), 0);
  std::ranges::transform(qor::slots_of(array), result->data, function);
  return result;
}

double qor_agg_fn(double (*function)(double, double), const QorArray* array, double start) {
  const auto slots = qor::slots_of(array);
  return function == nullptr ? 0.0 : std::accumulate(slots.begin(), slots.end(), start, function);
}

double qor_reduce_fn(double (*function)(double, double), const QorArray* array) {
  const auto slots = qor::slots_of(array);
  if (function == nullptr || slots.empty())
    return 0.0;
  return std::accumulate(slots.begin() + 1, slots.end(), slots.front(), function);
}

QorArray* qor_take_while_fn(double (*predicate)(double), const QorArray* array) {
  return predicate == nullptr ? qor_array_new(0)
                              : qor_take_n(array, prefix_length(predicate, array));
}

QorArray* qor_drop_while_fn(double (*predicate)(double), const QorArray* array) {
  return predicate == nullptr ? qor_array_new(0)
                              : qor_drop_n(array, prefix_length(predicate, array));
}

QorArray* qor_outer_fn(double (*function)(double, double), const QorArray* a, const QorArray* b) {
  if (function == nullptr)
    return qor::new_rows(0, [](int64_t) -> QorArray* { return nullptr; });
  const auto left = qor::slots_of(a);
  return qor::new_rows(std::ssize(left), [&](int64_t i) {
    const double x = left[static_cast<size_t>(i)];
    auto* row = qor::new_uninitialised_array(qor_array_len(b), 0);
    std::ranges::transform(qor::slots_of(b), row->data, [=](double y) { return function(x, y); });
    return row;
  });
}
