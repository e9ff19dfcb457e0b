// Reading and making arrays element by element, whatever they hold.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "runtime/array.h"
#include "runtime/value.h"

namespace kavo::host {

struct DeepFree {
  void operator()(QorArray* array) const { qor_array_free_deep(array); }
};
using OwnedArray = std::unique_ptr<QorArray, DeepFree>;

// One slot and what it holds (a value tag); whatever it refers to stays its array's.
struct Element {
  uint32_t tag;
  qor_slot slot;
};

inline int64_t length_of(const QorArray* array) {
  return array == nullptr ? 0 : array->length;
}

// `index` lies within the array. A null reference is an empty row or an empty text.
Element element_at(const QorArray* array, int64_t index);

bool is_number(const Element& element);
double number_in(const Element& element); // of a number

// Throws CommandError unless the argument is an array whose references can all be followed: not
// nested too deep (an array within itself is), not too large, and no number in place of a row.
void require_sound(int argument, const QorArray* array);

// A new text that keeps its NUL bytes.
char* new_text(std::string_view bytes);

// A new array with deep copies of the elements, and the flags and tags that they need.
OwnedArray array_of_copies(std::span<const Element> elements);

// A new nested array with `count` null rows, to be filled with set_row.
OwnedArray new_rows(int64_t count);
void set_row(QorArray* rows, int64_t index, OwnedArray row);

// A new string array with `count` null texts, to be filled with set_text.
OwnedArray new_texts(int64_t count);
void set_text(QorArray* texts, int64_t index, std::string_view bytes);

} // namespace kavo::host
