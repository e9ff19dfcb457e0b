// What the scenes look like: the real host draws them, without a window, and the pictures that it
// saves are compared with those in tests/golden. KAVO_UPDATE_GOLDEN=1 writes those anew.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "game/program.h"
#include "game/state.h"
#include "tests/fakes/fake_clock.h"
#include "tests/host/read_png.h"
#include "tests/scenes/difference.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

namespace fs = std::filesystem;
using Picture = kavo::test::PngPicture;

constexpr int tolerance = 2;        // of 255, for a compiler that rounds otherwise
constexpr double start_ms = 20'000; // by then both clouds are in sight

struct Scene {
  const char* word;
  std::vector<std::string> pictures;
};

// Names the tests after their scenes.
void PrintTo(const Scene& scene, std::ostream* out) {
  *out << scene.word;
}

class SceneTest : public ::testing::Test {
protected:
  void SetUp() override { setenv("QORRT_SEED", "1", 1); }

  // Runs the program as "kavo shot <word>"; its pictures are then in tmp/.
  static void shoot(std::string word) {
    fake_clock() = FakeClock{.now_ms = start_ms};
    std::string name = "kavo";
    std::string shot = "shot";
    char* arguments[] = {name.data(), shot.data(), word.data(), nullptr};
    ::testing::internal::CaptureStdout();
    static_cast<void>(run_program(3, arguments));
    ::testing::internal::GetCapturedStdout();
    ASSERT_EQ(qor_err_code(), 0) << chars(Text(qor_err_msg()));
    qorrt_shutdown(qor_runtime_handle());
    release_state();
  }

  WorkingFolder folder;
};

Picture read_picture(const std::string& path) {
  return kavo::test::read_png(read_file(path));
}

fs::path golden(const std::string& picture) {
  return fs::path(KAVO_GOLDEN_FOLDER) / picture;
}

// The picture stays behind for whoever wants to see what went wrong.
std::string keep(const std::string& picture) {
  std::string copy = ::testing::TempDir() + picture;
  fs::copy_file("tmp/" + picture, copy, fs::copy_options::overwrite_existing);
  return copy;
}

void expect_like_golden(const std::string& name) {
  const Picture actual = read_picture("tmp/" + name);
  const Picture expected = read_picture(golden(name));
  ASSERT_EQ(actual.width, expected.width);
  ASSERT_EQ(actual.height, expected.height);
  const Difference difference = difference_between(actual, expected, tolerance);
  EXPECT_EQ(difference.pixels, 0) << name << " differs, first at (" << difference.first_x << ", "
                                  << difference.first_y << "), by up to " << difference.largest
                                  << "; it is kept as " << keep(name);
}

class ScenePictures : public SceneTest, public ::testing::WithParamInterface<Scene> {};

TEST_P(ScenePictures, LookLikeTheGoldenOnes) {
  const bool is_updating = std::getenv("KAVO_UPDATE_GOLDEN") != nullptr;
  shoot(GetParam().word);
  for (const std::string& picture : GetParam().pictures) {
    SCOPED_TRACE(picture);
    if (is_updating)
      fs::copy_file("tmp/" + picture, golden(picture), fs::copy_options::overwrite_existing);
    else
      expect_like_golden(picture);
  }
  if (is_updating)
    GTEST_SKIP() << "golden pictures written";
}

INSTANTIATE_TEST_SUITE_P(Shot, ScenePictures,
                         ::testing::Values(Scene{"kavo", {"kavo_before.png", "kavo_after.png"}},
                                           Scene{"pop", {"kavo_pop.png"}},
                                           Scene{"pu", {"pu_before.png", "pu_after.png"}},
                                           Scene{"storm", {"kavo_storm.png"}},
                                           Scene{"qbomb", {"q_before.png", "q_after.png"}},
                                           Scene{"title", {"kavo_title.png"}},
                                           Scene{"opts", {"kavo_opts.png"}},
                                           Scene{"enter", {"kavo_enter.png"}},
                                           Scene{"default", {"kavo.png"}}),
                         [](const auto& scene) { return std::string(scene.param.word); });

TEST_F(SceneTest, TheSameSeedAndClockGiveTheSameBytes) {
  shoot("storm");
  const std::string first = read_file("tmp/kavo_storm.png");
  shoot("storm");
  EXPECT_TRUE(read_file("tmp/kavo_storm.png") == first);
}

TEST_F(SceneTest, AnotherSeedGivesAnotherStorm) {
  shoot("storm");
  const Picture first = read_picture("tmp/kavo_storm.png");
  setenv("QORRT_SEED", "2", 1);
  shoot("storm");
  const Picture second = read_picture("tmp/kavo_storm.png");
  EXPECT_GT(difference_between(first, second, tolerance).pixels, 10000);
}

TEST_F(SceneTest, PicturesHaveTheSizeOfTheScreen) {
  shoot("opts");
  const Picture picture = read_picture("tmp/kavo_opts.png");
  EXPECT_EQ(picture.width, 660);
  EXPECT_EQ(picture.height, 800);
}

TEST(PictureTest, OnePixelOfAnotherColourIsNoticed) {
  const Picture dark = {4, 3, std::vector<uint32_t>(12, 0x0A0A0A)};
  Picture other = dark;
  other.pixels[2 * 4 + 1] = 0x0A0D0A;
  const Difference difference = difference_between(dark, other, 2);
  EXPECT_EQ(difference.pixels, 1);
  EXPECT_EQ(difference.first_x, 1);
  EXPECT_EQ(difference.first_y, 2);
  EXPECT_EQ(difference.largest, 3);
  EXPECT_EQ(difference_between(dark, other, 3).pixels, 0);
}

TEST(PictureTest, AMissingPictureIsNoPicture) {
  EXPECT_THROW(read_picture("nowhere.png"), std::runtime_error);
}

} // namespace
} // namespace kavo::test
