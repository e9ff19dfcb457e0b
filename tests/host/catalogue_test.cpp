// The table of commands and what the host says about calls that do not fit it.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "host/catalogue.h"
#include "tests/host/bridge.h"

namespace {

using kavo::host::all_commands;
using kavo::host::Command;
using kavo::host::find_command;
using kavo::test::Bridge;

TEST(Catalogue, HasEveryCommandOnce) {
  std::multiset<std::string> names;
  for (const Command& command : all_commands())
    names.emplace(command.name);
  const std::multiset<std::string> expected = {"SCREEN",
                                               "CLS",
                                               "DRAWCOLOR",
                                               "RECT",
                                               "LINE",
                                               "TEXT",
                                               "SCREENFLIP",
                                               "GFX.KEYSTATE",
                                               "GFX.CLOSE",
                                               "GFX.SAVE_SCREENSHOT",
                                               "SOUND.INIT",
                                               "SOUND.BPM",
                                               "SOUND.VOICE",
                                               "SOUND.FILTER",
                                               "SOUND.GAIN",
                                               "SOUND.REVERB",
                                               "SOUND.REVERBSEND",
                                               "SOUND.PLAY",
                                               "SOUND.NOTE",
                                               "SOUND.SHUTDOWN",
                                               "RND",
                                               "BINWRITER",
                                               "TRANSPOSE",
                                               "REPLAY",
                                               "RESHAPE",
                                               "MVINS",
                                               "SPLIT",
                                               "DIR$"};
  EXPECT_EQ(names, expected);
}

TEST(Catalogue, FindsEachCommandByItsName) {
  for (const Command& command : all_commands())
    EXPECT_EQ(find_command(command.name), &command) << command.name;
}

TEST(Catalogue, FindsNothingElse) {
  for (const char* name : {"", "RECT ", " RECT", "REC", "rect", "Rect", "RECTANGLE", "\xFF", "$"})
    EXPECT_EQ(find_command(name), nullptr) << name;
}

TEST(Catalogue, EachCommandGoesThroughExactlyOneCall) {
  for (const Command& command : all_commands())
    EXPECT_EQ((command.run_number != nullptr) + (command.run_array != nullptr) +
                  (command.run_sound != nullptr),
              1)
        << command.name;
}

TEST(CommandErrors, AnUnknownCommandIsNamed) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("FOO"), "unknown command \"FOO\"");
  EXPECT_EQ(bridge.error_of_fetch("FOO"), "unknown command \"FOO\"");
  EXPECT_EQ(bridge.error_of(nullptr), "unknown command \"\"");
}

TEST(CommandErrors, AWrongCountIsNamed) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("RECT", 1, 2, 3, 4), "RECT: expects 5 arguments, got 4");
  EXPECT_EQ(bridge.error_of("CLS", 1), "CLS: expects 0 arguments, got 1");
  EXPECT_EQ(bridge.error_of("RND"), "RND: expects 1 argument, got 0");
}

TEST(CommandErrors, ANegativeCountIsAWrongCount) {
  Bridge bridge;
  qorrt_call_typed_f64(bridge.handle(), "CLS", nullptr, nullptr, -1);
  EXPECT_EQ(bridge.take_error(), "CLS: expects 0 arguments, got -1");
}

TEST(CommandErrors, MissingSlotsOrTagsAreAnError) {
  Bridge bridge;
  const qor_slot slot = {1.0};
  const uint32_t tag = QOR_TAG_FLOAT64;
  qorrt_call_typed_f64(bridge.handle(), "RND", nullptr, &tag, 1);
  EXPECT_EQ(bridge.take_error(), "RND: arguments or their tags are missing");
  qorrt_call_typed_f64(bridge.handle(), "RND", &slot, nullptr, 1);
  EXPECT_EQ(bridge.take_error(), "RND: arguments or their tags are missing");
}

TEST(CommandErrors, AWrongKindIsNamedWithItsPosition) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("RECT", 1, 2, "x", 4, 5),
            "RECT: argument 3 must be a number, got STRING");
  EXPECT_EQ(bridge.error_of("TEXT", 1, 2, 3.5), "TEXT: argument 3 must be a text, got FLOAT64");
  EXPECT_EQ(bridge.error_of("TEXT", 1, 2, 3), "TEXT: argument 3 must be a text, got INT64");
  EXPECT_EQ(bridge.error_of_fetch("TRANSPOSE", "x"),
            "TRANSPOSE: argument 1 must be an array, got STRING");
  const QorArray* array = nullptr;
  EXPECT_EQ(bridge.error_of("RND", array), "RND: argument 1 must be a number, got ARRAY");
}

TEST(CommandErrors, EveryTagHasItsName) {
  Bridge bridge;
  const qor_slot slot = {};
  const std::pair<uint32_t, const char*> names[] = {{QOR_TAG_OBJECT, "OBJECT"},
                                                    {QOR_TAG_FUNCREF, "FUNCREF"},
                                                    {QOR_TAG_HOST, "OBJECT"},
                                                    {7, "UNKNOWN"},
                                                    {0xFFFFFFFF, "UNKNOWN"}};
  for (const auto& [tag, name] : names) {
    qorrt_call_typed_f64(bridge.handle(), "RND", &slot, &tag, 1);
    EXPECT_EQ(bridge.take_error(), std::string("RND: argument 1 must be a number, got ") + name);
  }
}

TEST(CommandErrors, TheWrongCallIsNamed) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("SPLIT", "a", "b"),
            "SPLIT: gives an array; call it with qorrt_call_typed_arr");
  EXPECT_EQ(bridge.error_of_fetch("CLS"), "CLS: gives a number; call it with qorrt_call_typed_f64");
}

TEST(CommandErrors, IntegersAndDoublesAreBothNumbers) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("SCREEN", 8, 8.0, "", 1.0), "");
  EXPECT_EQ(bridge.error_of("RECT", 1, 2.0, 3, 4.0, 1), "");
}

} // namespace
