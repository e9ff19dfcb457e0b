// A recorded game in the window: the same pictures, in the pace that the player likes, and no key
// of theirs for the game.
#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "game/audio/sounds.h"
#include "game/commands.h"
#include "game/program.h"
#include "game/state.h"
#include "game/wiring.h"
#include "recording/recorder.h"
#include "recording/show.h"
#include "tests/fakes/fake_clock.h"
#include "tests/fakes/stage.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

using recording::Recorder;
using recording::Recording;
using recording::Shown;
using recording::Standing;

constexpr int foot_of_the_line = 50; // pixels that the host draws on

struct Pictures {
  std::vector<size_t> hashes;

  void take(const host::Canvas& canvas) {
    const auto pixels = canvas.pixels();
    const size_t seen = pixels.size() - static_cast<size_t>(foot_of_the_line * canvas.width());
    const std::string_view bytes(reinterpret_cast<const char*>(pixels.data()), seen * 4);
    hashes.push_back(std::hash<std::string_view>()(bytes));
  }
};

class StringSink final : public recording::Sink {
public:
  explicit StringSink(std::string& bytes) : bytes_(bytes) {}
  void append(const std::string& bytes) override { bytes_ += bytes; }
  void finish() override {}

private:
  std::string& bytes_;
};

// What was played and seen, once for all tests.
struct PlayedGame {
  Recording recording;
  Pictures pictures;
};

Recorder* recorder = nullptr;

void tap(host::EventSink& sink, const std::string& name) {
  sink.key_went_down(key_named(name), false);
  sink.key_went_up(key_named(name));
}

// Drops each piece where it appears, until a name is asked for.
class Dropper {
public:
  void act(host::EventSink& sink) {
    ++pictures_;
    if (is_over_ && state_is("title"))
      return tap(sink, "Escape");
    is_over_ = is_over_ || state_is("enter");
    if (pictures_ % 6 == 0)
      tap(sink, state_is("enter") ? "Return" : "Space");
    else if (pictures_ % 6 == 3 && state_is("play"))
      tap(sink, pictures_ % 4 == 1 ? "Left" : "Up");
  }

private:
  int pictures_ = 0;
  bool is_over_ = false;
};

PlayedGame play_a_game() {
  const WorkingFolder folder;
  PlayedGame game;
  std::string file;
  Recorder here([&](const recording::Header&) { return std::make_unique<StringSink>(file); },
                [](const std::string& line) { ADD_FAILURE() << line; });
  recorder = &here;
  wiring.frame_ended = [] { recorder->frame_ended(); };
  fake_clock() = {.step_ms = 0.000123};
  setenv("QORRT_SEED", "5", 1);
  Dropper dropper;
  stage() = {};
  stage().play = [&](host::EventSink& sink) { dropper.act(sink); };
  stage().watch = [&](const host::Canvas& canvas) {
    if (here.is_recording())
      game.pictures.take(canvas);
  };
  static char name[] = "kavo";
  char* arguments[] = {name, nullptr};
  static_cast<void>(run_program(1, arguments));
  here.stop();
  stage() = {};
  wiring = Wiring();
  game.recording = recording::parsed(file);
  return game;
}

const PlayedGame& played_game() {
  static const PlayedGame game = play_a_game();
  return game;
}

class ShowTest : public ::testing::Test {
protected:
  void SetUp() override {
    ASSERT_TRUE(played_game().recording.is_complete);
    stage() = {};
    stage().play = [this](host::EventSink& sink) { press_next_key(sink); };
    stage().watch = [this](const host::Canvas& canvas) { pictures.take(canvas); };
    fake_clock() = {.now_ms = 1'000'000};
    static char name[] = "kavo";
    static char word[] = "--replay";
    char* arguments[] = {name, word, nullptr};
    qor_runtime_set_handle(qorrt_init(2, arguments));
    set_geometry();
    static_cast<void>(command::screen(SCRW, SCRH, window_title, 1));
    static_cast<void>(set_up_sound());
  }
  void TearDown() override {
    EXPECT_EQ(qor_err_code(), 0);
    qorrt_shutdown(qor_runtime_handle());
    stage() = {};
    release_state();
    EXPECT_EQ(wiring.number, &qorrt_call_typed_f64);
  }

