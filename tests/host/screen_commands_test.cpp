// The screen commands as a program sends them; what they draw is read back from a screenshot.
#include <gtest/gtest.h>

#include <limits>

#include "tests/host/bridge.h"
#include "tests/host/read_png.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

using kavo::test::Bridge;
using kavo::test::read_file;
using kavo::test::read_png;
using kavo::test::TemporaryFolder;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// A host with an open screen of 8 × 4 pixels.
class SmallScreen : public testing::Test {
protected:
  SmallScreen() { bridge.send("SCREEN", 8, 4, "test", 1); }

  std::vector<uint32_t> pixels() {
    EXPECT_EQ(bridge.error_of("GFX.SAVE_SCREENSHOT", folder_ / "a.png"), "");
    return read_png(read_file(folder_ / "a.png")).pixels;
  }
  uint32_t pixel(int x, int y) { return pixels()[static_cast<size_t>(y * 8 + x)]; }

private:
  TemporaryFolder folder_;

protected:
  Bridge bridge;
};

TEST_F(SmallScreen, CommandsHaveNoResult) {
  EXPECT_EQ(bridge.send("CLS"), 0);
  EXPECT_EQ(bridge.send("DRAWCOLOR", 1, 2, 3), 0);
  EXPECT_EQ(bridge.send("RECT", 0, 0, 1, 1, 1), 0);
  EXPECT_EQ(bridge.send("LINE", 0, 0, 1, 1), 0);
  EXPECT_EQ(bridge.send("TEXT", 0, 0, "A"), 0);
  EXPECT_EQ(bridge.send("SCREENFLIP"), 0);
  EXPECT_EQ(bridge.send("GFX.CLOSE"), 0);
  EXPECT_EQ(bridge.send("SCREEN", 2, 2, "again", 1), 0);
  EXPECT_EQ(bridge.take_error(), "");
}

TEST_F(SmallScreen, StartsBlack) {
  EXPECT_EQ(pixels(), std::vector<uint32_t>(32, 0));
}

TEST_F(SmallScreen, ColoursAreClampedComponentByComponent) {
  bridge.send("DRAWCOLOR", 300, -5, 17.9);
  bridge.send("RECT", 0, 0, 1, 1, 1);
  EXPECT_EQ(pixel(0, 0), 0x00FF0011U);
}

TEST_F(SmallScreen, ClsMakesItBlackAgain) {
  bridge.send("RECT", 0, 0, 8, 4, 1);
  bridge.send("CLS");
  EXPECT_EQ(pixels(), std::vector<uint32_t>(32, 0));
}

TEST_F(SmallScreen, RectFillsOrOutlines) {
  bridge.send("RECT", 0, 0, 3, 3, 0);
  EXPECT_EQ(pixel(1, 1), 0U);
  EXPECT_EQ(pixel(2, 2), 0x00FFFFFFU);
  bridge.send("RECT", 0, 0, 3, 3, 1);
  EXPECT_EQ(pixel(1, 1), 0x00FFFFFFU);
}

TEST_F(SmallScreen, CoordinatesAreTruncatedTowardZero) {
  bridge.send("RECT", -0.9, 1.9, 1.9, 1.1, 1);
  EXPECT_EQ(pixel(0, 1), 0x00FFFFFFU);
  EXPECT_EQ(pixel(1, 1), 0U);
  EXPECT_EQ(pixel(0, 2), 0U);
}

TEST_F(SmallScreen, LineTakesBothEndPoints) {
  bridge.send("LINE", 1.0, 2.0, 3.0, 2.0);
  EXPECT_EQ(pixel(1, 2), 0x00FFFFFFU);
  EXPECT_EQ(pixel(3, 2), 0x00FFFFFFU);
  EXPECT_EQ(pixel(4, 2), 0U);
}

TEST_F(SmallScreen, TextIsWhereItsCellBegins) {
  bridge.send("TEXT", 0, -2, "A");
  EXPECT_EQ(pixel(1, 0), 0x00FFFFFFU);
}

TEST_F(SmallScreen, NumbersThatAreNoneAreHarmless) {
  for (const double odd : {nan, infinity, -infinity, 1e300, -1e300, 5e-324}) {
    EXPECT_EQ(bridge.error_of("DRAWCOLOR", odd, odd, odd), "");
    EXPECT_EQ(bridge.error_of("RECT", odd, odd, odd, odd, odd), "");
    EXPECT_EQ(bridge.error_of("RECT", odd, odd, odd, odd, 0), "");
    EXPECT_EQ(bridge.error_of("LINE", odd, odd, -odd, odd), "");
    EXPECT_EQ(bridge.error_of("LINE", 0, 0, odd, -odd), "");
    EXPECT_EQ(bridge.error_of("TEXT", odd, odd, "x"), "");
  }
}

TEST_F(SmallScreen, AFailedCommandDrawsNothing) {
  bridge.send("RECT", 0, 0, "8", 4, 1);
  EXPECT_EQ(bridge.take_error(), "RECT: argument 3 must be a number, got STRING");
  EXPECT_EQ(pixels(), std::vector<uint32_t>(32, 0));
}

