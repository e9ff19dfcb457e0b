// A game stands still while its player is elsewhere.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/sound/memory_output.h"
#include "tests/fakes/stage.h"
#include "tests/host/played.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

using host::EventSink;
using Step = std::function<void(EventSink&)>;

const std::string left = "Left";

void come(EventSink& sink) {
  sink.keyboard_was_given();
}
void go(EventSink& sink) {
  sink.keyboard_was_taken();
}
void press_left(EventSink& sink) {
  sink.key_went_down(key_named(left), false);
}
void release_left(EventSink& sink) {
  sink.key_went_up(key_named(left));
}

class WaitingTest : public testing::Test {
protected:
  WaitingTest() {
    stage() = {};
    stage().settings_folder = settings.path();
    stage().wait = [this](EventSink& sink) {
      ASSERT_LT(waits, while_waiting.size()) << "it waits for more";
      while_waiting[waits++](sink);
    };
    stage().watch = [this](const host::Canvas& picture) { corners.push_back(picture.pixels()[0]); };
  }
  ~WaitingTest() override { stage() = {}; }

  // Shows a picture, and the player does this once.
  static void show(const Played& program, const Step& step) {
    bool is_done = false;
    stage().play = [&](EventSink& sink) {
      step(sink);
      is_done = true;
    };
    // A frame that has asked for keys has taken its events already.
    while (!is_done)
      program.send("SCREENFLIP");
    stage().play = nullptr;
  }
  static void open(const Played& program) {
    program.send("SCREEN", 400, 100, "x", 1);
    program.send("RECT", 0, 0, 400, 100, 1);
    show(program, come);
  }

  static constexpr uint32_t white = 0xFFFFFF;
  static constexpr uint32_t dimmed_white = 0x3F3F3F;

  WorkingFolder scores;
  TemporaryFolder settings;
  std::vector<Step> while_waiting;
  size_t waits = 0;
  std::vector<uint32_t> corners; // of every picture that was shown
};

TEST_F(WaitingTest, UntilThePlayerIsBackAndPressesAKeyWhichIsNotTheGames) {
  const Played program;
  open(program);
  while_waiting = {come, [](EventSink& sink) { sink.pointer_moved(3, 3); }, press_left};
  show(program, go);
  EXPECT_EQ(waits, 3U);
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Left"), 0.0);
  show(program, release_left);
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Left"), 0.0);
  show(program, press_left);
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Left"), 1.0);
}

TEST_F(WaitingTest, WithADimmedPictureThatIsBrightAgainAfterwards) {
  const Played program;
  open(program);
  EXPECT_EQ(corners, std::vector{white});
  while_waiting = {come, press_left};
  show(program, go);
  EXPECT_EQ(corners.front(), white);
  EXPECT_EQ(corners.back(), white);
  EXPECT_EQ(std::ranges::count(corners, dimmed_white), 3);
}

TEST_F(WaitingTest, OfTheTwoKeysOfAControllersButtonNoneIsTheGames) {
  const Played program;
  open(program);
  while_waiting = {[](EventSink& sink) { sink.control_went_down({1000, host::Control::south}); }};
  show(program, go);
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Space"), 0.0);
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Return"), 0.0);
}

TEST_F(WaitingTest, OrClicks) {
  const Played program;
  open(program);
  while_waiting = {[](EventSink& sink) { sink.button_went_down(1, 5, 5); }};
  show(program, go);
  EXPECT_EQ(waits, 1U);
}

TEST_F(WaitingTest, WhenItIsMinimised) {
  const Played program;
  open(program);
  while_waiting = {press_left};
  show(program, [](EventSink& sink) { sink.picture_was_hidden(); });
  EXPECT_EQ(waits, 1U);
}

TEST_F(WaitingTest, AndLetsGoOfWhatIsHeld) {
  const Played program;
  open(program);
  show(program, press_left);
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Left"), 1.0);
  while_waiting = {[](EventSink& sink) { sink.button_went_down(1, 5, 5); }};
  show(program, [](EventSink& sink) { sink.picture_was_hidden(); });
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Left"), 0.0);
  // The desktop repeats the key that is still down; that is no press.
  show(program, [](EventSink& sink) { sink.key_went_down(key_named(left), true); });
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Left"), 0.0);
}

TEST_F(WaitingTest, AKeyThatIsHeldSinceThenIsNoPress) {
  const Played program;
  open(program);
  while_waiting = {press_left};
  show(program, go);
  show(program, [](EventSink& sink) { sink.key_went_down(key_named(left), true); });
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Left"), 0.0);
}

TEST_F(WaitingTest, NotForSomebodyWhoNeverCame) {
  const Played program;
  program.send("SCREEN", 8, 4, "x", 1);
  show(program, go);
  show(program, [](EventSink& sink) { sink.picture_was_hidden(); });
  EXPECT_EQ(waits, 0U);
}

