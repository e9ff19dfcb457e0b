// The host's thirteen operations with whatever a program may send: any name, count, tag and
// number, slots that are what their tags say. No call may do more than leave an error.
#include "host/catalogue.h"
#include "runtime/qorrt.h"
#include "tests/fuzz/input.h"

#include <vector>

namespace {

using fuzz::Array;
using fuzz::Input;

constexpr int most_calls = 32;
constexpr int most_arguments = 7;
constexpr int deepest = 5;
constexpr size_t longest_text = 64;

// All that one input makes, so that slots stay valid until its end.
struct Values {
  std::vector<Array> arrays;
  std::vector<std::unique_ptr<std::string>> texts;
};

Array any_array(Input& input, int depth);

// A reference of the kind that the array holds, or a number's bits.
void fill(Input& input, QorArray* array, int depth) {
  for (int64_t i = 0; i < array->length; ++i) {
    qor_slot slot = {};
    if ((array->flags & QOR_FLAG_STRINGS) != 0)
      slot.str = qor_str_concat(input.text(longest_text).c_str(), "");
    else if ((array->flags & QOR_FLAG_NESTED) != 0)
      slot.arr = any_array(input, depth + 1).release();
    else
      slot.f64 = input.value<double>();
    std::memcpy(&array->data[i], &slot, sizeof slot);
  }
}

Array any_array(Input& input, int depth) {
  constexpr uint32_t kinds[] = {0, QOR_FLAG_NESTED, QOR_FLAG_NESTED | QOR_FLAG_STRINGS,
                                QOR_FLAG_BOOLS};
  const auto form = input.value<uint8_t>();
  if (form == 255)
    return nullptr;
  Array array(qor_array_new(form % 6));
  array->flags = depth < deepest ? kinds[form / 6 % 4] : 0;
  fill(input, array.get(), depth);
  return array;
}

const char* any_text(Input& input, Values& values) {
  values.texts.push_back(std::make_unique<std::string>(input.text(longest_text)));
  return values.texts.back()->c_str();
}

qor_slot any_slot(Input& input, uint32_t tag, Values& values) {
  qor_slot slot = {};
  switch (tag) {
  case QOR_TAG_STRING:
    slot.str = any_text(input, values);
    break;
  case QOR_TAG_ARRAY:
    values.arrays.push_back(any_array(input, 0));
    slot.arr = values.arrays.back().get();
    break;
  default:
    slot.i64 = input.value<int64_t>();
  }
  return slot;
}

// Small pictures: a large one is only slow.
void make_affordable(const std::string& name, std::vector<qor_slot>& slots,
                     const std::vector<uint32_t>& tags) {
  if (name != "SCREEN")
    return;
  for (size_t i = 0; i < std::min<size_t>(2, slots.size()); ++i) {
    if (tags[i] == QOR_TAG_INT64)
      slots[i].i64 %= 100;
    else if (tags[i] == QOR_TAG_FLOAT64 && !(slots[i].f64 < 100))
      slots[i].f64 = 100;
  }
}

// Files and folders outside are none of a fuzzer's business, nor is a sound device.
bool is_left_alone(const std::string& name) {
  return name == "BINWRITER" || name == "GFX.SAVE_SCREENSHOT" || name == "DIR$" ||
         name == "SOUND.INIT";
}

std::string any_name(Input& input) {
  const auto commands = kavo::host::all_commands();
  const auto choice = input.value<uint8_t>();
  return choice < commands.size() ? std::string(commands[choice].name) : input.text(longest_text);
}

void call_command(Input& input, int64_t host, Values& values) {
  const std::string name = any_name(input);
  if (is_left_alone(name))
    return;
  const auto count = input.value<uint8_t>() % (most_arguments + 1);
  std::vector<uint32_t> tags;
  std::vector<qor_slot> slots;
  for (int i = 0; i < count; ++i) {
    tags.push_back(input.value<uint8_t>() % 9);
    slots.push_back(any_slot(input, tags.back(), values));
  }
  make_affordable(name, slots, tags);
  const bool wants_array = input.value<uint8_t>() % 2 == 1;
  if (wants_array)
    values.arrays.emplace_back(
        qorrt_call_typed_arr(host, name.c_str(), slots.data(), tags.data(), count));
  else
    qorrt_call_typed_f64(host, name.c_str(), slots.data(), tags.data(), count);
}

void call_anything(Input& input, int64_t host, Values& values) {
  switch (input.value<uint8_t>() % 16) {
  case 0:
    return qorrt_frame_end(host, qorrt_frame_begin(host));
  case 1:
    return qorrt_frame_end(host, input.value<int64_t>());
  case 2:
    qorrt_frame_begin(host);
    return;
  case 3:
    qorrt_val_to_f64(host, input.value<int64_t>());
    return qor_str_free(qorrt_val_to_str(host, input.value<int64_t>()));
  case 4: {
    const char* text = any_text(input, values);
    qorrt_register_binary(text, input.value<uint8_t>() % (std::strlen(text) + 1));
    fuzz::require(qorrt_strlen(text) >= 0, "a registered string has a length");
    return qorrt_register_binary(text, -1);
  }
  case 5:
    return qorrt_clear_last_error(host);
  default:
    return call_command(input, host, values);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  Input input(data, size);
  Values values;
  const int64_t host = qorrt_init(0, nullptr);
  for (int i = 0; i < most_calls && !input.rest().empty(); ++i) {
    call_anything(input, host, values);
    const char* error = qorrt_last_error(host);
    fuzz::require(error == nullptr || *error != '\0', "an error says something");
  }
  qorrt_shutdown(host);
  return 0;
}
