// What the dispatcher receives for each thing that the player does.
#include <gtest/gtest.h>

#include <bit>
#include <string>
#include <vector>

#include "host/events.h"

namespace {

using kavo::host::Canvas;
using kavo::host::Events;
using kavo::host::EventSink;
using kavo::host::Key;
using kavo::host::Keyboard;
using kavo::host::Presenter;

// Events as lines such as "KEYDOWN 4 97 A 0".
std::vector<std::string>& received() {
  static std::vector<std::string> lines;
  return lines;
}

void record(const char* name, const int64_t* values, const uint32_t* tags, int64_t count) {
  std::string line = name;
  for (int64_t i = 0; i < count; ++i)
    line += " " + (tags[i] == QOR_TAG_STRING
                       ? static_cast<const char*>(qor_reference_in({.i64 = values[i]}))
                       : std::to_string(values[i]));
  received().push_back(line);
}

class EventTest : public testing::Test {
protected:
  EventTest() {
    received().clear();
    events.set_dispatcher(record);
  }

  Keyboard keyboard;
  Events events{keyboard};
};

using Lines = std::vector<std::string>;
constexpr Key key_a = {4, 97, "A"};

TEST_F(EventTest, KeysCarryScancodeCodeNameAndRepeat) {
  events.key_went_down(key_a, false);
  events.key_went_down(key_a, true);
  events.key_went_up(key_a);
  EXPECT_EQ(received(), (Lines{"KEYDOWN 4 97 A 0", "KEYDOWN 4 97 A 1", "KEYUP 4 97 A 0"}));
}

TEST_F(EventTest, KeysReachTheKeyboard) {
  events.key_went_down(key_a, false);
  EXPECT_TRUE(keyboard.is_held(97));
  events.key_went_up(key_a);
  EXPECT_FALSE(keyboard.is_held(97));
}

TEST_F(EventTest, ATakenKeyboardHoldsNothing) {
  events.key_went_down(key_a, false);
  EXPECT_TRUE(keyboard.is_held(97));
  events.keyboard_was_taken();
  EXPECT_FALSE(keyboard.is_held(97));
}

TEST_F(EventTest, ThePointerCarriesItsPlace) {
  events.button_went_down(1, 10, 20);
  events.button_went_up(3, -1, 2);
  events.pointer_moved(5, 6);
  EXPECT_EQ(received(), (Lines{"MOUSEDOWN 1 10 20", "MOUSEUP 3 -1 2", "MOUSEMOVE 5 6"}));
}

TEST_F(EventTest, QuitIsRaisedOnce) {
  EXPECT_FALSE(events.is_quitting());
  events.close_was_asked();
  events.close_was_asked();
  EXPECT_TRUE(events.is_quitting());
  EXPECT_EQ(received(), Lines{"QUIT"});
}

TEST_F(EventTest, WithoutADispatcherEventsAreDropped) {
  events.set_dispatcher(nullptr);
  events.key_went_down(key_a, false);
  EXPECT_EQ(received(), Lines{});
  EXPECT_TRUE(keyboard.is_held(97));
}

// A presenter whose every delivery asks for another one, as a dispatcher that sends SCREENFLIP
// would.
class EndlessPresenter : public Presenter {
public:
  explicit EndlessPresenter(Events& events) : events_(events) {}
  void present(Canvas&) override {}
  void deliver_events(EventSink& sink) override {
    sink.pointer_moved(++deliveries_, 0);
    events_.take_from(*this, events_);
  }
  const std::string& unplayable_reason() const override { return reason_; }

private:
  Events& events_;
  int deliveries_ = 0;
  std::string reason_;
};

TEST_F(EventTest, ADispatcherThatComesBackIsNotServedTwice) {
  EndlessPresenter presenter(events);
  events.take_from(presenter, events);
  EXPECT_EQ(received(), Lines{"MOUSEMOVE 1 0"});
  events.take_from(presenter, events);
  EXPECT_EQ(received().size(), 2U);
}

} // namespace
