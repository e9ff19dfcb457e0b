#include "recording/state_image.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "game/state.h"

namespace kavo::recording {

namespace {

constexpr int deepest = 4;             // of rows in rows; the game has two
constexpr uint32_t largest_flags = 15; // all that arrays know
constexpr size_t bits_of_a_slot = 8;   // at least

// What a slot of an array refers to; nothing when it is a number.
uint32_t kind_of(const QorArray& array, int64_t index) {
  if (array.tags != nullptr)
    return array.tags[index];
  if ((array.flags & QOR_FLAG_NESTED) == 0)
    return QOR_TAG_FLOAT64;
  return (array.flags & QOR_FLAG_STRINGS) != 0 ? QOR_TAG_STRING : QOR_TAG_ARRAY;
}

qor_slot slot_of(const QorArray& array, int64_t index) {
  qor_slot slot;
  std::memcpy(&slot, &array.data[index], sizeof slot);
  return slot;
}

// ---- to bytes -----------------------------------------------------------------------------------

void put(ByteWriter& out, bool value) {
  out.put_byte(value ? 1 : 0);
}
void put(ByteWriter& out, int64_t value) {
  out.put_signed(value);
}
void put(ByteWriter& out, double value) {
  out.put_number(value);
}
void put(ByteWriter& out, const Text& value) {
  out.put_text(chars(value));
}
void put(ByteWriter& out, const QorArray* array);

void put_slot(ByteWriter& out, const QorArray& array, int64_t index) {
  const qor_slot slot = slot_of(array, index);
  switch (kind_of(array, index)) {
  case QOR_TAG_STRING: {
    const auto* text = static_cast<const char*>(qor_reference_in(slot));
    return out.put_text(text == nullptr ? "" : text);
  }
  case QOR_TAG_ARRAY:
    return put(out, static_cast<const QorArray*>(qor_reference_in(slot)));
  default:
    return out.put_number(slot.f64);
  }
}

void put(ByteWriter& out, const QorArray* array) {
  out.put_byte(array == nullptr ? 0 : 1);
  if (array == nullptr)
    return;
  out.put_whole(array->flags);
  out.put_whole(static_cast<uint64_t>(array->length));
  out.put_byte(array->tags == nullptr ? 0 : 1);
  for (int64_t index = 0; array->tags != nullptr && index < array->length; ++index)
    out.put_byte(array->tags[index]);
  for (int64_t index = 0; index < array->length; ++index)
    put_slot(out, *array, index);
}
// The arguments hold where the program lies, and say nothing of the game.
void put(ByteWriter& out, const Array& value) {
  if (&value != &ARGS)
    put(out, value.get());
}

// A working variable of a single routine, whose reference would be stale by now.
void put(ByteWriter& out, const Dynamic& value) {
  const bool is_number = value.tag <= QOR_TAG_FLOAT64;
  out.put_whole(is_number ? value.tag : 0);
  out.put_fixed(is_number ? static_cast<uint64_t>(value.slot.i64) : 0, 8);
}

// ---- from bytes ---------------------------------------------------------------------------------

void get(ByteReader& in, bool& value) {
  value = in.byte() != 0;
}
void get(ByteReader& in, int64_t& value) {
  value = in.signed_whole();
}
void get(ByteReader& in, double& value) {
  value = in.number();
}
void get(ByteReader& in, Text& value) {
  value = copy(std::string(in.text()).c_str());
}
Array array_from(ByteReader& in, int depth);

qor_slot slot_from(ByteReader& in, uint32_t kind, int depth) {
  switch (kind) {
  case QOR_TAG_STRING:
    return qor_slot_of(copy(std::string(in.text()).c_str()).release());
  case QOR_TAG_ARRAY:
    return qor_slot_of(array_from(in, depth + 1).release());
  case QOR_TAG_INT64:
  case QOR_TAG_FLOAT64:
    return {.f64 = in.number()};
  default:
    throw Damaged("its state refers to what no recording can hold");
  }
}

// Zeros of any kind are numbers 0 and no references, so that an array that was read halfway is
// freed as it is.
Array empty_array(uint32_t flags, size_t length, bool is_tagged) {
  Array array(qor_zeros(static_cast<int64_t>(length)));
  array->flags = flags;
  if (is_tagged) {
    array->tags = static_cast<uint8_t*>(std::calloc(length + 1, 1));
    if (array->tags == nullptr)
      throw std::bad_alloc();
  }
  return array;
}

Array array_from(ByteReader& in, int depth) {
  if (in.byte() == 0)
    return nullptr;
  const uint64_t flags = in.whole();
  const size_t length = in.count(bits_of_a_slot);
  const bool is_tagged = in.byte() != 0;
  if (depth > deepest || flags > largest_flags ||
      is_tagged != ((flags & uint64_t{QOR_FLAG_TAGGED}) != 0))
    throw Damaged("its state has arrays that no game has");
  Array array = empty_array(static_cast<uint32_t>(flags), length, is_tagged);
  std::string tags(is_tagged ? in.span(length) : std::string_view());
  for (size_t index = 0; index < length; ++index) {
    const auto place = static_cast<int64_t>(index);
    const uint32_t kind = is_tagged ? static_cast<uint8_t>(tags[index]) : kind_of(*array, place);
    const qor_slot slot = slot_from(in, kind, depth);
    std::memcpy(&array->data[index], &slot, sizeof slot);
    if (is_tagged)
      array->tags[index] = static_cast<uint8_t>(kind);
  }
  return array;
}
void get(ByteReader& in, Array& value) {
  if (&value != &ARGS)
    value = array_from(in, 0);
}
void get(ByteReader& in, Dynamic& value) {
  value.tag = static_cast<uint32_t>(in.whole());
  value.slot.i64 = static_cast<int64_t>(in.fixed(8));
  if (value.tag > QOR_TAG_FLOAT64)
    throw Damaged("its state refers to what no recording can hold");
}

// ---- what a state of this game is like
// ------------------------------------------------------------

constexpr int64_t largest_number = 100'000; // of rows, pixels, frames, levels
constexpr int64_t largest_score = int64_t{1} << 50U;

[[noreturn]] void refuse(const char* name) {
  throw Damaged(std::string("its game cannot have such a ") + name);
}

template<typename T>
void check(const T&, const T&, const char*) {}

void check(const int64_t& value, const int64_t&, const char* name) {
  const bool is_points = &value == &SCORE || &value == &GAIN || &value == &PTS || &value == &CBONUS;
  const int64_t most = is_points ? largest_score : largest_number;
  if (value < -most || value > most)
    refuse(name);
}

// The same slots of the same kinds. An array that the game has refilled may name kinds otherwise.
bool has_shape_of(const QorArray* array, const QorArray* model) {
  if (qor_array_len(array) != qor_array_len(model))
    return false;
  for (int64_t index = 0; index < qor_array_len(model); ++index) {
    const uint32_t kind = kind_of(*model, index);
    if ((kind_of(*array, index) > QOR_TAG_FLOAT64 || kind > QOR_TAG_FLOAT64) &&
        kind_of(*array, index) != kind)
      return false;
    if (kind == QOR_TAG_ARRAY &&
        !has_shape_of(static_cast<const QorArray*>(qor_reference_in(slot_of(*array, index))),
                      static_cast<const QorArray*>(qor_reference_in(slot_of(*model, index)))))
      return false;
  }
  return true;
}
void check(const Array& value, const Array& initial, const char* name) {
  if (&value != &ARGS && !has_shape_of(value.get(), initial.get()))
    refuse(name);
}

// The board is 15 by 10, or on its side.
void check_board_size() {
  if (!(ROWS == 15 && COLS == 10) && !(ROWS == 10 && COLS == 15))
    refuse("board");
}

void expect_name(ByteReader& in, std::string_view name) {
  const std::string_view found = in.text();
  if (found != name)
    throw Damaged("its game has a variable \"" + std::string(found.substr(0, 40)) + "\" where \"" +
                  std::string(name) + "\" is expected");
}

} // namespace

// NOLINTBEGIN(cppcoreguidelines-macro-usage): a row of the list becomes a statement
void write_state(ByteWriter& out) {
#define VARIABLE(type, name, initial)                                                              \
  out.put_text(#name);                                                                             \
  put(out, name);
#define GEOMETRY(type, name, initial) VARIABLE(type, name, initial)
#include "game/state_variables.inc"
#undef GEOMETRY
#undef VARIABLE
}

// The geometry stands first, in a list as in bytes, and the shapes of the others are by it.
void read_state(ByteReader& in) {
#define GEOMETRY(type, name, initial)                                                              \
  expect_name(in, #name);                                                                          \
  get(in, name);
#define VARIABLE(type, name, initial)
#include "game/state_variables.inc"
#undef GEOMETRY
#undef VARIABLE
  check_board_size();
#define GEOMETRY(type, name, initial)
#define VARIABLE(type, name, initial)                                                              \
  expect_name(in, #name);                                                                          \
  get(in, name);                                                                                   \
  check(name, type(initial), #name);
#include "game/state_variables.inc"
#undef GEOMETRY
#undef VARIABLE
}
// NOLINTEND(cppcoreguidelines-macro-usage)

} // namespace kavo::recording
