#include "tests/fakes/recording_host.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <span>

#include "host/arrays.h"
#include "host/binary_strings.h"
#include "host/command.h"
#include "host/elements.h"
#include "host/files.h"
#include "runtime/bridge.h"
#include "runtime/qorrt.h"

namespace kavo::test {

namespace {

using host::OwnedArray;

RecordingHost the_host;

// ---- how a command is written down -------------------------------------------------------------

std::string shortest(double number) {
  char buffer[32];
  char* const end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
  return {buffer, end};
}

std::string describe(const QorArray* array);

std::string describe(const host::Element& element) {
  switch (element.tag) {
  case QOR_TAG_STRING:
    return '"' + std::string(element.slot.str) + '"';
  case QOR_TAG_ARRAY:
    return describe(element.slot.arr);
  default:
    return shortest(host::number_in(element));
  }
}

std::string describe(const QorArray* array) {
  std::string text = "[";
  for (int64_t index = 0; index < host::length_of(array); ++index)
    text += (index > 0 ? "," : "") + describe(host::element_at(array, index));
  return text + "]";
}

// i for whole numbers, f for the others, texts in quotes, arrays in brackets.
std::string describe(const qor_slot& slot, uint32_t tag) {
  switch (tag) {
  case QOR_TAG_INT64:
    return "i" + std::to_string(slot.i64);
  case QOR_TAG_FLOAT64:
    return "f" + shortest(slot.f64);
  case QOR_TAG_STRING:
    return '"' + std::string(slot.str) + '"';
  case QOR_TAG_ARRAY:
    return describe(slot.arr);
  default:
    return "tag" + std::to_string(tag);
  }
}

struct Call {
  std::string_view name;
  std::span<const qor_slot> slots;
  std::span<const uint32_t> tags;

  host::Arguments arguments() const { return {slots.data(), tags.data()}; }
};

Call call_of(const char* name, const void* slots, const uint32_t* tags, int64_t n) {
  const auto count = static_cast<size_t>(n);
  return {name, {static_cast<const qor_slot*>(slots), count}, {tags, count}};
}

void write_down(const Call& call) {
  auto& host = recording_host();
  if (host.is_discarding)
    return;
  std::string line(call.name);
  for (size_t index = 0; index < call.slots.size(); ++index)
    line += " " + describe(call.slots[index], call.tags[index]);
  host.trace.push_back(std::move(line));
}

// ---- what a command does ------------------------------------------------------------------------

double perform_number(const Call& call) {
  auto& host = recording_host();
  const auto arguments = call.arguments();
  if (call.name == "RND")
    return arguments.number(0) < 0 ? 0.0 : host.next_chance();
  if (call.name == "GFX.KEYSTATE")
    return host.reading_of(std::string(arguments.text(0)));
  if (call.name == "BINWRITER")
    host::write_whole_file(arguments.text(0), arguments.text(1));
  if (call.name == "SCREENFLIP" && host.on_flip)
    host.on_flip();
  return 0.0;
}

OwnedArray listing(std::string_view path) {
  const auto names = host::names_at(path);
  OwnedArray array = host::new_texts(static_cast<int64_t>(names.size()));
  for (size_t index = 0; index < names.size(); ++index)
    host::set_text(array.get(), static_cast<int64_t>(index), names[index]);
  return array;
}

OwnedArray perform_array(const Call& call) {
  const auto arguments = call.arguments();
  if (call.name == "TRANSPOSE")
    return host::transposed(arguments.array(0));
  if (call.name == "RESHAPE")
    return host::reshaped(arguments.array(0), arguments.array(1));
  if (call.name == "MVINS")
    return host::with_row_inserted(arguments.array(0), arguments.number(1), arguments.number(2),
                                   arguments.array(3));
  if (call.name == "SPLIT")
    return host::split(arguments.text(0), arguments.text(1));
  if (call.name == "DIR$")
    return listing(arguments.text(0));
  recording_host().fail("unknown command " + std::string(call.name));
  return nullptr;
}

// Runs one command through `perform`, with everything that the record wants to know of it.
template<typename Perform>
auto run(const Call& call, Perform perform) -> decltype(perform(call)) {
  auto& host = recording_host();
  write_down(call);
  if (!host.begin_command(call.name.data()))
    return {};
  try {
    return perform(call);
  } catch (const host::CommandError& error) {
    host.fail(std::string(call.name) + ": " + error.what());
    return {};
  }
}

} // namespace

RecordingHost& recording_host() {
  return the_host;
}

std::vector<std::string> RecordingHost::sent(std::string_view name) const {
  std::vector<std::string> lines;
  std::ranges::copy_if(trace, std::back_inserter(lines), [name](std::string_view line) {
    return line.substr(0, line.find(' ')) == name;
  });
  return lines;
}

int64_t RecordingHost::count(std::string_view name) const {
  return static_cast<int64_t>(sent(name).size());
}

void RecordingHost::forget() {
  trace.clear();
  commands = 0;
  draws = 0;
  frames = 0;
}

// False when the command is to fail.
bool RecordingHost::begin_command(const char* name) {
  ++commands;
  if (has_debt_)
    faults.push_back(std::string(name) + " was sent while " + unpolled_ + " was not polled");
  if (has_failed_)
    faults.push_back(std::string(name) + " was sent after a command had failed");
  has_debt_ = true;
  unpolled_ = name;
  if (commands != fail_at && name != fail_name)
    return true;
  has_failed_ = true;
  fail(std::string(name) + ": failed on command");
  return false;
}

void RecordingHost::fail(std::string message) {
  error_ = std::move(message);
}

double RecordingHost::reading_of(const std::string& key) const {
  const auto found = readings.find(key);
  if (found != readings.end())
    return found->second;
  return keys.contains(key) ? 1.0 : 0.0;
}

double RecordingHost::next_chance() {
  ++draws;
  if (!chance.empty()) {
    const double next = chance.front();
    chance.pop_front();
    return next;
  }
  // SplitMix64 (Steele, Lea, Flood 2014), 53 bits of it.
  uint64_t z = random_seed += 0x9E3779B97F4A7C15;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
  return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
}

} // namespace kavo::test

