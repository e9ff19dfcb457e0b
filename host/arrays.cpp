#include "host/arrays.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "host/command.h"

namespace kavo::host {

namespace {

constexpr int most_dimensions = 8;
constexpr int64_t most_elements = 1 << 20;

[[noreturn]] void refuse(int argument, const std::string& reason) {
  throw CommandError("argument " + std::to_string(argument + 1) + " " + reason);
}

std::string elements_text(int64_t count) {
  return std::to_string(count) + (count == 1 ? " element" : " elements");
}

const QorArray* row_at(int argument, const QorArray* rows, int64_t index) {
  const Element element = element_at(rows, index);
  if (element.tag != QOR_TAG_ARRAY)
    refuse(argument,
           "must be an array of rows, but element " + std::to_string(index) + " is not a row");
  return element.slot.arr;
}

// The length that all rows share.
int64_t row_length(int argument, const QorArray* rows) {
  const int64_t length = length_of(row_at(argument, rows, 0));
  for (int64_t i = 1; i < rows->length; ++i) {
    const int64_t other = length_of(row_at(argument, rows, i));
    if (other != length)
      refuse(argument, "must have rows of one length, but row 0 has " + elements_text(length) +
                           " and row " + std::to_string(i) + " has " + std::to_string(other));
  }
  return length;
}

void collect_leaves(const QorArray* array, std::vector<Element>& leaves) {
  for (int64_t i = 0; i < length_of(array); ++i) {
    const Element element = element_at(array, i);
    if (element.tag == QOR_TAG_ARRAY)
      collect_leaves(element.slot.arr, leaves);
    else
      leaves.push_back(element);
  }
}

int64_t size_at(const QorArray* sizes, int64_t index) {
  const Element element = element_at(sizes, index);
  const double size = is_number(element) ? std::trunc(number_in(element)) : NAN;
  if (size >= 0 && size <= static_cast<double>(most_elements))
    return static_cast<int64_t>(size);
  refuse(1, "(sizes) must hold numbers from 0 to " + std::to_string(most_elements) + ", but size " +
                std::to_string(index) + " is " +
                (is_number(element) ? shown(number_in(element)) : "not a number"));
}

std::vector<int64_t> sizes_in(const QorArray* array) {
  const int64_t dimensions = length_of(array);
  if (dimensions < 1 || dimensions > most_dimensions)
    refuse(1, "(sizes) must hold 1 to " + std::to_string(most_dimensions) + " sizes, got " +
                  std::to_string(dimensions));
  std::vector<int64_t> sizes;
  int64_t total = 1;
  for (int64_t i = 0; i < dimensions; ++i) {
    sizes.push_back(size_at(array, i));
    total *= std::max<int64_t>(sizes.back(), 1);
    if (total > most_elements)
      refuse(1,
             "(sizes) must not ask for more than " + std::to_string(most_elements) + " elements");
  }
  return sizes;
}

// Deals out values over and over, row by row.
class Dealer {
public:
  explicit Dealer(std::vector<Element> values) : values_(std::move(values)) {}

  OwnedArray deal(std::span<const int64_t> sizes) {
    if (sizes.size() == 1)
      return deal_row(sizes.front());
    OwnedArray rows = new_rows(sizes.front());
    for (int64_t i = 0; i < sizes.front(); ++i)
      set_row(rows.get(), i, deal(sizes.subspan(1)));
    return rows;
  }

private:
  OwnedArray deal_row(int64_t length) {
    std::vector<Element> row(static_cast<size_t>(length));
    for (Element& element : row) {
      element = values_[next_];
      next_ = next_ + 1 == values_.size() ? 0 : next_ + 1;
    }
    return array_of_copies(row);
  }

  std::vector<Element> values_;
  size_t next_ = 0;
};

// The C library's search takes linear time, whatever is looked for.
template<typename Take>
void for_each_part(std::string_view text, std::string_view separator, Take take) {
  for (;;) {
    const auto* end = text.empty()
                          ? nullptr
                          : static_cast<const char*>(memmem(text.data(), text.size(),
                                                            separator.data(), separator.size()));
    if (end == nullptr)
      return take(text);
    const auto length = static_cast<size_t>(end - text.data());
    take(text.substr(0, length));
    text.remove_prefix(length + separator.size());
  }
}

} // namespace

OwnedArray transposed(const QorArray* matrix) {
  require_sound(0, matrix);
  if (length_of(matrix) == 0)
    return new_rows(0);
  const int64_t columns = row_length(0, matrix);
  OwnedArray result = new_rows(columns);
  std::vector<Element> column(static_cast<size_t>(matrix->length));
  for (int64_t j = 0; j < columns; ++j) {
    for (int64_t i = 0; i < matrix->length; ++i)
      column[static_cast<size_t>(i)] = element_at(row_at(0, matrix, i), j);
    set_row(result.get(), j, array_of_copies(column));
  }
  return result;
}

OwnedArray reshaped(const QorArray* values, const QorArray* sizes) {
  require_sound(0, values);
  require_sound(1, sizes);
  const std::vector<int64_t> wanted = sizes_in(sizes);
  std::vector<Element> leaves;
  collect_leaves(values, leaves);
  const bool is_empty = std::find(wanted.begin(), wanted.end(), 0) != wanted.end();
  if (leaves.empty() && !is_empty)
    refuse(0, "(values) must hold at least one value, got none");
  return Dealer(std::move(leaves)).deal(wanted);
}

OwnedArray with_row_inserted(const QorArray* rows, double position, double axis,
                             const QorArray* row) {
  require_sound(0, rows);
  require_sound(3, row);
  const int64_t count = length_of(rows);
  if (!(std::trunc(position) >= 0 && std::trunc(position) <= static_cast<double>(count)))
    reject_argument(1, "position", "0 to " + std::to_string(count), shown(position));
  if (axis != 0)
    reject_argument(2, "axis", "0, which means rows", shown(axis));
  if (count > 0 && row_length(0, rows) != length_of(row))
    refuse(3, "(row) must be as long as the other rows, " + elements_text(row_length(0, rows)) +
                  ", got " + std::to_string(length_of(row)));
  OwnedArray result = new_rows(count + 1);
  const auto inserted = static_cast<int64_t>(position);
  for (int64_t i = 0; i <= count; ++i) {
    const QorArray* source = i == inserted ? row : row_at(0, rows, i < inserted ? i : i - 1);
    set_row(result.get(), i,
            OwnedArray(source == nullptr ? qor_array_new(0) : qor_array_copy_deep(source)));
  }
  return result;
}

OwnedArray split(std::string_view text, std::string_view separator) {
  if (separator.empty())
    reject_argument(1, "separator", "at least one character", "\"\"");
  int64_t count = 0;
  for_each_part(text, separator, [&](std::string_view /*part*/) { ++count; });
  OwnedArray result = new_texts(count);
  int64_t index = 0;
  for_each_part(text, separator,
                [&](std::string_view part) { set_text(result.get(), index++, part); });
  return result;
}

} // namespace kavo::host