TEST_F(SmallScreen, StaysAfterTheFlip) {
  bridge.send("RECT", 0, 0, 8, 4, 1);
  EXPECT_EQ(bridge.error_of("SCREENFLIP"), "");
  EXPECT_EQ(pixels(), std::vector<uint32_t>(32, 0x00FFFFFF));
}

TEST_F(SmallScreen, ASecondScreenReplacesIt) {
  bridge.send("RECT", 0, 0, 8, 4, 1);
  bridge.send("SCREEN", 3, 2, "other", 1);
  EXPECT_EQ(pixels(), std::vector<uint32_t>(6, 0));
}

TEST_F(SmallScreen, AFailedSecondScreenLeavesTheFirst) {
  bridge.send("RECT", 0, 0, 8, 4, 1);
  EXPECT_NE(bridge.error_of("SCREEN", 0, 2, "other", 1), "");
  EXPECT_EQ(pixels(), std::vector<uint32_t>(32, 0x00FFFFFF));
}

TEST_F(SmallScreen, KeysOfAnInvisibleScreenAreNotHeld) {
  for (const char* key : {"Left", "Right", "Up", "Down", "Space", "Return", "Escape", "A", "Z", "0",
                          "9", "P", "F1"}) {
    EXPECT_EQ(bridge.send("GFX.KEYSTATE", key), 0.0);
    EXPECT_EQ(bridge.take_error(), "");
  }
}

TEST_F(SmallScreen, AnUnknownKeyIsNamed) {
  for (const std::string key : {"Foo", "", "left", "a", "Left "})
    EXPECT_EQ(bridge.error_of("GFX.KEYSTATE", key),
              "GFX.KEYSTATE: argument 1: unknown key \"" + key + "\"");
}

TEST_F(SmallScreen, AScreenshotThatCannotBeWrittenNamesPathAndReason) {
  EXPECT_EQ(bridge.error_of("GFX.SAVE_SCREENSHOT", "/nowhere/a.png"),
            "GFX.SAVE_SCREENSHOT: cannot write \"/nowhere/a.png\": No such file or directory");
}

TEST_F(SmallScreen, CloseTwiceIsHarmless) {
  EXPECT_EQ(bridge.error_of("GFX.CLOSE"), "");
  EXPECT_EQ(bridge.error_of("GFX.CLOSE"), "");
}

TEST_F(SmallScreen, AfterCloseThereIsNoScreen) {
  bridge.send("GFX.CLOSE");
  EXPECT_EQ(bridge.error_of("CLS"), "CLS: no screen is open; SCREEN opens one");
}

TEST(ScreenCommands, BeforeAScreenAreErrors) {
  Bridge bridge;
  const std::string rest = ": no screen is open; SCREEN opens one";
  EXPECT_EQ(bridge.error_of("CLS"), "CLS" + rest);
  EXPECT_EQ(bridge.error_of("DRAWCOLOR", 1, 2, 3), "DRAWCOLOR" + rest);
  EXPECT_EQ(bridge.error_of("RECT", 1, 2, 3, 4, 5), "RECT" + rest);
  EXPECT_EQ(bridge.error_of("LINE", 1, 2, 3, 4), "LINE" + rest);
  EXPECT_EQ(bridge.error_of("TEXT", 1, 2, "x"), "TEXT" + rest);
  EXPECT_EQ(bridge.error_of("SCREENFLIP"), "SCREENFLIP" + rest);
  EXPECT_EQ(bridge.error_of("GFX.KEYSTATE", "Left"), "GFX.KEYSTATE" + rest);
  EXPECT_EQ(bridge.error_of("GFX.SAVE_SCREENSHOT", "x.png"), "GFX.SAVE_SCREENSHOT" + rest);
  EXPECT_EQ(bridge.error_of("GFX.CLOSE"), "");
}

TEST(ScreenCommands, AScreenOfAnOddSizeIsAnError) {
  Bridge bridge;
  EXPECT_EQ(bridge.error_of("SCREEN", 0, 800, "x", 1),
            "SCREEN: argument 1 (width) must be 1 to 8192, got 0");
  EXPECT_EQ(bridge.error_of("SCREEN", 660, -3.5, "x", 1),
            "SCREEN: argument 2 (height) must be 1 to 8192, got -3.5");
  EXPECT_EQ(bridge.error_of("SCREEN", nan, 800, "x", 1),
            "SCREEN: argument 1 (width) must be 1 to 8192, got nan");
  EXPECT_EQ(bridge.error_of("SCREEN", 660, 8193, "x", 1),
            "SCREEN: argument 2 (height) must be 1 to 8192, got 8193");
  EXPECT_EQ(bridge.error_of("SCREEN", 660, 800, "x", 0),
            "SCREEN: argument 4 (scale) must be 0.1 to 16, got 0");
  EXPECT_EQ(bridge.error_of("SCREEN", 660, 800, "x", infinity),
            "SCREEN: argument 4 (scale) must be 0.1 to 16, got inf");
}

} // namespace
