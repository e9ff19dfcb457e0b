// The process arguments, the handle, and events on their way to handlers.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "runtime/bridge.h"
#include "runtime/map.h"
#include "tests/runtime/values.h"

namespace {

struct Seen {
  int calls = 0;
  uint32_t flags = 0;
  int64_t length = -1;
  std::string map;
  std::vector<std::string> texts;
};

// Handlers are plain functions, so what they see has to stand outside.
Seen seen;

void look_at_map(QorArray* arguments) {
  seen.calls += 1;
  seen.flags = arguments->flags;
  seen.length = qor_array_len(arguments);
  const auto* map = static_cast<QorMap*>(qor_array_get_ptr(arguments, 0));
  for (int64_t i = 0; map != nullptr && i < map->count; ++i)
    seen.map += std::string(i == 0 ? "" : " ") + map->keys[i] + "=" +
                kavo::test::take(qor_map_get_str(map, map->keys[i]));
}

void look_at_texts(QorArray* arguments) {
  seen.calls += 1;
  seen.flags = arguments->flags;
  seen.texts = kavo::test::to_strings(arguments);
}

template<size_t n>
Seen dispatched(const char* name, const std::array<int64_t, n>& values, int64_t count = n) {
  seen = {};
  qorrt_dispatch_event(name, values.data(), nullptr, count);
  return seen;
}

int64_t as_value(const char* text) {
  return qor_slot_of(text).i64;
}

// Runs first: handlers cannot be taken out of the table again.
TEST(Bridge0BeforeAnyHandler, EventsAreDropped) {
  EXPECT_EQ(dispatched<3>("MOUSEUP", {1, 2, 3}).calls, 0);
  EXPECT_EQ(dispatched<1>("QUIT", {0}).calls, 0);
}

TEST(Bridge0BeforeAnyHandler, NamesMatchToTheLetter) {
  qorrt_register_event_handler("keydown", look_at_map);
  EXPECT_EQ(dispatched<1>("KEYDOWN", {30}).calls, 0);
}

TEST(Bridge, AKeyEventFillsTheMapInOrder) {
  qorrt_register_event_handler("KEYDOWN", look_at_map);
  const auto result = dispatched<4>("KEYDOWN", {30, 97, as_value("A"), 1});
  EXPECT_EQ(result.map, "scancode=30 keycode=97 key=A repeat=1");
  EXPECT_EQ(result.flags, QOR_FLAG_NESTED);
  EXPECT_EQ(result.length, 1);
}

TEST(Bridge, AKeydownWithTwoValuesHasScancodeAndKeycodeOnly) {
  qorrt_register_event_handler("KEYDOWN", look_at_map);
  EXPECT_EQ(dispatched<2>("KEYDOWN", {30, 97}).map, "scancode=30 keycode=97");
}

TEST(Bridge, AKeyWithoutTextIsEmpty) {
  qorrt_register_event_handler("KEYUP", look_at_map);
  EXPECT_EQ(dispatched<3>("KEYUP", {30, 97, 0}).map, "scancode=30 keycode=97 key=");
}

TEST(Bridge, MouseEventsCarryButtonAndPlace) {
  qorrt_register_event_handler("MOUSEDOWN", look_at_map);
  qorrt_register_event_handler("MOUSEMOVE", look_at_map);
  EXPECT_EQ(dispatched<3>("MOUSEDOWN", {1, 20, 30}).map, "button=1 x=20 y=30");
  EXPECT_EQ(dispatched<2>("MOUSEMOVE", {20, 30}).map, "x=20 y=30");
}

TEST(Bridge, ValuesBeyondTheKnownOnesAreIgnored) {
  qorrt_register_event_handler("MOUSEMOVE", look_at_map);
  EXPECT_EQ(dispatched<4>("MOUSEMOVE", {20, 30, 40, 50}).map, "x=20 y=30");
}

TEST(Bridge, AnEventWithoutValuesHasAnEmptyMap) {
  qorrt_register_event_handler("KEYDOWN", look_at_map);
  seen = {};
  qorrt_dispatch_event("KEYDOWN", nullptr, nullptr, 3);
  EXPECT_EQ(seen.calls, 1);
  EXPECT_EQ(seen.map, "");
}

TEST(Bridge, QuitPassesAnEmptyArray) {
  qorrt_register_event_handler("QUIT", look_at_map);
  const auto result = dispatched<1>("QUIT", {5});
  EXPECT_EQ(result.calls, 1);
  EXPECT_EQ(result.length, 0);
}

TEST(Bridge, AMouseupWithoutHandlerCallsNothing) {
  EXPECT_EQ(dispatched<3>("MOUSEUP", {1, 2, 3}).calls, 0);
}

TEST(Bridge, UnknownAndNullNamesAreIgnored) {
  qorrt_register_event_handler("KEYDOWN", look_at_map);
  qorrt_register_event_handler(nullptr, look_at_map);
  qorrt_register_event_handler("WHEEL", look_at_map);
  qorrt_register_event_handler("KEYDOWN", nullptr);
  EXPECT_EQ(dispatched<1>("WHEEL", {1}).calls, 0);
  EXPECT_EQ(dispatched<1>(nullptr, {1}).calls, 0);
  EXPECT_EQ(dispatched<1>("KEYDOWN", {1}).calls, 1) << "the earlier handler stays";
}

TEST(Bridge, ANamedEventPassesItsText) {
  qor_event_on("level up", look_at_texts);
  seen = {};
  qor_event_raise_str("level up", "three");
  EXPECT_EQ(seen.texts, kavo::test::Strings{"three"});
  EXPECT_EQ(seen.flags, QOR_FLAG_NESTED | QOR_FLAG_STRINGS);
}

TEST(Bridge, ANamedEventWithoutTextPassesAnEmptyOne) {
  qor_event_on("level up", look_at_texts);
  seen = {};
  qor_event_raise_str("level up", nullptr);
  EXPECT_EQ(seen.texts, kavo::test::Strings{""});
}

TEST(Bridge, ALaterHandlerReplacesTheEarlierOne) {
  qor_event_on("level up", look_at_texts);
  qor_event_on("level up", [](QorArray*) { seen.calls += 10; });
  seen = {};
  qor_event_raise_str("level up", "");
  EXPECT_EQ(seen.calls, 10);
}

TEST(Bridge, ANamedEventWithoutHandlerOrNameDoesNothing) {
  qor_event_on(nullptr, look_at_texts);
  qor_event_on("nobody", nullptr);
  seen = {};
  qor_event_raise_str("nobody", "text");
  qor_event_raise_str(nullptr, "text");
  EXPECT_EQ(seen.calls, 0);
}

TEST(Bridge, KeepsTheProcessArguments) {
  std::string program = "kavo";
  std::string word = "shot";
  std::array<char*, 3> argv{program.data(), word.data(), nullptr};
  qor_set_args(2, argv.data());
  EXPECT_EQ(kavo::test::take_strings(qor_os_args()), (kavo::test::Strings{"kavo", "shot"}));
  qor_set_args(0, nullptr);
  EXPECT_EQ(kavo::test::take_strings(qor_os_args()), kavo::test::Strings{});
}

TEST(Bridge, KeepsTheHandle) {
  qor_runtime_set_handle(0x123456789A);
  EXPECT_EQ(qor_runtime_handle(), 0x123456789A);
}

} // namespace