TEST_F(WaitingTest, NotWhenThePlayerWantsItOtherwise) {
  write_file(settings / "settings.ini", "[player]\nwaits = no\n");
  const Played program;
  open(program);
  show(program, go);
  EXPECT_EQ(waits, 0U);
}

TEST_F(WaitingTest, NotInASceneAndNotInAProgramThatNobodyPlays) {
  const Played scene({"kavo", "shot", "title"});
  open(scene);
  show(scene, go);
  Bridge bridge;
  bridge.send("SCREEN", 8, 4, "x", 1);
  stage().play = come;
  bridge.send("SCREENFLIP");
  stage().play = go;
  bridge.send("SCREENFLIP");
  EXPECT_EQ(waits, 0U);
}

// A frame is ended before the program is, as always.
[[noreturn]] void end_while_waiting(const std::vector<Step>& steps) {
  size_t step = 0;
  stage().wait = [&](EventSink& sink) { steps.at(step++)(sink); };
  const Played program;
  const int64_t frame = qorrt_frame_begin(program.handle());
  program.send("SCREEN", 8, 4, "x", 1);
  stage().play = come;
  program.send("SCREENFLIP");
  stage().play = go;
  program.send("SCREENFLIP");
  std::fputs("frame;", stderr);
  qorrt_frame_end(program.handle(), frame);
  std::_Exit(99);
}

TEST_F(WaitingTest, EndsWhenItIsClosed) {
  EXPECT_EXIT(
      end_while_waiting({[](EventSink&) {}, [](EventSink& sink) { sink.close_was_asked(); }}),
      testing::ExitedWithCode(0), "frame;$");
}

TEST_F(WaitingTest, EndsOnSignals) {
  for (const int signal : {SIGINT, SIGTERM})
    EXPECT_EXIT(
        end_while_waiting({[](EventSink&) {}, [signal](EventSink&) { std::raise(signal); }}),
        testing::ExitedWithCode(0), "frame;$");
}

// ---- its sound ----------------------------------------------------------------------------------

double loudest(const std::vector<float>& samples, size_t from) {
  double level = 0;
  for (size_t i = from; i < samples.size(); ++i)
    level = std::max(level, std::abs(static_cast<double>(samples[i])));
  return level;
}

class WaitingSound : public WaitingTest {
protected:
  WaitingSound() {
    stage().make_sound_output = [this] {
      auto made = std::make_unique<sound::MemoryOutput>();
      output = made.get();
      return made;
    };
  }

  void play_music(const Played& program) {
    program.send("SOUND.INIT");
    program.send("SOUND.VOICE", 0, "SQUARE", 0, 0.1, 1, 0.1);
    program.send("SOUND.NOTE", "a4", 1);
    output->render(24'000);
  }

  sound::MemoryOutput* output = nullptr;
};

TEST_F(WaitingSound, FadesOutWithinATenthOfASecondAndIsThenNotRendered) {
  const Played program;
  open(program);
  play_music(program);
  const size_t before = output->interleaved().size();
  size_t after_fading = 0;
  while_waiting = {[&](EventSink&) {
                     after_fading = output->interleaved().size();
                     output->render(48'000);
                   },
                   press_left};
  show(program, go);
  const auto& samples = output->interleaved();
  constexpr size_t tenth_of_a_second = 2 * 4800;
  EXPECT_LE(after_fading - before, tenth_of_a_second);
  EXPECT_EQ(loudest(samples, after_fading), 0.0) << "the device is closed";
  EXPECT_LT(std::abs(samples[after_fading - 1]), 0.001f) << "it was cut off";
  const size_t half_way = before + (after_fading - before) / 4;
  EXPECT_GT(loudest(samples, before), 0.01);
  EXPECT_GT(loudest(samples, half_way), 0.0) << "it fades rather than ends";
}

TEST_F(WaitingSound, ComesBackAndGoesOnWhereItWas) {
  const Played program;
  open(program);
  play_music(program);
  while_waiting = {press_left};
  show(program, go);
  const size_t before = output->interleaved().size();
  output->render(4800);
  const auto& samples = output->interleaved();
  EXPECT_LT(loudest({samples.begin() + static_cast<ptrdiff_t>(before),
                     samples.begin() + static_cast<ptrdiff_t>(before) + 20},
                    0),
            0.01)
      << "it comes up";
  EXPECT_GT(loudest(samples, before), 0.05);
}

TEST_F(WaitingSound, EndsQuietlyWhileItIsOff) {
  const Played program;
  open(program);
  play_music(program);
  while_waiting = {[&](EventSink&) {}, press_left};
  show(program, go);
  program.send("SOUND.SHUTDOWN");
  EXPECT_EQ(stage().told, std::vector<std::string>());
}

} // namespace
} // namespace kavo::test
