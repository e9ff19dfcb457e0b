// The host's thirteen operations with whatever a program may send from its one thread: any handle,
// name, count, tag and number, slots that are what their tags say. A call gives a result or leaves
// an error that says something. Files are those of a sandbox, nothing is heard.
#include <limits>

#include "host/catalogue.h"
#include "runtime/qorrt.h"
#include "tests/fuzz/arguments.h"
#include "tests/fuzz/sandbox.h"

namespace {

using kavo::fuzz::ArgumentList;
using kavo::fuzz::Input;
using kavo::fuzz::Values;
using kavo::host::Command;
using kavo::host::Kind;

constexpr int most_calls = 32;
constexpr size_t longest_name = 64;

// The program under test: its host, and all that it holds.
struct Program {
  Input& input;
  Values values = {};
  int64_t host = qorrt_init(0, nullptr);
};

// Mostly that of the host that runs.
int64_t any_handle(Program& program) {
  const auto form = program.input.value<uint8_t>();
  return form < 240 ? program.host : form < 248 ? program.host - 1 : program.input.value<int64_t>();
}

// Small pictures: a large one is only slow.
void make_affordable(ArgumentList& list) {
  for (size_t i = 0; i < std::min<size_t>(2, list.slots.size()); ++i) {
    if (list.tags[i] == QOR_TAG_INT64)
      list.slots[i].i64 %= 100;
    else if (list.tags[i] == QOR_TAG_FLOAT64 && !(list.slots[i].f64 < 100))
      list.slots[i].f64 = 100;
  }
}

// Files outside the sandbox are none of a fuzzer's business.
void keep_inside(ArgumentList& list, Values& values) {
  if (list.slots.empty() || list.tags[0] != QOR_TAG_STRING || list.slots[0].str == nullptr)
    return;
  const auto sent = std::ranges::find_if(
      values.texts, [&](const auto& text) { return text->get() == list.slots[0].str; });
  auto inside = std::make_unique<kavo::fuzz::SentText>(kavo::fuzz::contained((*sent)->bytes()),
                                                       (*sent)->is_registered());
  list.slots[0].str = inside->get();
  values.texts.push_back(std::move(inside));
}

bool names_a_file(std::string_view name) {
  return name == "BINWRITER" || name == "GFX.SAVE_SCREENSHOT" || name == "DIR$";
}

ArgumentList fitting_arguments(const Command& command, Program& program) {
  std::vector<uint32_t> tags;
  for (int i = 0; i < command.argument_count; ++i) {
    const Kind kind = command.kinds[static_cast<size_t>(i)];
    const uint32_t number =
        program.input.value<uint8_t>() % 2 == 0 ? QOR_TAG_INT64 : QOR_TAG_FLOAT64;
    tags.push_back(kind == Kind::number ? number
                   : kind == Kind::text ? QOR_TAG_STRING
                                        : QOR_TAG_ARRAY);
  }
  return kavo::fuzz::arguments_of(tags, program.input, program.values);
}

void call(Program& program, const char* name, const ArgumentList& list, bool wants_array,
          int64_t count) {
  const int64_t handle = any_handle(program);
  if (!wants_array) {
    qorrt_call_typed_f64(handle, name, list.slots.data(), list.tags.data(), count);
    return;
  }
  qorrt_clear_last_error(handle);
  QorArray* result = qorrt_call_typed_arr(handle, name, list.slots.data(), list.tags.data(), count);
  kavo::fuzz::require((result == nullptr) == (qorrt_last_error(handle) != nullptr),
                      "there is a result or an error");
  program.values.arrays.emplace_back(result);
}

void call_known_command(Program& program) {
  const auto commands = kavo::host::all_commands();
  const Command& command = commands[program.input.value<uint8_t>() % commands.size()];
  const auto form = program.input.value<uint8_t>();
  // The dummy device takes its time.
  if (command.name == "SOUND.INIT" && form % 16 != 1)
    return;
  ArgumentList list = form % 4 == 3 ? kavo::fuzz::any_arguments(program.input, program.values)
                                    : fitting_arguments(command, program);
  if (command.name == "SCREEN")
    make_affordable(list);
  if (names_a_file(command.name))
    keep_inside(list, program.values);
  const bool wants_array = (command.run_array != nullptr) != (form % 32 == 31);
  call(program, std::string(command.name).c_str(), list, wants_array,
       static_cast<int64_t>(list.slots.size()));
}

// A name, count or list that no command has; a null name and a null list too.
void call_nonsense(Program& program) {
  constexpr int64_t counts[] = {-1, 7, std::numeric_limits<int64_t>::max(),
                                std::numeric_limits<int64_t>::min()};
  const auto form = program.input.value<uint8_t>();
  const std::string name = form % 4 == 0 ? "RECT" : program.input.text(longest_name) + "?";
  call(program, form == 255 ? nullptr : name.c_str(), {}, form % 2 == 0, counts[form / 4 % 4]);
}

void start_or_stop(Program& program) {
  if (program.input.value<uint8_t>() % 2 == 0)
    program.host = qorrt_init(0, nullptr);
  else
    qorrt_shutdown(any_handle(program));
}

void ask_for_host_value(Program& program) {
  const int64_t handle = any_handle(program);
  qorrt_val_to_f64(handle, program.input.value<int64_t>());
  const kavo::fuzz::Text text(qorrt_val_to_str(handle, program.input.value<int64_t>()));
  kavo::fuzz::require(text != nullptr, "a host value has a text");
}

void register_text(Program& program) {
  const char* text = kavo::fuzz::any_text(program.input, program.values);
  const auto length = static_cast<int64_t>(text == nullptr ? 0 : std::strlen(text));
  qorrt_register_binary(text, length);
  kavo::fuzz::require(qorrt_strlen(text) == (text == nullptr ? -1 : length),
                      "the length is the one told");
  if (program.input.value<uint8_t>() % 2 == 0)
    qorrt_register_binary(text, -1);
}

void ignore_event(const char*, const int64_t*, const uint32_t*, int64_t) {}

void call_anything(Program& program) {
  Input& input = program.input;
  switch (input.value<uint8_t>() % 32) {
  case 0:
    return qorrt_frame_end(any_handle(program), qorrt_frame_begin(any_handle(program)));
  case 1:
    return qorrt_frame_end(any_handle(program), input.value<int64_t>());
  case 2:
    qorrt_frame_begin(any_handle(program));
    return;
  case 3:
    return ask_for_host_value(program);
  case 4:
    return register_text(program);
  case 5:
    return qorrt_clear_last_error(any_handle(program));
  case 6:
    return qorrt_set_event_dispatcher(any_handle(program),
                                      input.value<uint8_t>() % 2 == 0 ? ignore_event : nullptr);
  case 7:
    return start_or_stop(program);
  case 8:
    return call_nonsense(program);
  default:
    return call_known_command(program);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const kavo::fuzz::Sandbox sandbox;
  Input input(data, size);
  Program program{input};
  for (int i = 0; i < most_calls && !input.rest().empty(); ++i) {
    call_anything(program);
    const char* error = qorrt_last_error(program.host);
    kavo::fuzz::require(error == nullptr || *error != '\0', "an error says something");
  }
  qorrt_shutdown(program.host);
  return 0;
}
