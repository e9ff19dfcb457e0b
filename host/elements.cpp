#include "host/elements.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "host/command.h"
#include "runtime/qorrt.h"

namespace kavo::host {

namespace {

constexpr int deepest = 64;
constexpr int64_t most_elements = 1 << 20;

bool is_nested(const QorArray& array) {
  return (array.flags & QOR_FLAG_NESTED) != 0;
}

// User-space addresses lie below 2^48 (arm64's use all of them); the bits of any number but zero
// and the smallest denormals lie above.
bool could_be_reference(double slot) {
  return std::bit_cast<uint64_t>(slot) < (uint64_t{1} << 48U);
}

uint32_t tag_of(const QorArray& array, int64_t index) {
  if ((array.flags & QOR_FLAG_TAGGED) != 0 && array.tags != nullptr)
    return array.tags[index];
  if (!is_nested(array))
    return QOR_TAG_FLOAT64;
  return (array.flags & QOR_FLAG_STRINGS) != 0 ? QOR_TAG_STRING : QOR_TAG_ARRAY;
}

bool is_reference(uint32_t tag) {
  return tag == QOR_TAG_STRING || tag == QOR_TAG_ARRAY;
}

// Walks an array and all that is below it, with a bound on what it visits.
class Inspection {
public:
  explicit Inspection(int argument) : argument_(argument) {}

  void visit(const QorArray& array, int depth) {
    if (depth > deepest)
      refuse("must not be nested deeper than " + std::to_string(deepest) + " levels");
    if (array.length < 0)
      refuse("must not have a negative length, but one is " + std::to_string(array.length));
    elements_ += std::min(array.length, most_elements + 1);
    if (elements_ > most_elements)
      refuse("must not hold more than " + std::to_string(most_elements) + " elements");
    if (array.length > 0 && array.data == nullptr)
      refuse("has a length of " + std::to_string(array.length) + " but no elements");
    for (int64_t i = 0; i < array.length; ++i)
      visit_element(array, i, depth);
  }

private:
  void visit_element(const QorArray& array, int64_t index, int depth) {
    const Element element = element_at(&array, index);
    if (is_reference(element.tag) && !could_be_reference(array.data[index]))
      refuse("is said to hold references, but element " + std::to_string(index) +
             " is the number " + shown(array.data[index]));
    if (element.tag == QOR_TAG_ARRAY && element.slot.arr != nullptr)
      visit(*element.slot.arr, depth + 1);
  }

  [[noreturn]] void refuse(const std::string& reason) const {
    throw CommandError("argument " + std::to_string(argument_ + 1) + " " + reason);
  }

  int argument_;
  int64_t elements_ = 0;
};

qor_slot copy_of(const Element& element) {
  qor_slot copy = element.slot;
  if (element.tag == QOR_TAG_ARRAY)
    copy = qor_slot_of(qor_array_copy_deep(element.slot.arr));
  else if (element.tag == QOR_TAG_STRING && element.slot.str != nullptr) {
    const int64_t registered = qorrt_strlen(element.slot.str);
    const size_t length =
        registered >= 0 ? static_cast<size_t>(registered) : std::strlen(element.slot.str);
    copy = qor_slot_of(new_text({element.slot.str, length}));
  }
  return copy;
}

void put(QorArray* array, int64_t index, const qor_slot& slot) {
  std::memcpy(&array->data[index], &slot, sizeof slot);
}

// Numbers, texts or rows alone need no tags; anything else, and any mixture, does.
bool needs_tags(std::span<const Element> elements) {
  const uint32_t first = elements.empty() ? uint32_t{QOR_TAG_FLOAT64} : elements.front().tag;
  if (first != QOR_TAG_FLOAT64 && !is_reference(first))
    return true;
  return std::any_of(elements.begin(), elements.end(),
                     [first](const Element& element) { return element.tag != first; });
}

void add_tags(QorArray* array, std::span<const Element> elements) {
  array->tags = static_cast<uint8_t*>(std::malloc(elements.size()));
  if (array->tags == nullptr)
    throw std::bad_alloc();
  array->flags |= QOR_FLAG_TAGGED;
  std::transform(elements.begin(), elements.end(), array->tags,
                 [](const Element& element) { return static_cast<uint8_t>(element.tag); });
}

} // namespace

Element element_at(const QorArray* array, int64_t index) {
  Element element = {tag_of(*array, index), {}};
  std::memcpy(&element.slot, &array->data[index], sizeof element.slot);
  return element;
}

bool is_number(const Element& element) {
  return element.tag == QOR_TAG_INT64 || element.tag == QOR_TAG_FLOAT64;
}

double number_in(const Element& element) {
  return element.tag == QOR_TAG_INT64 ? static_cast<double>(element.slot.i64) : element.slot.f64;
}

void require_sound(int argument, const QorArray* array) {
  if (array != nullptr)
    Inspection(argument).visit(*array, 1);
}

char* new_text(std::string_view bytes) {
  auto* text = static_cast<char*>(std::malloc(bytes.size() + 1));
  if (text == nullptr)
    throw std::bad_alloc();
  std::copy(bytes.begin(), bytes.end(), text);
  text[bytes.size()] = '\0';
  const bool is_whole_by_itself = bytes.find('\0') == std::string_view::npos;
  // Where a byte string ended with free(), its length is still registered.
  qorrt_register_binary(text, is_whole_by_itself ? -1 : static_cast<int64_t>(bytes.size()));
  return text;
}

OwnedArray array_of_copies(std::span<const Element> elements) {
  OwnedArray array(qor_array_new(static_cast<int64_t>(elements.size())));
  if (needs_tags(elements))
    add_tags(array.get(), elements);
  else if (!elements.empty() && elements.front().tag == QOR_TAG_STRING)
    array->flags = QOR_FLAG_NESTED | QOR_FLAG_STRINGS;
  else if (!elements.empty() && elements.front().tag == QOR_TAG_ARRAY)
    array->flags = QOR_FLAG_NESTED;
  for (size_t i = 0; i < elements.size(); ++i)
    put(array.get(), static_cast<int64_t>(i), copy_of(elements[i]));
  return array;
}

OwnedArray new_rows(int64_t count) {
  OwnedArray rows(qor_array_new(count));
  rows->flags = QOR_FLAG_NESTED;
  return rows;
}

void set_row(QorArray* rows, int64_t index, OwnedArray row) {
  put(rows, index, qor_slot_of(row.release()));
}

OwnedArray new_texts(int64_t count) {
  OwnedArray texts(qor_array_new(count));
  texts->flags = QOR_FLAG_NESTED | QOR_FLAG_STRINGS;
  return texts;
}

void set_text(QorArray* texts, int64_t index, std::string_view bytes) {
  put(texts, index, qor_slot_of(new_text(bytes)));
}

} // namespace kavo::host
