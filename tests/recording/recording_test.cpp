// Games that are recorded and played again: the same commands, answers and end, or a word about the
// first frame that differs.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "game/wiring.h"
#include "recording/recorder.h"
#include "recording/replay.h"
#include "recording/state_image.h"
#include "tests/game/game_fixture.h"
#include "tests/recording/recorded_games.h"

namespace kavo::test {
namespace {

using recording::Damaged;
using recording::Frame;
using recording::Recording;
using recording::Replay;
using recording::Standing;

constexpr int64_t frames_of_a_visit = 1500;

Standing play_to_the_end(Replay& replay) {
  Standing standing = Standing::playing;
  while (standing == Standing::playing)
    standing = replay.play_frame();
  return standing;
}

// What is left of a recording when its frames are these.
Recording with_frames(const Recording& recording, const std::vector<Frame>& frames) {
  Recording changed = recording;
  recording::FrameCodec codec;
  recording::ByteWriter bytes;
  for (const Frame& frame : frames)
    codec.write(frame, bytes);
  changed.frames = bytes.bytes();
  return changed;
}

std::vector<Frame> frames_in(const Recording& recording) {
  std::vector<Frame> frames;
  recording::FrameCodec codec;
  recording::ByteReader bytes(recording.frames);
  while (bytes.left() > 0)
    codec.read(bytes, frames.emplace_back());
  return frames;
}

class RecordingTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    host().is_discarding = true;
  }
  void TearDown() override {
    recording_host().on_frame = {};
    GameTest::TearDown();
    EXPECT_EQ(wiring.number, &qorrt_call_typed_f64) << "the game still talks to somebody else";
  }

  std::vector<Recording> visit(int64_t frames) {
    Visitor visitor(7, frames);
    play_and_record(visitor, shelf, told);
    EXPECT_EQ(told, std::vector<std::string>());
    std::vector<Recording> recordings;
    for (const std::string& file : shelf.files)
      recordings.push_back(recording::parsed(file));
    prepare_replay();
    return recordings;
  }

  // As a program does before it plays a recording.
  static void prepare_replay() {
    host().forget();
    qor_runtime_set_handle(qorrt_init(0, nullptr));
  }

  const PlayersClock time{true};
  WorkingFolder folder;
  Shelf shelf;
  std::vector<std::string> told;
  double begun_ms = 0; // the first game
};

TEST_F(RecordingTest, EachGameIsPlayedAgainToItsRecordedEnd) {
  const auto recordings = visit(frames_of_a_visit);
  ASSERT_GE(recordings.size(), 2U);
  for (const Recording& recording : recordings) {
    EXPECT_EQ(recording.damage, "");
    Replay replay(recording);
    EXPECT_EQ(play_to_the_end(replay), recordings.back().last == recording.last &&
                                               &recording == &recordings.back() &&
                                               !recording.is_complete
                                           ? Standing::cut_off
                                           : Standing::as_recorded);
    EXPECT_EQ(replay.progress(), recording.last);
    EXPECT_GT(replay.progress().frames, 30);
  }
  EXPECT_TRUE(
      std::ranges::any_of(recordings, [](const auto& each) { return each.last.score > 0; }));
  EXPECT_EQ(shelf.finished, std::ssize(recordings));
}

