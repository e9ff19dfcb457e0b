#include <algorithm>
#include <array>
#include <string_view>

#include "runtime/array.h"
#include "runtime/bridge.h"
#include "runtime/internal/array_slots.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/strings.h"
#include "runtime/map.h"

namespace {

struct InputEvent {
  std::string_view name;
  // What the values mean, in order; empty names end the list.
  std::array<const char*, 4> fields;
  qor_event_handler handler = nullptr;
};

constexpr std::string_view text_field = "key";

std::array<InputEvent, 6> input_events{{
    {.name = "KEYDOWN", .fields = {"scancode", "keycode", "key", "repeat"}},
    {.name = "KEYUP", .fields = {"scancode", "keycode", "key", "repeat"}},
    {.name = "QUIT", .fields = {}},
    {.name = "MOUSEDOWN", .fields = {"button", "x", "y"}},
    {.name = "MOUSEUP", .fields = {"button", "x", "y"}},
    {.name = "MOUSEMOVE", .fields = {"x", "y"}},
}};

InputEvent* find_input_event(const char* name) {
  if (name == nullptr)
    return nullptr;
  auto* found = std::ranges::find(input_events, std::string_view(name), &InputEvent::name);
  return found == input_events.end() ? nullptr : found;
}

using NamedHandlers = qor::Dictionary<qor_event_handler>;

NamedHandlers& named_handlers() {
  static NamedHandlers table;
  return table;
}

// Made before any game code runs.
[[maybe_unused]] const auto& made_at_load = named_handlers();

QorMap* new_event_map(const InputEvent& event, const int64_t* values, int64_t count) {
  auto* map = qor_map_new();
  for (int64_t i = 0; i < count && i < std::ssize(event.fields); ++i) {
    const char* field = event.fields[static_cast<size_t>(i)];
    if (field == nullptr)
      break;
    if (field == text_field)
      qor_map_set_str(map, field, static_cast<const char*>(qor_reference_in({.i64 = values[i]})));
    else
      qor_map_set_f64(map, field, static_cast<double>(values[i]));
  }
  return map;
}

void deliver_without_values(const InputEvent& event) {
  auto* arguments = qor_array_new(0);
  event.handler(arguments);
  qor_array_free(arguments);
}

void deliver_values(const InputEvent& event, const int64_t* values, int64_t count) {
  auto* map = new_event_map(event, values, values == nullptr ? 0 : count);
  auto* arguments = qor_array_new(1);
  qor_array_set_nested(arguments);
  qor::set_reference(arguments, 0, map);
  event.handler(arguments);
  qor_array_free(arguments);
  qor_map_free(map);
}

} // namespace

void qorrt_register_event_handler(const char* name, qor_event_handler handler) {
  auto* event = find_input_event(name);
  if (event != nullptr && handler != nullptr)
    event->handler = handler;
}

void qorrt_dispatch_event(const char* name, const int64_t* values, const uint32_t* /*tags*/,
                          int64_t count) {
  const auto* event = find_input_event(name);
  if (event == nullptr || event->handler == nullptr)
    return;
  if (event->name == "QUIT")
    deliver_without_values(*event);
  else
    deliver_values(*event, values, count);
}

void qor_event_on(const char* name, qor_event_handler handler) {
  if (name != nullptr && handler != nullptr)
    named_handlers().insert_or_assign(name, handler);
}

void qor_event_raise_str(const char* name, const char* text) {
  if (name == nullptr)
    return;
  const auto found = named_handlers().find(std::string_view(name));
  if (found == named_handlers().end())
    return;
  auto* arguments = qor::new_string_array(1);
  qor::set_string(arguments, 0, qor::new_string(qor::text_of(text)));
  found->second(arguments);
  qor_array_free_deep(arguments);
}
