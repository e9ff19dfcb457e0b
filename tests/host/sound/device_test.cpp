// The way to the device, for real: SDL's disk driver writes what a device would get.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "host/desktop/sdl_output.h"
#include "host/sound/pitch.h"
#include "host/sound/player.h"
#include "host/sound/tools/script.h"
#include "tests/host/sound/analysis.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

constexpr double rate = 48000.0;
constexpr int64_t block = 512;
constexpr int64_t bar = 92'160; // of the game's music

// Counts what the device has asked for: the file also holds what SDL wrote before it first asked.
class CountingOutput final : public Output, public AudioSource {
public:
  explicit CountingOutput(int64_t& asked) : asked_(asked) {}

  int open() override { return device_.open(); }
  void start(AudioSource& source) override {
    source_ = &source;
    device_.start(*this);
  }
  bool is_lost() const override { return device_.is_lost(); }
  void close() override { device_.close(); }
  double fade_in_seconds() const override { return device_.fade_in_seconds(); }
  double fade_out_seconds() const override { return device_.fade_out_seconds(); }
  void wait() override { device_.wait(); }

  void render(float* interleaved, int64_t frames) noexcept override {
    source_->render(interleaved, frames);
    asked_ += frames;
  }

private:
  int64_t& asked_; // read when the output is closed
  AudioSource* source_ = nullptr;
  SdlOutput device_;
};

class DeviceTest : public testing::Test {
protected:
  // The driver takes a block every millisecond, ten times as fast as it would sound.
  void SetUp() override {
    std::string name = testing::TempDir() + "kavo-sound-XXXXXX";
    const int file = mkstemp(name.data());
    ASSERT_GE(file, 0);
    close(file);
    path = name;
    setenv("SDL_AUDIODRIVER", "disk", 1);
    setenv("SDL_DISKAUDIOFILE", path.c_str(), 1);
    setenv("SDL_DISKAUDIODELAY", "1", 1);
  }
  void TearDown() override { std::filesystem::remove(path); }

  void run(const std::string& lines) {
    MemoryOutput nowhere;
    std::istringstream stream(lines);
    run_script(stream, player, nowhere);
  }

  int64_t frames() const { return player.engine()->frames_rendered(); }

  void let_sound_until(int64_t frame) const {
    while (frames() < frame)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }

  // The left channel of all that the device asked for, once it is closed.
  std::vector<float> left() {
    player.shutdown();
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    const std::string bytes = content.str();
    std::vector<float> samples(bytes.size() / (2 * sizeof(float)));
    for (size_t i = 0; i < samples.size(); ++i)
      std::memcpy(&samples[i], bytes.data() + i * 2 * sizeof(float), sizeof(float));
    samples.erase(samples.begin(), samples.end() - asked);
    return samples;
  }

  static int64_t first_sound(const std::vector<float>& samples) {
    return std::find_if(samples.begin(), samples.end(),
                        [](float sample) { return std::abs(sample) > 1e-4f; }) -
           samples.begin();
  }

  std::string path;
  int64_t asked = 0;
  Player player{std::make_unique<CountingOutput>(asked)};
};