TEST_F(RecordingTest, SendsTheSameCommandsToTheHost) {
  host().is_discarding = false;
  Visitor visitor(7, 400);
  Trace played;
  shelf.on_begin = [] { new_trace(); };
  shelf.on_finish = [&] { played = played.empty() ? new_trace() : played; };
  play_and_record(visitor, shelf, told);
  std::erase_if(played, [](const std::string& line) {
    return line.starts_with("GFX.KEYSTATE") || line.starts_with("RND") ||
           line.starts_with("BINWRITER");
  });

  const Recording recording = recording::parsed(shelf.files.front());
  prepare_replay();
  host().is_discarding = false;
  Replay replay(recording);
  replay.set_presented(true);
  EXPECT_EQ(play_to_the_end(replay), Standing::as_recorded);
  EXPECT_GT(played.size(), 10'000U);
  EXPECT_TRUE(same(new_trace(), played));
}

TEST_F(RecordingTest, PausesWithTheRecordedTime) {
  const Recording recording = visit(300).front();
  Replay replay(recording);
  std::vector<double> pauses;
  replay.set_pause([&](double until) { pauses.push_back(until); });
  play_to_the_end(replay);
  ASSERT_GE(std::ssize(pauses), replay.progress().frames);
  EXPECT_TRUE(std::ranges::is_sorted(pauses));
  EXPECT_GT(pauses.front(), 16);
  EXPECT_LT(pauses.front(), 40);
}

TEST_F(RecordingTest, TellsTheFirstFrameThatDiffers) {
  const Recording recording = visit(300).front();
  for (const size_t changed : {1U, 40U, 63U, 64U, 65U, 100U}) {
    auto frames = frames_in(recording);
    ASSERT_LT(changed, frames.size());
    // The clock moves the sky.
    for (double& reading : frames[changed].clock)
      reading += 5000;
    const Recording other = with_frames(recording, frames);
    Replay replay(other);
    EXPECT_EQ(play_to_the_end(replay), Standing::diverged);
    EXPECT_EQ(replay.progress().frames, static_cast<int64_t>(changed));
  }
}

TEST_F(RecordingTest, TellsAFrameThatAsksForMoreOrLess) {
  const Recording recording = visit(300).front();
  for (const bool is_more : {true, false}) {
    auto frames = frames_in(recording);
    if (is_more)
      frames[20].keys.pop_back();
    else
      frames[20].keys.push_back(0);
    const Recording other = with_frames(recording, frames);
    Replay replay(other);
    EXPECT_EQ(play_to_the_end(replay), Standing::diverged);
    EXPECT_EQ(replay.progress().frames, 20);
    EXPECT_EQ(qor_err_code(), 0);
  }
}

TEST_F(RecordingTest, TellsAnEndThatIsNotTheRecordedOne) {
  Recording recording = visit(frames_of_a_visit).front();
  ASSERT_TRUE(recording.is_complete);
  ++recording.last.score;
  Replay replay(recording);
  EXPECT_EQ(play_to_the_end(replay), Standing::diverged);
}

TEST_F(RecordingTest, EndsWhereTheProgramEnded) {
  Recording recording = visit(300).front();
  auto frames = frames_in(recording);
  frames.resize(100);
  frames.back().is_whole = false;
  frames.back().clock.resize(frames.back().clock.size() / 2);
  const Recording cut = with_frames(recording, frames);
  Replay replay(cut);
  EXPECT_EQ(play_to_the_end(replay), Standing::cut_off);
  EXPECT_EQ(replay.progress().frames, 99);
  EXPECT_EQ(qor_err_code(), 0);
}

TEST_F(RecordingTest, SavesNothingWhenPlayedAgain) {
  const auto recordings = visit(frames_of_a_visit);
  std::filesystem::remove("tmp/kavo_high.txt");
  for (const Recording& recording : recordings) {
    Replay replay(recording);
    replay.set_presented(true);
    play_to_the_end(replay);
  }
  EXPECT_FALSE(std::filesystem::exists("tmp/kavo_high.txt"));
}

TEST_F(RecordingTest, AFullShelfIsToldOnceAndPlayGoesOn) {
  shelf.bytes_before_failure = 9000;
  Visitor visitor(7, frames_of_a_visit);
  play_and_record(visitor, shelf, told);
  EXPECT_EQ(told, std::vector<std::string>{"this game is not recorded: the shelf is full"});
  EXPECT_GE(visitor.frames(), frames_of_a_visit) << "the game ended early";
  EXPECT_GE(visitor.games(), 2);
  const Recording recording = recording::parsed(shelf.files.front());
  prepare_replay();
  Replay replay(recording);
  EXPECT_EQ(play_to_the_end(replay), Standing::cut_off);
  EXPECT_GT(replay.progress().frames, 30);
}

// What a killed program leaves is what was appended by then.
TEST_F(RecordingTest, IsNeverMoreThanASecondBehindTheGame) {
  Visitor visitor(7, 600);
  double longest_ms = 0;
  shelf.after_frame = [&] {
    if (shelf.files.empty() || shelf.finished > 0)
      return;
    const Recording kept = recording::parsed(shelf.files.front());
    longest_ms = std::max(longest_ms, NOW - begun_ms - kept.last.milliseconds);
  };
  shelf.on_begin = [this] { begun_ms = LASTDROP; };
  play_and_record(visitor, shelf, told);
  EXPECT_GT(longest_ms, 300);
  EXPECT_LT(longest_ms, 1000);
}

TEST_F(RecordingTest, HoldsNothingOfWhereTheProgramLies) {
  const auto recordings = visit(300);
  EXPECT_EQ(recordings.front().header.arguments, std::vector<std::string>());
  EXPECT_EQ(recordings.front().header.state.find('/'), std::string::npos);
}

// ---- the state ----------------------------------------------------------------------------------

TEST_F(RecordingTest, TheStateComesBackAsItWas) {
  arrange_busy_lock();
  put_text(HS_NAME.get(), 1, "ANN");
  POP_X = numbers({1.5, -0.0, 1e300, 0.1});
  recording::ByteWriter before;
  recording::write_state(before);
  ROWS = 3;
  BOARD.reset();
  HS_NAME.reset();
  recording::ByteReader in(before.bytes());
  POP_X.reset();
  EXPECT_THROW(recording::read_state(in), Damaged)
      << "a pool of four slots is no pool of this game";

  POP_X = zeros(NPOP);
  HS_NAME = texts(5, "A;B");
  arrange_busy_lock();
  recording::ByteWriter whole;
  recording::write_state(whole);
  ROWS = 3;
  BOARD.reset();
  recording::ByteReader again(whole.bytes());
  recording::read_state(again);
  recording::ByteWriter after;
  recording::write_state(after);
  EXPECT_EQ(after.bytes(), whole.bytes());
  EXPECT_EQ(ROWS, 15);
}

TEST_F(RecordingTest, AnotherGamesStateIsNamed) {
  Recording recording = visit(200).front();
  const size_t place = recording.header.state.find("KAVOARMED");
  ASSERT_NE(place, std::string::npos);
  recording.header.state.replace(place, 9, "KAVOALARM");
  try {
    Replay replay(recording);
    FAIL() << "a state that is none of this game was taken";
  } catch (const Damaged& damage) {
    EXPECT_STREQ(damage.what(),
                 "its game has a variable \"KAVOALARM\" where \"KAVOARMED\" is expected");
  }
}

} // namespace
} // namespace kavo::test
