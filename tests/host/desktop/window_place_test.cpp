// How large the window is at first, and where it is found again.
#include <gtest/gtest.h>

#include <ostream>
#include <vector>

#include "host/desktop/window_place.h"

namespace kavo::host {

bool operator==(const Area& one, const Area& other) {
  return one.x == other.x && one.y == other.y && one.width == other.width &&
         one.height == other.height;
}

std::ostream& operator<<(std::ostream& out, const Area& area) {
  return out << area.width << "x" << area.height << "+" << area.x << "+" << area.y;
}

} // namespace kavo::host

namespace {

using kavo::host::Area;
using kavo::host::largest_comfortable_multiple;
using kavo::host::largest_multiple;
using kavo::host::placed_again;
using kavo::host::Size;
using kavo::host::start_size;
using kavo::host::WindowPlace;

constexpr Size picture = {660, 800};

TEST(StartSize, IsThePictureTimesTheScale) {
  EXPECT_EQ(start_size(picture, 1, {1920, 1080}).width, 660);
  EXPECT_EQ(start_size(picture, 1, {1920, 1080}).height, 800);
  EXPECT_EQ(start_size(picture, 2, {3840, 2160}).height, 1600);
  EXPECT_EQ(start_size(picture, 0.5, {1920, 1080}).height, 400);
}

TEST(StartSize, FitsASmallDisplayWithItsTitleBar) {
  const Size size = start_size(picture, 1, {1366, 768});
  EXPECT_LE(size.height, 768 - 30);
  EXPECT_GE(size.height, 700);
  EXPECT_NEAR(static_cast<double>(size.width) / size.height, 660.0 / 800.0, 0.002);
}

TEST(StartSize, OfAFirstStartLeavesATenthOfTheRoom) {
  EXPECT_EQ(largest_comfortable_multiple(picture, 1, {1366, 768}), 1);
  EXPECT_EQ(largest_comfortable_multiple(picture, 1, {1920, 1080}), 1);
  EXPECT_EQ(largest_comfortable_multiple(picture, 1, {2560, 1777}), 1);
  EXPECT_EQ(largest_comfortable_multiple(picture, 1, {2560, 1778}), 2);
  EXPECT_EQ(largest_comfortable_multiple(picture, 1, {3840, 2160}), 2);
  EXPECT_EQ(largest_comfortable_multiple(picture, 1, {1400, 2160}), 1);
  EXPECT_EQ(largest_comfortable_multiple(picture, 1, {7680, 4320}), 4);
  EXPECT_EQ(largest_comfortable_multiple(picture, 0.5, {1920, 1080}), 2);
}

TEST(StartSize, KnowsWhichMultiplesFitAtAll) {
  EXPECT_EQ(largest_multiple(picture, {1366, 768}), 1);
  EXPECT_EQ(largest_multiple(picture, {2560, 1639}), 1);
  EXPECT_EQ(largest_multiple(picture, {2560, 1640}), 2);
}

const std::vector<Area> two_displays = {{0, 30, 1920, 1050}, {1920, 0, 2560, 1440}};

TEST(APlaceOfBefore, IsTakenAgain) {
  const WindowPlace there = {.width = 700, .height = 900, .corner = {{2000, 100}}};
  EXPECT_EQ(placed_again(there, picture, two_displays), (Area{2000, 100, 700, 900}));
}

TEST(APlaceOfBefore, IsOnADisplayThatIsThere) {
  const WindowPlace there = {.width = 700, .height = 900, .corner = {{2000, 100}}};
  EXPECT_EQ(placed_again(there, picture, std::vector{two_displays[0]}),
            (Area{610, 30 + (1050 - 40 - 900) / 2, 700, 900}));
}

TEST(APlaceOfBefore, IsNotOutsideOfItsDisplay) {
  const WindowPlace below = {.width = 700, .height = 900, .corner = {{-300, 600}}};
  EXPECT_EQ(placed_again(below, picture, two_displays), (Area{0, 180, 700, 900}));
  const WindowPlace under_the_panel = {.width = 700, .height = 900, .corner = {{50, 0}}};
  EXPECT_EQ(placed_again(under_the_panel, picture, two_displays), (Area{50, 30, 700, 900}));
}

TEST(APlaceOfBefore, IsNoLargerThanItsDisplay) {
  const WindowPlace large = {.width = 1320, .height = 1600, .corner = {{100, 100}}};
  const Area now = placed_again(large, picture, std::vector{two_displays[0]});
  EXPECT_LE(now.height, 1050 - 40);
  EXPECT_NEAR(static_cast<double>(now.width) / now.height, 660.0 / 800.0, 0.002);
  EXPECT_GE(now.y, 30);
}

TEST(APlaceOfBefore, WithoutACornerIsInTheMiddle) {
  EXPECT_EQ(placed_again({.width = 660, .height = 800}, picture, two_displays),
            (Area{630, 30 + (1050 - 40 - 800) / 2, 660, 800}));
}

} // namespace
