// Which keys and which parts of a controller are for which action, and what the program sees of it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/keys/bindings.h"
#include "host/keys/bound_keys.h"
#include "host/keys/controls.h"
#include "host/offscreen.h"
#include "tests/fakes/stage.h"

namespace {

using kavo::host::Action;
using kavo::host::all_actions;
using kavo::host::bind_control;
using kavo::host::bind_key;
using kavo::host::Bindings;
using kavo::host::BoundKeys;
using kavo::host::Control;
using kavo::host::EventSink;
using kavo::host::is_for;
using kavo::host::Key;
using kavo::host::KeyNames;
using kavo::host::names_of;
using kavo::host::Offscreen;
using kavo::host::repair;
using kavo::test::key_named;

using Lines = std::vector<std::string>;

TEST(Bindings, TakeAKeyFromWhoHasIt) {
  Bindings bindings;
  EXPECT_EQ(bind_key(bindings, Action::drop, 1, "A"), Action::left);
  EXPECT_EQ(bindings.keys_of(Action::left), (Bindings::Keys{"Left", ""}));
  EXPECT_EQ(bindings.keys_of(Action::drop), (Bindings::Keys{"Space", "A"}));
  EXPECT_EQ(bind_key(bindings, Action::drop, 0, "J"), std::nullopt);
  EXPECT_EQ(bind_key(bindings, Action::drop, 0, "A"), std::nullopt) << "it had it itself";
  EXPECT_EQ(bindings.keys_of(Action::drop), (Bindings::Keys{"A", ""}));
}

TEST(Bindings, KeepEscapeWhereItIs) {
  Bindings bindings;
  bind_key(bindings, Action::escape, 0, "Q");
  bind_key(bindings, Action::left, 0, "Escape");
  EXPECT_EQ(bindings, Bindings());
  bind_key(bindings, Action::escape, 1, "Q");
  EXPECT_EQ(bindings.keys_of(Action::escape), (Bindings::Keys{"Escape", "Q"}));
}

TEST(Bindings, LeaveToThePanelAndTheWindowWhatIsTheirs) {
  Bindings bindings;
  bind_key(bindings, Action::left, 0, "F1");
  bind_key(bindings, Action::left, 0, "F11");
  bind_control(bindings, Action::left, 0, Control::guide);
  EXPECT_EQ(bindings, Bindings());
}

TEST(Bindings, ShareAButtonBetweenMenusAndPlayOnly) {
  Bindings bindings;
  EXPECT_EQ(bind_control(bindings, Action::drop, 1, Control::start), Action::pause);
  EXPECT_TRUE(is_for(bindings, Action::accept, Control::start));
  EXPECT_EQ(bind_control(bindings, Action::turn, 0, Control::start), Action::accept);
  EXPECT_FALSE(is_for(bindings, Action::drop, Control::start));
}

TEST(Bindings, AreMadeConsistentInTheOrderOfTheActions) {
  Bindings bindings;
  bindings.keys_of(Action::left) = {"D", "D"};
  bindings.keys_of(Action::turn) = {"Foo", "J"};
  bindings.keys_of(Action::down) = {"F1", "Escape"};
  bindings.keys_of(Action::music) = {"Escape", ""};
  bindings.keys_of(Action::escape) = {"Q", ""};
  bindings.controls_of(Action::music) = {Control::south, Control::misc, Control::misc};
  const auto is_key = [](const std::string& name) { return name != "Foo"; };
  EXPECT_EQ(repair(bindings, is_key),
            (Lines{"keys.turn cannot have the key \"Foo\"", "keys.down cannot have the key \"F1\"",
                   "keys.escape must have Escape, which leads back from everywhere",
                   "keys.left cannot have \"D\", which left has",
                   "keys.right cannot have \"D\", which left has",
                   "keys.music cannot have \"Escape\", which escape has",
                   "controller.music cannot have \"south\", which drop has",
                   "controller.music cannot have \"misc\", which music has"}));
  EXPECT_EQ(bindings.keys_of(Action::left), (Bindings::Keys{"D", ""}));
  EXPECT_EQ(bindings.keys_of(Action::right), (Bindings::Keys{"Right", ""}));
  EXPECT_EQ(bindings.keys_of(Action::turn), (Bindings::Keys{"Up", "W"})) << "its usual ones";
  EXPECT_EQ(bindings.keys_of(Action::down), (Bindings::Keys{"Down", "S"}));
  EXPECT_EQ(bindings.keys_of(Action::music), (Bindings::Keys{"", ""}));
  EXPECT_EQ(bindings.keys_of(Action::escape), (Bindings::Keys{"Escape", "Q"}));
  EXPECT_EQ(repair(bindings, is_key), Lines()) << "once and for all";
}

TEST(Bindings, AsTheGameComesAreConsistent) {
  Bindings bindings;
  EXPECT_EQ(repair(bindings, {}), Lines());
  EXPECT_EQ(bindings, Bindings());
}

TEST(Controls, AreCalledSomethingEach) {
  for (int number = 0; number < kavo::host::control_count; ++number) {
    const auto control = static_cast<Control>(number);
    EXPECT_EQ(kavo::host::control_called(kavo::host::word_for(control)), control);
  }
  EXPECT_EQ(kavo::host::control_called("no such thing"), std::nullopt);
}

// ---- what the program sees ----------------------------------------------------------------------

// Keys that go down and up as "+Left", "-Left", with their scancodes.
class Heard final : public EventSink {
public:
  void key_went_down(const Key& key, bool) override { note("+", key); }
  void key_went_up(const Key& key) override { note("-", key); }
  void keyboard_was_taken() override { lines.emplace_back("taken"); }
  void button_went_down(int, int, int) override {}
  void button_went_up(int, int, int) override {}
  void pointer_moved(int, int) override {}
  void close_was_asked() override { lines.emplace_back("close"); }

