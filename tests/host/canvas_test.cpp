// What each shape leaves in the framebuffer, pixel by pixel.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "host/screen/canvas.h"
#include "host/screen/coordinates.h"
#include "tests/host/picture.h"

namespace {

using kavo::host::Canvas;
using kavo::host::to_colour_component;
using kavo::host::to_pixel;
using kavo::test::is_black;
using kavo::test::Picture;
using kavo::test::picture_of;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Canvas, StartsBlackWithAWhitePen) {
  Canvas canvas(2, 1);
  EXPECT_TRUE(is_black(canvas));
  canvas.fill_rectangle(0, 0, 1, 1);
  EXPECT_EQ(canvas.row(0)[0], 0x00FFFFFFU);
  EXPECT_EQ(canvas.row(0)[1], 0U);
}

TEST(Canvas, KeepsTheColourExactly) {
  Canvas canvas(1, 1);
  canvas.set_colour(0xFF123456);
  canvas.fill_rectangle(0, 0, 1, 1);
  EXPECT_EQ(canvas.row(0)[0], 0x00123456U);
}

// The clear itself is put off: whatever comes next must find the black that it asked for.
TEST(Canvas, EveryShapeAfterAClearStandsOnBlack) {
  const std::pair<const char*, void (*)(Canvas&)> shapes[] = {
      {"rectangle", [](Canvas& canvas) { canvas.fill_rectangle(1, 1, 2, 2); }},
      {"all but a column", [](Canvas& canvas) { canvas.fill_rectangle(1, 0, 40, 40); }},
      {"all but a row", [](Canvas& canvas) { canvas.fill_rectangle(0, 1, 40, 40); }},
      {"outline", [](Canvas& canvas) { canvas.outline_rectangle(0, 0, 40, 40); }},
      {"straight line", [](Canvas& canvas) { canvas.line(0, 0, 39, 0); }},
      {"shallow line", [](Canvas& canvas) { canvas.line(0, 0, 39, 5); }},
      {"steep line", [](Canvas& canvas) { canvas.line(0, 0, 5, 39); }},
      {"text", [](Canvas& canvas) { canvas.text(2, 2, "A"); }},
      {"nothing", [](Canvas& canvas) { canvas.fill_rectangle(0, 0, 0, 0); }},
      {"everything", [](Canvas& canvas) { canvas.fill_rectangle(-1, -1, 50, 50); }},
  };
  for (const auto& [name, draw] : shapes) {
    Canvas fresh(40, 40);
    draw(fresh);
    Canvas used(40, 40);
    used.fill_rectangle(0, 0, 40, 40);
    used.clear();
    draw(used);
    EXPECT_TRUE(std::ranges::equal(used.pixels(), fresh.pixels())) << name;
  }
}

TEST(Canvas, ClearMakesEveryPixelBlackAndKeepsTheColour) {
  Canvas canvas(3, 2);
  canvas.set_colour(0x00ABCDEF);
  canvas.fill_rectangle(0, 0, 3, 2);
  canvas.clear();
  EXPECT_TRUE(is_black(canvas));
  canvas.fill_rectangle(2, 1, 1, 1);
  EXPECT_EQ(canvas.row(1)[2], 0x00ABCDEFU);
}

TEST(Canvas, IsWrittenPixelByPixelOverAClearedPictureAndClearedAgain) {
  Canvas canvas(9, 9);
  canvas.fill_rectangle(0, 0, 5, 5);
  canvas.clear();
  canvas.pixels_to_change()[8 * 9 + 7] = 0x00123456;
  for (int y = 0; y < 9; ++y)
    for (int x = 0; x < 9; ++x)
      EXPECT_EQ(canvas.row(y)[x], x == 7 && y == 8 ? 0x00123456U : 0U);
  canvas.clear();
  EXPECT_TRUE(is_black(canvas));
}

TEST(Canvas, MovesWithItsPictureIntoOtherMemoryAndIsDrawnThere) {
  Canvas canvas(3, 2);
  canvas.fill_rectangle(1, 0, 1, 1);
  std::vector<uint32_t> memory(3 * 2, 0x00ABCDEFU);
  canvas.move_to(memory.data());
  EXPECT_EQ(memory, (std::vector<uint32_t>{0, 0x00FFFFFF, 0, 0, 0, 0}));
  canvas.fill_rectangle(0, 1, 2, 1);
  EXPECT_EQ(canvas.pixels().data(), memory.data());
  EXPECT_EQ(memory, (std::vector<uint32_t>{0, 0x00FFFFFF, 0, 0x00FFFFFF, 0x00FFFFFF, 0}));
}

