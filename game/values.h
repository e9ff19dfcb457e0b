// Owning handles for the runtime's arrays and texts, so that nothing that a frame makes outlives
// it, and the few ways in which the game reads and writes their elements.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <utility>

#include "runtime/qor.h"

namespace kavo {

struct TextDeleter {
  void operator()(char* text) const { qor_str_free(text); }
};

// A text that the game owns; null reads as "".
using Text = std::unique_ptr<char, TextDeleter>;

// An array that the game owns, with its rows and strings.
struct ArrayDeleter {
  void operator()(QorArray* array) const { qor_array_free_deep(array); }
};
using Array = std::unique_ptr<QorArray, ArrayDeleter>;

// An array whose rows belong to another one: only the record is freed.
struct SharedRowsDeleter {
  void operator()(QorArray* array) const { qor_array_free(array); }
};
using SharedRows = std::unique_ptr<QorArray, SharedRowsDeleter>;

// A value whose kind is known only at run time.
struct Dynamic {
  qor_slot slot{};
  uint32_t tag = QOR_TAG_INT64;
};

// The element with its kind; out of range it is the number 0. Strings and rows stay the array's.
Dynamic element(const QorArray* array, int64_t index);

// The value as a number: texts by their leading number, host values through the host, arrays and
// objects as 0.
double as_number(const Dynamic& value);

// The element as a number, by the same rules.
double number_at(const QorArray* array, int64_t index);

// The cell of a nested array in this row and column, as a number; 0 outside.
double cell_at(const QorArray* matrix, int64_t row, int64_t column);

// Writes a cell of a nested array; outside of it nothing happens.
void put_cell(const QorArray* matrix, int64_t row, int64_t column, double value);
void put_cell(const QorArray* matrix, int64_t row, int64_t column, const Dynamic& value);

inline bool is_occupied(const QorArray* matrix, int64_t row, int64_t column) {
  return cell_at(matrix, row, column) != 0.0;
}

Array zeros(int64_t count);
Array zero_matrix(int64_t rows, int64_t columns);
Array numbers(std::initializer_list<double> values);

// `count` copies of `text`.
Array texts(int64_t count, const char* text);

// Puts a copy of `text` into a slot of an array of texts and frees what stood there.
void put_text(QorArray* array, int64_t index, const char* text);

// The rows in reverse order, still owned by `matrix`.
SharedRows reversed_rows(const Array& matrix);

// The same rows in reverse order; the old record is freed.
Array reverse_rows(Array matrix);

Text copy(const char* text);
Text concat(const char* first, const char* second);
Text label(const char* text, int64_t number);

inline const char* chars(const Text& text) {
  return text ? text.get() : "";
}

// NaN is the runtime's "no value" and counts as not set.
inline bool is_set(double value) {
  return value < 0.0 || value > 0.0;
}

// Integer remainder of a / b, and the divisor b of a real division; both end the program when b
// is 0.
int64_t remainder_of(int64_t a, int64_t b);
double divisor(int64_t b);

} // namespace kavo
