// Runtime values from and to the standard library's, so that a test says in one line what it means.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "runtime/array.h"
#include "runtime/text.h"

namespace kavo::test {

struct FreeArray {
  void operator()(QorArray* array) const { qor_array_free(array); }
};
struct FreeArrayDeep {
  void operator()(QorArray* array) const { qor_array_free_deep(array); }
};

// An array, and one that owns its rows and strings.
using Array = std::unique_ptr<QorArray, FreeArray>;
using DeepArray = std::unique_ptr<QorArray, FreeArrayDeep>;

inline Array own(QorArray* array) {
  return Array(array);
}
inline DeepArray own_deep(QorArray* array) {
  return DeepArray(array);
}

inline Array numbers(const std::vector<double>& values) {
  auto array = own(qor_array_new(std::ssize(values)));
  for (int64_t i = 0; i < std::ssize(values); ++i)
    qor_array_set(array.get(), i, values[static_cast<size_t>(i)]);
  return array;
}

inline DeepArray strings(const std::vector<std::string>& values) {
  auto array = own_deep(qor_array_new(std::ssize(values)));
  qor_array_set_string_elems(array.get());
  for (int64_t i = 0; i < std::ssize(values); ++i) {
    auto* copy = qor_str_concat(values[static_cast<size_t>(i)].c_str(), "");
    qor_array_set(array.get(), i, qor_slot_of(copy).f64);
  }
  return array;
}

inline DeepArray rows(const std::vector<std::vector<double>>& values) {
  auto array = own_deep(qor_array_new(std::ssize(values)));
  qor_array_set_nested(array.get());
  for (int64_t i = 0; i < std::ssize(values); ++i) {
    auto* row = numbers(values[static_cast<size_t>(i)]).release();
    qor_array_set(array.get(), i, qor_slot_of(row).f64);
  }
  return array;
}

inline std::vector<double> to_vector(const QorArray* array) {
  std::vector<double> values;
  for (int64_t i = 0; i < qor_array_len(array); ++i)
    values.push_back(qor_array_get(array, i));
  return values;
}

// All bytes of a string, up to its registered length.
inline std::string to_string(const char* s) {
  return s == nullptr ? "(null)" : std::string(s, static_cast<size_t>(qor_len_str(s)));
}

inline std::vector<std::string> to_strings(const QorArray* array) {
  std::vector<std::string> values;
  for (int64_t i = 0; i < qor_array_len(array); ++i)
    values.push_back(to_string(qor_array_get_str(array, i)));
  return values;
}

inline std::vector<std::vector<double>> to_rows(const QorArray* array) {
  std::vector<std::vector<double>> values;
  for (int64_t i = 0; i < qor_array_len(array); ++i)
    values.push_back(to_vector(static_cast<QorArray*>(qor_array_get_ptr(array, i))));
  return values;
}

// These take over what they are given.
inline std::string take(char* s) {
  auto text = to_string(s);
  qor_str_free(s);
  return text;
}

inline std::vector<double> take_numbers(QorArray* array) {
  return to_vector(own(array).get());
}

inline std::vector<std::string> take_strings(QorArray* array) {
  return to_strings(own_deep(array).get());
}

inline std::vector<std::vector<double>> take_rows(QorArray* array) {
  return to_rows(own_deep(array).get());
}

using Numbers = std::vector<double>;
using Strings = std::vector<std::string>;
using Rows = std::vector<std::vector<double>>;

} // namespace kavo::test