TEST(Canvas, LeavesAClearedPictureInTheMemoryItMovesTo) {
  Canvas canvas(2, 1);
  std::vector<uint32_t> memory(2, 0x00ABCDEFU);
  canvas.move_to(memory.data());
  canvas.fill_rectangle(0, 0, 2, 1);
  canvas.clear();
  canvas.move_to(memory.data());
  EXPECT_EQ(memory, (std::vector<uint32_t>{0, 0}));
}

TEST(Canvas, ComesHomeWithItsPictureAndLeavesTheMemoryAlone) {
  Canvas canvas(2, 1);
  std::vector<uint32_t> memory(2);
  canvas.move_to(memory.data());
  canvas.fill_rectangle(0, 0, 1, 1);
  canvas.move_home();
  canvas.move_home(); // where it is already
  std::ranges::fill(memory, 0x00ABCDEFU);
  EXPECT_EQ(canvas.row(0)[0], 0x00FFFFFFU);
  EXPECT_EQ(canvas.row(0)[1], 0U);
  canvas.fill_rectangle(1, 0, 1, 1);
  EXPECT_EQ(memory[1], 0x00ABCDEFU);
}

// Any shape, also one that reaches out of the picture of 40 × 30 pixels.
void draw_any_shape(Canvas& canvas, std::mt19937& random) {
  const auto any = [&random](int least, int most) {
    return std::uniform_int_distribution(least, most)(random);
  };
  canvas.set_colour(static_cast<uint32_t>(random()));
  const int x = any(-10, 45), y = any(-10, 35);
  switch (any(0, 4)) {
  case 0:
    return canvas.fill_rectangle(x, y, any(0, 50), any(0, 40)); // some hide whole rows
  case 1:
    return canvas.outline_rectangle(x, y, any(0, 20), any(0, 20));
  case 2:
    return canvas.text(x, y, "ab");
  default:
    return canvas.line(x, y, any(-10, 45), any(-10, 35));
  }
}

// What lies under the shapes is drawn late and not everywhere: never so that anybody sees it. The
// canvas that is read after its ground and each shape leaves nothing for later.
TEST(Canvas, AFrameIsTheSameOnACanvasThatWasDrawnOnAsOnOneThatIsReadAllTheTime) {
  Canvas used(40, 30);
  for (unsigned frame = 0; frame < 2000; ++frame) {
    Canvas read(40, 30);
    for (Canvas* canvas : {&used, &read}) {
      const auto look = [&] { EXPECT_EQ(read.pixels().size(), size_t{40 * 30}); };
      std::mt19937 random(frame);
      if (frame % 3 == 0)
        canvas->clear();
      canvas->set_colour(frame / 4); // four frames on the same ground
      if (frame % 5 != 0 || frame % 3 != 0)
        canvas->fill_rectangle(0, 0, 40, 30);
      look();
      for (unsigned shape = 0; shape < frame % 7; ++shape) {
        draw_any_shape(*canvas, random);
        look();
      }
    }
    ASSERT_TRUE(std::ranges::equal(used.pixels(), read.pixels())) << frame;
  }
}

TEST(FilledRectangle, CoversItsPixelsAndNoOther) {
  Canvas canvas(6, 4);
  canvas.fill_rectangle(1, 1, 3, 2);
  EXPECT_EQ(picture_of(canvas), (Picture{"......", ".###..", ".###..", "......"}));
}

TEST(FilledRectangle, EveryWidthIsExact) {
  for (int width = 1; width <= 70; ++width) {
    Canvas canvas(72, 3);
    canvas.fill_rectangle(1, 1, width, 1);
    const std::string row = "." + std::string(static_cast<size_t>(width), '#') +
                            std::string(static_cast<size_t>(71 - width), '.');
    EXPECT_EQ(picture_of(canvas), (Picture{std::string(72, '.'), row, std::string(72, '.')}))
        << width;
  }
}

TEST(FilledRectangle, IsClippedOnEverySide) {
  Canvas canvas(4, 3);
  canvas.fill_rectangle(-2, -2, 4, 3);
  canvas.fill_rectangle(3, 2, 9, 9);
  EXPECT_EQ(picture_of(canvas), (Picture{"##..", "....", "...#"}));
}

TEST(FilledRectangle, FromFarOutsideReachesIn) {
  Canvas canvas(3, 2);
  canvas.fill_rectangle(-1'000'000'000, -1'000'000'000, 1'000'000'001, 1'000'000'002);
  EXPECT_EQ(picture_of(canvas), (Picture{"#..", "#.."}));
}