using kavo::test::recording_host;

extern "C" {

int64_t qorrt_init(int argc, char** argv) {
  recording_host().arguments.assign(argv, argv + argc);
  return kavo::test::RecordingHost::handle;
}

void qorrt_shutdown(int64_t handle) {
  recording_host().expect_handle(handle);
  recording_host().is_shut_down = true;
}

void qorrt_set_event_dispatcher(int64_t handle, qorrt_dispatch_fn dispatch) {
  recording_host().expect_handle(handle);
  recording_host().can_dispatch_events = dispatch == qorrt_dispatch_event;
}

double qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                            const uint32_t* tags, int64_t n) {
  recording_host().expect_handle(handle);
  return kavo::test::run(kavo::test::call_of(name, slots, tags, n), kavo::test::perform_number);
}

QorArray* qorrt_call_typed_arr(int64_t handle, const char* name, const void* slots,
                               const uint32_t* tags, int64_t n) {
  recording_host().expect_handle(handle);
  return kavo::test::run(kavo::test::call_of(name, slots, tags, n), kavo::test::perform_array)
      .release();
}

const char* qorrt_last_error(int64_t handle) {
  recording_host().expect_handle(handle);
  recording_host().polled();
  return recording_host().error();
}

void qorrt_clear_last_error(int64_t handle) {
  recording_host().expect_handle(handle);
  recording_host().clear_error();
}

int64_t qorrt_frame_begin(int64_t handle) {
  auto& host = recording_host();
  host.expect_handle(handle);
  ++host.frames;
  if (host.open_frames == 0 && host.on_frame)
    host.on_frame();
  return ++host.open_frames;
}

void qorrt_frame_end(int64_t handle, int64_t token) {
  recording_host().expect_handle(handle);
  if (token != recording_host().open_frames)
    recording_host().faults.emplace_back("a frame scope was closed out of order");
  --recording_host().open_frames;
}

// The half tells a host value that was read through the host from one that was not.
double qorrt_val_to_f64(int64_t handle, int64_t value) {
  recording_host().expect_handle(handle);
  return static_cast<double>(value) + 0.5;
}

char* qorrt_val_to_str(int64_t handle, int64_t value) {
  recording_host().expect_handle(handle);
  return strdup(std::to_string(value).c_str());
}

void qorrt_register_binary(const char* s, int64_t length) {
  kavo::host::register_binary_string(s, length);
}

int64_t qorrt_strlen(const char* s) {
  return kavo::host::binary_string_length(s);
}
}