  Lines lines;
  std::vector<int> scancodes;

private:
  void note(const char* sign, const Key& key) {
    lines.push_back(sign + std::string(key.name));
    scancodes.push_back(key.scancode);
    EXPECT_EQ(key.code, Offscreen().code_of_key(key.name).value_or(0));
  }
};

class BoundKeysTest : public testing::Test {
protected:
  Lines tap(const std::string& name) {
    keys.key_went_down(key_named(name), false);
    keys.key_went_up(key_named(name));
    return std::exchange(heard.lines, {});
  }
  Lines tap(Control control) {
    keys.control_went_down({1000, control});
    keys.control_went_up({1000, control});
    return std::exchange(heard.lines, {});
  }

  Offscreen platform;
  KeyNames names{platform};
  Heard heard;
  BoundKeys keys{heard, names};
  Bindings bindings;
};

TEST_F(BoundKeysTest, AsTheGameComesEveryKeyIsItself) {
  for (const char* name : {"Left", "A", "Right", "D", "Up", "W", "Down", "S", "Space", "P",
                           "Return", "O", "M", "Escape", "J", "7", "F11"})
    EXPECT_EQ(tap(name), (Lines{std::string("+") + name, std::string("-") + name}));
}

TEST_F(BoundKeysTest, EveryActionCanHaveOtherKeys) {
  const std::vector<std::string> others = {"J", "L", "I", "K", "7", "8", "9", "0", "X", "Q"};
  for (size_t number = 0; number < others.size(); ++number)
    bind_key(bindings, all_actions[number], 1, others[number]);
  keys.set_bindings(bindings);
  for (size_t number = 0; number < others.size(); ++number) {
    const std::string meant(names_of(all_actions[number]).front());
    EXPECT_EQ(tap(others[number]), (Lines{"+" + meant, "-" + meant}));
    EXPECT_EQ(tap(meant), (Lines{"+" + meant, "-" + meant}));
  }
}

TEST_F(BoundKeysTest, AKeyThatWasGivenAwayIsForItsNewActionOnly) {
  bind_key(bindings, Action::drop, 1, "A");
  bind_key(bindings, Action::turn, 1, "D");
  bind_key(bindings, Action::right, 0, "Space");
  keys.set_bindings(bindings);
  EXPECT_EQ(tap("A"), (Lines{"+Space", "-Space"}));
  EXPECT_EQ(tap("D"), (Lines{"+Up", "-Up"}));
  EXPECT_EQ(tap("Space"), (Lines{"+Right", "-Right"}));
  EXPECT_EQ(tap("W"), Lines()) << "it was turn's second one, and nobody has it now";
  EXPECT_EQ(tap("Right"), Lines());
}

TEST_F(BoundKeysTest, OneButtonIsAKeyOfItsOwnForEachOfItsActions) {
  EXPECT_EQ(tap(Control::south), (Lines{"+Space", "+Return", "-Space", "-Return"}));
  EXPECT_NE(heard.scancodes[0], heard.scancodes[1]);
  EXPECT_EQ(heard.scancodes[0], heard.scancodes[2]);
  EXPECT_EQ(tap(Control::left_shoulder), Lines());
  bind_control(bindings, Action::left, 1, Control::left_shoulder);
  keys.set_bindings(bindings);
  EXPECT_EQ(tap(Control::left_shoulder), (Lines{"+Left", "-Left"}));
}

TEST_F(BoundKeysTest, AKeyWithoutANameGoesOnAsItIs) {
  keys.key_went_down({40, 0, ""}, false);
  EXPECT_EQ(heard.lines, Lines{"+"});
  EXPECT_EQ(heard.scancodes, std::vector<int>{40});
}

TEST_F(BoundKeysTest, WhatIsNoKeyGoesOnAsItIs) {
  keys.keyboard_was_taken();
  keys.close_was_asked();
  EXPECT_EQ(heard.lines, (Lines{"taken", "close"}));
}

} // namespace
