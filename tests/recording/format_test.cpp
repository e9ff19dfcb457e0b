// What a file can be: whole, cut short, damaged, foreign, odd.
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <string>
#include <vector>

#include "recording/answers.h"
#include "recording/format.h"

namespace kavo::recording {
namespace {

Recording small_recording() {
  Recording recording{
      .header = {.version = "1.2.3",
                 .began = 1'700'000'000,
                 .arguments = {"one", ""},
                 .table = {{"ANN", 700}, {"---", 0}},
                 .state = "the state"},
      .frames = std::string(5000, 'f'),
      .last = {.frames = 9, .milliseconds = 160.25, .score = 300, .rows = 3, .tips = 1, .level = 2},
      .is_complete = true};
  return recording;
}

std::string reason_of(const std::string& file) {
  try {
    parsed(file);
  } catch (const Damaged& damage) {
    return damage.what();
  }
  return "";
}

void expect_small_recording(const Recording& recording) {
  const Recording expected = small_recording();
  EXPECT_EQ(recording.header.version, expected.header.version);
  EXPECT_EQ(recording.header.began, expected.header.began);
  EXPECT_EQ(recording.header.arguments, expected.header.arguments);
  ASSERT_EQ(recording.header.table.size(), 2U);
  EXPECT_EQ(recording.header.table[0].name, "ANN");
  EXPECT_EQ(recording.header.table[0].score, 700);
  EXPECT_EQ(recording.header.state, expected.header.state);
  EXPECT_EQ(recording.frames, expected.frames);
  EXPECT_EQ(recording.last, expected.last);
  EXPECT_TRUE(recording.is_complete);
  EXPECT_EQ(recording.damage, "");
}

TEST(RecordingFormat, ComesBackAsItWasCompressedOrNot) {
  expect_small_recording(parsed(packed(small_recording(), true)));
  expect_small_recording(parsed(packed(small_recording(), false)));
}

TEST(RecordingFormat, IsSmallerWhereItCanBeCompressed) {
  EXPECT_EQ(packed(small_recording()).size() < 300, KAVO_COMPRESSES == 1);
  EXPECT_GT(packed(small_recording(), false).size(), 5000U);
}

TEST(RecordingFormat, ACutFileKeepsWhatStandsBefore) {
  const std::string head = std::string(mark()) + header_block(small_recording().header);
  const std::string block = frames_block({.frames = 1, .score = 10}, "first");
  const std::string file = head + block + frames_block({.frames = 2, .score = 20}, "second");
  for (size_t size = 0; size < file.size(); ++size) {
    const std::string cut = file.substr(0, size);
    if (size < head.size()) {
      EXPECT_NE(reason_of(cut), "") << size;
      continue;
    }
    const Recording recording = parsed(cut);
    EXPECT_EQ(recording.frames, size < head.size() + block.size() ? "" : "first");
    EXPECT_EQ(recording.last.score, size < head.size() + block.size() ? 0 : 10);
    const bool ends_between = size == head.size() || size == head.size() + block.size();
    EXPECT_EQ(recording.damage, ends_between ? "" : "it ends too early");
    EXPECT_FALSE(recording.is_complete);
  }
}

TEST(RecordingFormat, AChangedByteLosesNoMoreThanTheRest) {
  const std::string head = std::string(mark()) + header_block(small_recording().header);
  const std::string file = head + frames_block({.frames = 1}, "first") +
                           frames_block({.frames = 2}, "second") + end_block({.frames = 2});
  for (size_t place = 0; place < file.size(); ++place) {
    std::string changed = file;
    changed[place] = static_cast<char>(changed[place] ^ 0x41);
    if (place < head.size()) {
      EXPECT_NE(reason_of(changed), "") << place;
      continue;
    }
    const Recording recording = parsed(changed);
    EXPECT_NE(recording.damage, "") << place;
    EXPECT_TRUE(std::string("firstsecond").starts_with(recording.frames));
    EXPECT_FALSE(recording.is_complete);
  }
}

TEST(RecordingFormat, WhatIsNoneSaysSo) {
  for (const std::string& file : {std::string(), std::string("x"), std::string(100'000, '\0'),
                                  std::string("\x89PNG\r\n\x1A\n and so on")})
    EXPECT_EQ(reason_of(file), "it is no recording of a game");
  EXPECT_EQ(reason_of(std::string(mark())), "it ends too early");
  EXPECT_EQ(reason_of(std::string(mark()) + end_block({})), "it does not begin with a header");
}

TEST(RecordingFormat, BlocksBehindTheEndAndUnknownOnesAreDamage) {
  const std::string head = std::string(mark()) + header_block(small_recording().header);
  EXPECT_EQ(parsed(head + end_block({}) + end_block({})).damage, "something follows its end");
  EXPECT_EQ(parsed(head + header_block(small_recording().header)).damage,
            "it has a block of an unknown kind");
}

TEST(RecordingFormat, ABlockThatClaimsTooMuchIsNotBelieved) {
  std::string file = packed(small_recording());
  const size_t size_in_file = mark().size() + 2;
  file.replace(size_in_file, 4, "\xFF\xFF\xFF\x7F");
  EXPECT_EQ(reason_of(file), "a block says of itself what no block can be");
}

// ---- frames -------------------------------------------------------------------------------------

Frame through_bytes(const std::vector<Frame>& frames) {
  FrameCodec writer;
  ByteWriter bytes;
  for (const Frame& frame : frames)
    writer.write(frame, bytes);
  FrameCodec reader;
  ByteReader in(bytes.bytes());
  Frame last;
  for (size_t i = 0; i < frames.size(); ++i)
    reader.read(in, last);
  EXPECT_EQ(in.left(), 0U);
  return last;
}

void expect_same_bits(const std::vector<double>& found, const std::vector<double>& expected) {
  ASSERT_EQ(found.size(), expected.size());
  for (size_t i = 0; i < found.size(); ++i)
    EXPECT_EQ(std::bit_cast<uint64_t>(found[i]), std::bit_cast<uint64_t>(expected[i])) << i;
}

const Frame ordinary = {.keys = {0, 0, 1, 0, 0, 0, 0, 0, 1, 1, 0},
                        .chance = {0.25, 0.75},
                        .clock = {1000.000001, 1000.000315, 1017.5},
                        .fingerprint = 0x1234567890ABCDEFU};

TEST(Frames, ComeBackAsTheyWere) {
  for (int repetitions = 1; repetitions < 130; ++repetitions) {
    const Frame found =
        through_bytes(std::vector<Frame>(static_cast<size_t>(repetitions), ordinary));
    expect_same_bits(found.keys, ordinary.keys);
    expect_same_bits(found.chance, ordinary.chance);
    expect_same_bits(found.clock, ordinary.clock);
    EXPECT_EQ((found.fingerprint ^ ordinary.fingerprint) & found.known_fingerprint, 0U);
    EXPECT_EQ(found.known_fingerprint, repetitions % 64 == 1 ? ~uint64_t{0} : 0xFFU);
    EXPECT_TRUE(found.is_whole);
  }
}

TEST(Frames, KeepOddAnswersToTheBit) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const Frame odd = {
      .keys = {0.5, -1, nan, 1},
      .chance = {0, 0x1p-53, 0x1p-60, 1 - 0x1p-53, 0.3},
      .clock = {-0.0, 0, nan, infinity, -infinity, 1e300, 1e-300, 0.1, 123.4567891234, -5.25, 9e9},
      .folders = {{}, {"", "a b", "kavo_high.txt"}},
      .is_whole = false};
  const Frame found = through_bytes({ordinary, odd, ordinary, odd});
  expect_same_bits(found.keys, odd.keys);
  expect_same_bits(found.chance, odd.chance);
  expect_same_bits(found.clock, odd.clock);
  EXPECT_EQ(found.folders, odd.folders);
  EXPECT_FALSE(found.is_whole);
}

// Any nanosecond of a year that the system's clock can tell.
TEST(Frames, KeepEveryNanosecond) {
  std::vector<Frame> frames;
  uint64_t random = 1;
  for (int i = 0; i < 2000; ++i) {
    random = random * 6364136223846793005U + 1442695040888963407U;
    const auto nanoseconds = static_cast<double>(random >> (11U + random % 40U));
    frames.push_back({.clock = {nanoseconds / 1e6}});
    expect_same_bits(through_bytes({frames.back()}).clock, frames.back().clock);
  }
  expect_same_bits(through_bytes(frames).clock, frames.back().clock);
}

TEST(Frames, OfASteadyGameTakeFewBytes) {
  FrameCodec codec;
  ByteWriter bytes;
  constexpr int frames = 640;
  for (int i = 0; i < frames; ++i)
    codec.write({.keys = std::vector<double>(14), .clock = std::vector<double>(3, 16.0 * i)},
                bytes);
  EXPECT_LE(bytes.bytes().size(), frames * 3U);
}

TEST(Frames, ThatNoGameHasAreDamage) {
  const std::string files[] = {
      "",
      std::string("\x10\xFF\xFF\x03", 4),                     // thousands of keys in no byte
      std::string("\x15\xFF\xFF\xFF\x7F", 5),                 // chances without an answer
      std::string("\x01\xFF\xFF\xFF\xFF\x7F", 6),             // readings without bytes
      std::string("\x19\x01\xFF\xFF\x7F", 5),                 // names without bytes
      std::string("\x15\x01\x00\x00\x00\x00\x00\x00\x20", 9), // a chance of 1
  };
  for (const std::string& file : files) {
    FrameCodec codec;
    Frame frame;
    ByteReader in(file);
    EXPECT_THROW(codec.read(in, frame), Damaged);
  }
}

} // namespace
} // namespace kavo::recording