TEST_F(DeviceTest, TheFirstBarsOfTheMusicComeAtTheRightPitchAndTime) {
  player.init();
  ASSERT_NE(player.engine(), nullptr);
  EXPECT_EQ(player.engine()->rate(), 48000);
  run(music_script());
  run("SOUND.GAIN 1 0\nSOUND.REVERBSEND 0 0"); // the melody alone
  const int64_t after = frames();
  let_sound_until(after + 2 * bar + 2 * block);
  const auto samples = left();
  const int64_t heard = first_sound(samples);
  EXPECT_LE(heard, after + 2 * block);
  const int64_t start = heard / block * block; // a command takes effect with a block
  for (const ScoreNote& note : read_score(music_pattern()).notes) {
    if (note.voice != 0 || note.onset >= Fraction(2))
      continue;
    const int64_t onset = start + note.onset.numerator() * 92'160 / note.onset.denominator();
    const auto steady =
        analysis::Samples(samples).subspan(static_cast<size_t>(onset) + 23'040 - 9600, 9600);
    EXPECT_LE(std::abs(analysis::cents_off(steady, frequency_of(note.note) / rate)), 1.0)
        << "note " << note.note << " at " << onset;
    // The attack makes it louder than the end of the note before.
    const auto level = [&](int64_t from) {
      return analysis::root_mean_square(
          analysis::Samples(samples).subspan(static_cast<size_t>(from), 1000));
    };
    if (onset > start) {
      EXPECT_GT(level(onset + 300), 1.5 * level(onset - 1000)) << onset;
    }
  }
}

TEST_F(DeviceTest, AnEffectSoundsWithinTwoBuffersOfItsCommand) {
  player.init();
  run(music_script());
  run("SOUND.NOTE \"~\" 1");
  let_sound_until(10 * block);
  const int64_t before = frames();
  run("SOUND.PLAY 3 c3");
  const int64_t after = frames();
  let_sound_until(after + 20 * block);
  const int64_t heard = first_sound(left());
  EXPECT_GE(heard, before);
  EXPECT_LE(heard, after + 2 * block);
}

TEST_F(DeviceTest, SwitchingTheMusicOffLeavesSilence) {
  player.init();
  run(music_script());
  let_sound_until(48'000);
  run("SOUND.GAIN 0 0\nSOUND.GAIN 1 0");
  const int64_t off = frames();
  let_sound_until(off + int64_t{3} * 48'000);
  const auto samples = left();
  const auto from = [&](int64_t frame, size_t count) {
    return analysis::root_mean_square(
        analysis::Samples(samples).subspan(static_cast<size_t>(frame), count));
  };
  EXPECT_GT(analysis::decibels(from(24'000, 24'000)), -30.0);
  EXPECT_LE(analysis::decibels(from(off + int64_t{2} * 48'000, 24'000)), -100.0);
}

TEST_F(DeviceTest, ShuttingDownFadesAndEndsInSilence) {
  player.init();
  run("SOUND.VOICE 0 SINE 0.005 0.01 1 0.01\nSOUND.NOTE \"a3/64\" 1");
  let_sound_until(48'000);
  const auto samples = left();
  EXPECT_EQ(samples.back(), 0.0f);
  EXPECT_LE(
      analysis::loudest_above(analysis::Samples(samples).subspan(24'000), 8000.0 / rate, 240, 480),
      -80.0);
}

TEST_F(DeviceTest, SoundComesUpSoftly) {
  run("SOUND.VOICE 0 SINE 0.001 0.01 1 0.01\nSOUND.NOTE \"a3/64\" 1");
  player.init();
  let_sound_until(24'000);
  const auto samples = left();
  const double full = analysis::peak(analysis::Samples(samples).subspan(9600, 9600));
  EXPECT_GT(full, 0.1);
  EXPECT_LT(analysis::peak(analysis::Samples(samples).first(2400)), 0.55 * full);
}

// Run under the thread sanitizer, this is what shows that the two sides meet in the rings alone.
TEST_F(DeviceTest, CommandsRaceWithTheCallbackWithoutHarm) {
  player.init();
  for (int i = 0; i < 2000; ++i) {
    const std::string voice = std::to_string(i % 16);
    for (const std::string line :
         {"SOUND.VOICE % SQUARE 0.001 0.01 0.5 0.02", "SOUND.FILTER % 2000", "SOUND.FILTER % 0",
          "SOUND.GAIN % 0.1", "SOUND.PLAY % c4", "SOUND.REVERB 0.5 0.5 0.5 0.2",
          "SOUND.REVERBSEND % 0.3"})
      run(std::regex_replace(line, std::regex("%"), voice));
    if (i % 50 == 0)
      run("SOUND.BPM " + std::to_string(60 + i % 100) + "\nSOUND.NOTE \"c3*8, <e4 g4>*4\" 1");
    if (i % 20 == 0)
      let_sound_until(frames() + block);
  }
  EXPECT_LE(analysis::peak(left()), 0.9);
}

TEST(MissingDevice, IsOneLineAndSilence) {
  setenv("SDL_AUDIODRIVER", "no-such-driver", 1);
  std::vector<std::string> complaints;
  Player player(
      std::make_unique<SdlOutput>(), [] { return 0.0; },
      [&](const std::string& line) { complaints.push_back(line); });
  player.init();
  player.voice(0, "SINE", 0.01, 0.01, 0.5, 0.01);
  player.note("c4", 1);
  player.play(0, "c4");
  player.shutdown();
  ASSERT_EQ(complaints.size(), 1U);
  EXPECT_EQ(complaints[0].find("no sound: "), 0U) << complaints[0];
  EXPECT_EQ(complaints[0].find('\n'), std::string::npos);
}

// ALSA itself would say eight lines.
TEST(MissingDevice, IsOneLineUnderAlsaToo) {
  setenv("SDL_AUDIODRIVER", "alsa", 1);
  setenv("AUDIODEV", "no-such-card", 1);
  testing::internal::CaptureStderr();
  {
    Player player(std::make_unique<SdlOutput>());
    player.init();
    EXPECT_EQ(player.engine(), nullptr);
  }
  unsetenv("AUDIODEV");
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_EQ(said.find("no sound: "), 0U) << said;
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
}

} // namespace
} // namespace kavo::sound