TEST(FilledRectangle, OutsideDrawsNothing) {
  Canvas canvas(4, 3);
  canvas.fill_rectangle(4, 0, 5, 3);
  canvas.fill_rectangle(0, 3, 4, 5);
  canvas.fill_rectangle(-5, 0, 5, 3);
  canvas.fill_rectangle(0, -5, 4, 5);
  canvas.fill_rectangle(INT_MAX, INT_MAX, INT_MAX, INT_MAX);
  canvas.fill_rectangle(INT_MIN, INT_MIN, INT_MAX, INT_MAX);
  EXPECT_TRUE(is_black(canvas));
}

TEST(FilledRectangle, WithoutASizeDrawsNothing) {
  Canvas canvas(4, 3);
  for (const int size : {0, -1, -1'000'000'000, INT_MIN}) {
    canvas.fill_rectangle(1, 1, size, 2);
    canvas.fill_rectangle(1, 1, 2, size);
    canvas.outline_rectangle(1, 1, size, 2);
    canvas.outline_rectangle(1, 1, 2, size);
  }
  EXPECT_TRUE(is_black(canvas));
}

TEST(OutlinedRectangle, IsTheOutermostRing) {
  Canvas canvas(6, 5);
  canvas.outline_rectangle(1, 0, 4, 4);
  EXPECT_EQ(picture_of(canvas), (Picture{".####.", ".#..#.", ".#..#.", ".####.", "......"}));
}

TEST(OutlinedRectangle, OfOnePixelIsThatPixel) {
  Canvas canvas(3, 3);
  canvas.outline_rectangle(1, 1, 1, 1);
  EXPECT_EQ(picture_of(canvas), (Picture{"...", ".#.", "..."}));
}

TEST(OutlinedRectangle, IsClippedSideBySide) {
  Canvas canvas(4, 4);
  canvas.outline_rectangle(-1, -1, 4, 9);
  EXPECT_EQ(picture_of(canvas), (Picture{"..#.", "..#.", "..#.", "..#."}));
}

TEST(OutlinedRectangle, AroundTheWholePictureDrawsNothing) {
  Canvas canvas(4, 4);
  canvas.outline_rectangle(-1, -1, 6, 6);
  canvas.outline_rectangle(-1'000'000'000, -1'000'000'000, INT_MAX, INT_MAX);
  EXPECT_TRUE(is_black(canvas));
}

TEST(Line, IncludesBothEndPoints) {
  Canvas canvas(5, 3);
  canvas.line(1, 1, 3, 1);
  EXPECT_EQ(picture_of(canvas), (Picture{".....", ".###.", "....."}));
}

TEST(Line, OfOnePointIsOnePixel) {
  Canvas canvas(3, 1);
  canvas.line(1, 0, 1, 0);
  EXPECT_EQ(picture_of(canvas), (Picture{".#."}));
}

TEST(Line, RunsVertically) {
  Canvas canvas(3, 4);
  canvas.line(1, 2, 1, 0);
  EXPECT_EQ(picture_of(canvas), (Picture{".#.", ".#.", ".#.", "..."}));
}

TEST(Line, RunsDiagonally) {
  Canvas canvas(4, 4);
  canvas.line(0, 3, 3, 0);
  EXPECT_EQ(picture_of(canvas), (Picture{"...#", "..#.", ".#..", "#..."}));
}

TEST(Line, ShallowTakesTheNearestPixels) {
  Canvas canvas(7, 3);
  canvas.line(0, 0, 6, 2);
  EXPECT_EQ(picture_of(canvas), (Picture{"##.....", "..###..", ".....##"}));
}

TEST(Line, SteepTakesTheNearestPixels) {
  Canvas canvas(3, 7);
  canvas.line(2, 0, 0, 6);
  EXPECT_EQ(picture_of(canvas), (Picture{"..#", "..#", ".#.", ".#.", ".#.", "#..", "#.."}));
}

// The pixels by the definition: for each step along the faster axis, the nearest to the exact
// line, in floating point of far more precision than the coordinates need.
Picture defined_line(int width, int height, int x1, int y1, int x2, int y2) {
  Picture picture(static_cast<size_t>(height), std::string(static_cast<size_t>(width), '.'));
  const auto put = [&](int x, int y) {
    if (x >= 0 && x < width && y >= 0 && y < height)
      picture[static_cast<size_t>(y)][static_cast<size_t>(x)] = '#';
  };
  const bool is_steep = std::abs(y2 - y1) > std::abs(x2 - x1);
  if (is_steep) {
    std::swap(x1, y1);
    std::swap(x2, y2);
  }
  if (x1 > x2) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  for (int x = x1; x <= x2; ++x) {
    const long double slope =
        x1 == x2 ? 0 : static_cast<long double>(y2 - y1) * (x - x1) / (x2 - x1);
    const auto y = static_cast<int>(std::floor(static_cast<long double>(y1) + slope + 0.5L));
    is_steep ? put(y, x) : put(x, y);
  }
  return picture;
}

TEST(Line, EqualsItsDefinitionAlsoWhereItIsClipped) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> near(-30, 50);
  std::uniform_int_distribution<int> far(-3000, 3000);
  for (int i = 0; i < 3000; ++i) {
    auto& coordinate = i % 3 == 0 ? far : near;
    const int x1 = coordinate(random), y1 = coordinate(random);
    const int x2 = coordinate(random), y2 = coordinate(random);
    Canvas canvas(24, 17);
    canvas.line(x1, y1, x2, y2);
    ASSERT_EQ(picture_of(canvas), defined_line(24, 17, x1, y1, x2, y2))
        << x1 << ',' << y1 << " to " << x2 << ',' << y2;
  }
}

