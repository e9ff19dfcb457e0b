#include "tests/fuzz/arguments.h"

#include <array>
#include <cstring>
#include <utility>

#include "runtime/qorrt.h"

namespace kavo::fuzz {

namespace {

constexpr int most_arguments = 7;
constexpr int deepest = 5;
constexpr size_t longest_text = 64;

Array any_array(Input& input, int depth);

// A reference of the kind that the array holds, or a number's bits.
qor_slot any_element(Input& input, uint32_t flags, int depth) {
  qor_slot slot = {};
  if ((flags & QOR_FLAG_STRINGS) != 0)
    slot.str = qor_str_concat(input.text(longest_text).c_str(), "");
  else if ((flags & QOR_FLAG_NESTED) != 0)
    slot.arr = any_array(input, depth + 1).release();
  else
    slot.f64 = input.value<double>();
  return slot;
}

Array any_array(Input& input, int depth) {
  constexpr uint32_t kinds[] = {0, QOR_FLAG_NESTED, QOR_FLAG_NESTED | QOR_FLAG_STRINGS,
                                QOR_FLAG_BOOLS};
  const auto form = input.value<uint8_t>();
  if (form == 255)
    return nullptr;
  Array array(qor_array_new(form % 6));
  array->flags = depth < deepest ? kinds[form / 6 % 4] : 0;
  for (int64_t i = 0; i < array->length; ++i) {
    const qor_slot slot = any_element(input, array->flags, depth);
    std::memcpy(&array->data[i], &slot, sizeof slot);
  }
  return array;
}

// Any bits are a number, but ordinary ones get further.
qor_slot any_number(Input& input, uint32_t tag) {
  qor_slot slot = {};
  const auto form = input.value<uint8_t>();
  if (form % 4 == 0)
    slot.i64 = input.value<int64_t>();
  else if (tag == QOR_TAG_FLOAT64)
    slot.f64 = input.value<int8_t>() / 16.0;
  else
    slot.i64 = input.value<int16_t>() % 128;
  return slot;
}

qor_slot any_slot(Input& input, uint32_t tag, Values& values) {
  qor_slot slot = {};
  switch (tag) {
  case QOR_TAG_STRING:
    slot.str = any_text(input, values);
    return slot;
  case QOR_TAG_ARRAY:
    values.arrays.push_back(any_array(input, 0));
    slot.arr = values.arrays.back().get();
    return slot;
  default:
    return any_number(input, tag);
  }
}

// What commands and paths understand: keys, waveforms, notes, patterns, files of the sandbox.
const char* known_word(uint8_t choice) {
  constexpr std::array words = {
      "Left",      "Space",       "SQUARE", "SAW",  "TRIANGLE", "c3",
      "e4 g4",     "c4*2 [e3]",   "folder", "file", "to file",  "to nowhere",
      "to itself", "to folder/a", "f*",     "tmp",  ""};
  return words[choice % words.size()];
}

} // namespace

SentText::SentText(std::string bytes, bool is_registered)
    : bytes_(std::move(bytes)), is_registered_(is_registered) {
  if (is_registered_)
    qorrt_register_binary(bytes_.c_str(), static_cast<int64_t>(bytes_.size()));
}

SentText::~SentText() {
  qorrt_register_binary(bytes_.c_str(), -1);
}

const char* any_text(Input& input, Values& values) {
  const auto form = input.value<uint8_t>();
  if (form == 255)
    return nullptr;
  const bool is_known = form % 4 == 0;
  const bool is_registered = form % 4 == 1;
  std::string bytes = is_known        ? known_word(form / 4)
                      : is_registered ? input.bytes(form / 4)
                                      : input.text(longest_text);
  values.texts.push_back(std::make_unique<SentText>(std::move(bytes), is_registered));
  return values.texts.back()->get();
}

ArgumentList any_arguments(Input& input, Values& values) {
  std::vector<uint32_t> tags(input.value<uint8_t>() % (most_arguments + 1));
  for (uint32_t& tag : tags)
    tag = input.value<uint8_t>() % 9;
  return arguments_of(tags, input, values);
}

ArgumentList arguments_of(const std::vector<uint32_t>& tags, Input& input, Values& values) {
  ArgumentList list{{}, tags};
  for (const uint32_t tag : tags)
    list.slots.push_back(any_slot(input, tag, values));
  return list;
}

} // namespace kavo::fuzz
