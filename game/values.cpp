#include "game/values.h"

namespace kavo {

namespace {

// The tag that older tables use for an integer, besides QOR_TAG_INT64.
constexpr uint32_t integer_tag_alias = 8;

QorArray* row_of(const QorArray* matrix, int64_t row) {
  return static_cast<QorArray*>(qor_array_get_ptr(matrix, row));
}

void refuse_zero(int64_t b) {
  if (b != 0)
    return;
  qor_err_set("Division by zero", 1);
  qor_throw_uncaught();
}

} // namespace

Dynamic element(const QorArray* array, int64_t index) {
  Dynamic result;
  result.slot.f64 = qor_array_get_tagged(array, index, &result.tag);
  return result;
}

double as_number(const Dynamic& value) {
  switch (value.tag) {
  case QOR_TAG_FLOAT64:
    return value.slot.f64;
  case QOR_TAG_INT64:
  case integer_tag_alias:
    return static_cast<double>(value.slot.i64);
  case QOR_TAG_STRING:
    return qor_val(value.slot.str);
  case QOR_TAG_HOST:
    return qorrt_val_to_f64(qor_runtime_handle(), value.slot.i64);
  default:
    return 0.0;
  }
}

double number_at(const QorArray* array, int64_t index) {
  return as_number(element(array, index));
}

double cell_at(const QorArray* matrix, int64_t row, int64_t column) {
  return number_at(row_of(matrix, row), column);
}

void put_cell(const QorArray* matrix, int64_t row, int64_t column, double value) {
  qor_array_set(row_of(matrix, row), column, value);
}

void put_cell(const QorArray* matrix, int64_t row, int64_t column, const Dynamic& value) {
  put_cell(matrix, row, column, value.slot.f64);
}

Array zeros(int64_t count) {
  return Array(qor_zeros(count));
}

Array zero_matrix(int64_t rows, int64_t columns) {
  Array matrix = zeros(rows);
  qor_array_set_nested(matrix.get());
  for (int64_t row = 0; row < rows; ++row)
    qor_array_set(matrix.get(), row, qor_slot_of(qor_zeros(columns)).f64);
  return matrix;
}

Array numbers(std::initializer_list<double> values) {
  Array result = zeros(static_cast<int64_t>(values.size()));
  int64_t index = 0;
  for (const double value : values)
    qor_array_set(result.get(), index++, value);
  return result;
}

Array texts(int64_t count, const char* text) {
  Array result = zeros(count);
  qor_array_set_string_elems(result.get());
  for (int64_t index = 0; index < count; ++index)
    put_text(result.get(), index, text);
  return result;
}

void put_text(QorArray* array, int64_t index, const char* text) {
  if (index < 0 || index >= qor_array_len(array))
    return;
  const Text old(static_cast<char*>(qor_array_get_ptr(array, index)));
  qor_array_set(array, index, qor_slot_of(qor_str_str(text)).f64);
}

SharedRows reversed_rows(const Array& matrix) {
  return SharedRows(qor_array_reverse(matrix.get()));
}

Array reverse_rows(Array matrix) {
  const SharedRows old(matrix.release());
  return Array(qor_array_reverse(old.get()));
}

Text copy(const char* text) {
  return Text(qor_str_str(text));
}

Text concat(const char* first, const char* second) {
  return Text(qor_str_concat(first, second));
}

Text label(const char* text, int64_t number) {
  const Text digits(qor_int_to_str(number));
  return concat(text, chars(digits));
}

int64_t remainder_of(int64_t a, int64_t b) {
  refuse_zero(b);
  return a % b;
}

double divisor(int64_t b) {
  refuse_zero(b);
  return static_cast<double>(b);
}

} // namespace kavo
