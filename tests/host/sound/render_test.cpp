// Scripts of SOUND commands, and kavo-render, which makes WAV files of them.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "host/sound/tools/script.h"
#include "tests/host/sound/studio.h"

namespace kavo::sound {
namespace {

std::string error_of(const std::string& lines) {
  try {
    Studio studio;
    studio.run(lines);
    return "";
  } catch (const ScriptError& error) {
    return error.what();
  }
}

TEST(Script, ErrorsNameLineCommandAndArgument) {
  EXPECT_EQ(error_of("# fine\n\nSOUND.GAIN 0 nan"),
            "line 3: SOUND.GAIN: argument 2 (gain) must be 0 to 4, got nan");
  EXPECT_EQ(error_of("SOUND.GAIN 0"), "line 1: SOUND.GAIN: expects 2 arguments, got 1");
  EXPECT_EQ(error_of("SOUND.GAIN 0 loud"),
            "line 1: SOUND.GAIN: argument 2 must be a number, got \"loud\"");
  EXPECT_EQ(error_of("SOUND.LOUD 1"), "line 1: unknown command \"SOUND.LOUD\"");
  EXPECT_EQ(error_of("WAIT -1"), "line 1: WAIT: argument 1 must be 0 to 86400 seconds");
  EXPECT_EQ(error_of("SOUND.NOTE \"c4 [\" 1"),
            "line 1: SOUND.NOTE: argument 1 (pattern), column 5: expected a note, ~, [, <, a "
            "modifier or \"]\", got the end");
}

TEST(Script, WaitRendersAsLongAsItSays) {
  Studio studio(44100);
  studio.run("WAIT 0.5");
  studio.finish();
  EXPECT_EQ(studio.interleaved().size(), 2U * 22050U);
}

struct Outcome {
  int status;
  std::string output;
};

Outcome run(const std::string& command) {
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr)
    return {-1, ""};
  std::string output;
  std::array<char, 4096> part{};
  while (std::fgets(part.data(), part.size(), pipe) != nullptr)
    output += part.data();
  return {WEXITSTATUS(pclose(pipe)), output};
}

class RenderTest : public testing::Test {
protected:
  void SetUp() override {
    std::string name = testing::TempDir() + "kavo-render-XXXXXX";
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    folder = name;
  }
  void TearDown() override { std::filesystem::remove_all(folder); }

  Outcome render(const std::string& script, const std::string& options = "") {
    std::ofstream(folder / "script") << script;
    return run("\"" KAVO_RENDER "\" " + options + " \"" + wav() + "\" \"" +
               (folder / "script").string() + "\"");
  }
  std::string wav() const { return (folder / "out.wav").string(); }

  // A figure of sox's, by the name it has in the output of `effect`.
  double sox(const std::string& effect, const std::string& name) const {
    const Outcome measured = run("sox -V1 \"" + wav() + "\" -n " + effect);
    const auto at = measured.output.find(name);
    if (at == std::string::npos)
      throw std::runtime_error("sox says nothing of " + name + ": " + measured.output);
    return std::strtod(measured.output.c_str() + at + name.size(), nullptr);
  }

  std::filesystem::path folder;
};

// A second opinion: another program reads the file and measures what our own analysis measures.
TEST_F(RenderTest, SoxMeasuresTheMusicAsWeDo) {
  ASSERT_EQ(render(music_script() + "WAIT 30.72").status, 0);
  EXPECT_NEAR(sox("stat", "Length (seconds):"), 30.72, 1e-6);
  EXPECT_NEAR(sox("stats", "Pk lev dB"), -7.06, 0.05);
  EXPECT_LE(std::abs(sox("stats", "DC offset")), 1e-4);
}

TEST_F(RenderTest, SoxHearsTheNoteThatWasAskedFor) {
  ASSERT_EQ(render("SOUND.VOICE 0 SINE 0.01 0.01 1 0.01\nSOUND.NOTE \"a4/8\" 1\nWAIT 4").status, 0);
  EXPECT_NEAR(sox("remix 1 stat", "Rough   frequency:"), 440.0, 2.0);
}

TEST_F(RenderTest, OtherRatesAreWrittenAsSuch) {
  ASSERT_EQ(render("SOUND.NOTE \"a4\" 1\nWAIT 1", "--rate 44100").status, 0);
  EXPECT_NE(run("sox --i \"" + wav() + "\"").output.find("44100"), std::string::npos);
}

TEST_F(RenderTest, RefusesWhatItCannotDoAndSaysWhy) {
  const Outcome bad_script = render("SOUND.PLAY 0 x");
  EXPECT_EQ(bad_script.status, 1);
  EXPECT_EQ(bad_script.output.find("kavo-render: line 1: SOUND.PLAY: argument 2 (note), column 1"),
            0U)
      << bad_script.output;
  EXPECT_FALSE(std::filesystem::exists(wav()));
  EXPECT_EQ(render("", "--rate 1").status, 1);
  EXPECT_EQ(render("", "--loud").status, 1);
  EXPECT_EQ(run("\"" KAVO_RENDER "\"").status, 1);
  EXPECT_EQ(run("\"" KAVO_RENDER "\" \"" + wav() + "\" /nonexistent/script").status, 1);
  EXPECT_EQ(run("\"" KAVO_RENDER "\" /nonexistent/out.wav /dev/null").status, 1);
}

TEST_F(RenderTest, TellsHowItIsUsed) {
  const Outcome help = run("\"" KAVO_RENDER "\" --help");
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.output.find("usage: kavo-render"), 0U);
}

} // namespace
} // namespace kavo::sound