  // One key a picture; none is nothing, and Escape follows the last one when all was shown.
  void press_next_key(host::EventSink& sink) {
    const std::string key = keys.empty() ? "" : keys.front();
    if (!keys.empty())
      keys.pop_front();
    else if (std::ssize(pictures.hashes) >= pictures_before_escape)
      tap(sink, "Escape");
    if (!key.empty())
      tap(sink, key);
  }

  Shown show() { return recording::show(played_game().recording); }

  const WorkingFolder folder;
  Pictures pictures;
  std::deque<std::string> keys;
  ptrdiff_t pictures_before_escape = 10'000;
};

TEST_F(ShowTest, ShowsThePicturesThatWereSeen) {
  const auto& seen = played_game().pictures.hashes;
  pictures_before_escape = std::ssize(seen) + 2;
  const Shown shown = show();
  EXPECT_EQ(shown.standing, Standing::as_recorded);
  EXPECT_GT(seen.size(), 50U);
  pictures.hashes.resize(seen.size());
  EXPECT_EQ(pictures.hashes, seen);
  EXPECT_FALSE(std::filesystem::exists("tmp/kavo_high.txt"));
}

TEST_F(ShowTest, TakesTheTimeThatWasPlayed) {
  pictures_before_escape = std::ssize(played_game().pictures.hashes) + 1;
  show();
  EXPECT_NEAR(fake_clock().slept_ms, played_game().recording.last.milliseconds, 60);
}

TEST_F(ShowTest, IsFasterAsThePlayerLikes) {
  keys = {"8"};
  pictures_before_escape = std::ssize(played_game().pictures.hashes) + 1;
  EXPECT_EQ(show().standing, Standing::as_recorded);
  EXPECT_NEAR(fake_clock().slept_ms, played_game().recording.last.milliseconds / 8, 200);
}

TEST_F(ShowTest, NoKeyReachesTheGame) {
  for (int i = 0; i < 10; ++i)
    for (const char* key : {"Left", "Right", "Up", "M", "O", "Down", "1", "F1", ""})
      keys.emplace_back(key);
  pictures_before_escape = std::ssize(played_game().pictures.hashes) + 1;
  EXPECT_EQ(show().standing, Standing::as_recorded);
}

TEST_F(ShowTest, PausesUntilAKeyGoesOn) {
  int waits = 0;
  keys = {"", "", "", "Space"};
  stage().wait = [&](host::EventSink& sink) {
    if (++waits == 5)
      tap(sink, "P");
  };
  pictures_before_escape = std::ssize(played_game().pictures.hashes) + 8;
  EXPECT_EQ(show().standing, Standing::as_recorded);
  EXPECT_EQ(waits, 5);
}

TEST_F(ShowTest, GoesToTheEndAtOnceAndStaysThere) {
  keys = {"", "", "End"};
  pictures_before_escape = 12;
  const Shown shown = show();
  EXPECT_EQ(shown.standing, Standing::as_recorded);
  EXPECT_LT(pictures.hashes.size(), 20U);
  EXPECT_LT(fake_clock().slept_ms, 1000);
  EXPECT_EQ(pictures.hashes.back(), played_game().pictures.hashes.back());
}

TEST_F(ShowTest, IsLeftAnyTime) {
  pictures_before_escape = 20;
  const Shown shown = show();
  EXPECT_EQ(shown.standing, Standing::playing);
  EXPECT_LT(shown.progress.frames, 25);
}

TEST_F(ShowTest, TellsInTheWindowWhereAnotherVersionDiffers) {
  Recording other = played_game().recording;
  other.last.score += 1;
  pictures_before_escape = std::ssize(played_game().pictures.hashes) + 2;
  EXPECT_EQ(recording::show(other).standing, Standing::diverged);
}

} // namespace
} // namespace kavo::test