// The clear is put off, and a line asks for black where it runs only: whichever way it runs.
TEST(Line, StandsOnBlackAfterAClearWhicheverWayItRuns) {
  std::mt19937 random(9);
  std::uniform_int_distribution<int> coordinate(-20, 60);
  for (int i = 0; i < 2000; ++i) {
    const int x1 = coordinate(random), y1 = coordinate(random);
    const int x2 = coordinate(random), y2 = coordinate(random);
    Canvas used(40, 40);
    used.fill_rectangle(0, 0, 39, 40);
    used.clear();
    used.line(x1, y1, x2, y2);
    ASSERT_EQ(picture_of(used), defined_line(40, 40, x1, y1, x2, y2))
        << x1 << ',' << y1 << " to " << x2 << ',' << y2;
  }
}

TEST(Line, IsTheSameInBothDirections) {
  std::mt19937 random(8);
  std::uniform_int_distribution<int> coordinate(-20, 40);
  for (int i = 0; i < 500; ++i) {
    const int x1 = coordinate(random), y1 = coordinate(random);
    const int x2 = coordinate(random), y2 = coordinate(random);
    Canvas there(20, 20), back(20, 20);
    there.line(x1, y1, x2, y2);
    back.line(x2, y2, x1, y1);
    ASSERT_EQ(picture_of(there), picture_of(back));
  }
}

TEST(Line, BetweenFarawayPointsCrossesThePictureExactly) {
  Canvas canvas(9, 9);
  canvas.line(-1'000'000'000, -1'000'000'000, 1'000'000'000, 1'000'000'000);
  for (int y = 0; y < 9; ++y)
    for (int x = 0; x < 9; ++x)
      EXPECT_EQ(canvas.row(y)[x] != 0, x == y);
}

TEST(Line, BeyondAllBoundsIsHarmless) {
  Canvas canvas(9, 9);
  canvas.line(INT_MIN, INT_MAX, INT_MAX, INT_MIN);
  canvas.line(INT_MIN, 3, INT_MAX, 3);
  canvas.line(4, INT_MIN, 4, INT_MAX);
  EXPECT_NE(canvas.row(3)[0], 0U);
  EXPECT_NE(canvas.row(0)[4], 0U);
}

TEST(Coordinates, AreTruncatedTowardZero) {
  EXPECT_EQ(to_pixel(2.9), 2);
  EXPECT_EQ(to_pixel(-2.9), -2);
  EXPECT_EQ(to_pixel(-0.5), 0);
  EXPECT_EQ(to_pixel(0.0), 0);
}

TEST(Coordinates, BeyondAllBoundsStayThere) {
  for (const double huge : {1e9 + 1, 1e10, 1e300, infinity}) {
    EXPECT_EQ(to_pixel(huge), 1'000'000'000);
    EXPECT_EQ(to_pixel(-huge), -1'000'000'000);
  }
  EXPECT_EQ(to_pixel(nan), 0);
  EXPECT_EQ(to_pixel(5e-324), 0);
}

TEST(ColourComponents, AreClampedAndTruncated) {
  EXPECT_EQ(to_colour_component(-1), 0U);
  EXPECT_EQ(to_colour_component(0), 0U);
  EXPECT_EQ(to_colour_component(0.9), 0U);
  EXPECT_EQ(to_colour_component(254.9), 254U);
  EXPECT_EQ(to_colour_component(255), 255U);
  EXPECT_EQ(to_colour_component(300), 255U);
  EXPECT_EQ(to_colour_component(infinity), 255U);
  EXPECT_EQ(to_colour_component(-infinity), 0U);
  EXPECT_EQ(to_colour_component(nan), 0U);
}

} // namespace
