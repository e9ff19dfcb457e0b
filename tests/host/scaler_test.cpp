// The picture at other sizes: where it lies, crisp at whole multiples, true between.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "host/screen/scaler.h"

namespace {

using kavo::host::Area;
using kavo::host::Canvas;
using kavo::host::letterbox;
using kavo::host::Scaler;
using kavo::host::Size;

using Rectangle = std::vector<int>;

Rectangle letterboxed(Size picture, Size window) {
  const Area area = letterbox(picture, window);
  return {area.x, area.y, area.width, area.height};
}

std::vector<uint32_t> scaled(const Canvas& canvas, int width, int height) {
  constexpr uint32_t untouched = 0xDEADBEEF;
  std::vector<uint32_t> pixels(static_cast<size_t>(width) * static_cast<size_t>(height), untouched);
  Scaler().draw(canvas, {pixels.data(), {width, height}, width});
  return pixels;
}

Canvas noise(int width, int height) {
  std::mt19937 random(3);
  Canvas canvas(width, height);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      canvas.set_colour(static_cast<uint32_t>(random()));
      canvas.fill_rectangle(x, y, 1, 1);
    }
  return canvas;
}

TEST(Letterbox, FillsAWindowOfThePicturesProportions) {
  EXPECT_EQ(letterboxed({660, 800}, {660, 800}), (Rectangle{0, 0, 660, 800}));
  EXPECT_EQ(letterboxed({660, 800}, {1320, 1600}), (Rectangle{0, 0, 1320, 1600}));
}

TEST(Letterbox, LeavesBarsBesideOrAboveThePicture) {
  EXPECT_EQ(letterboxed({660, 800}, {1000, 800}), (Rectangle{170, 0, 660, 800}));
  EXPECT_EQ(letterboxed({660, 800}, {660, 1000}), (Rectangle{0, 100, 660, 800}));
}

TEST(Letterbox, ShrinksThePictureIntoASmallWindow) {
  EXPECT_EQ(letterboxed({660, 800}, {400, 400}), (Rectangle{35, 0, 330, 400}));
}

TEST(Letterbox, NeverExceedsTheWindowNorVanishes) {
  for (int width = 1; width < 60; ++width)
    for (int height = 1; height < 60; ++height) {
      const Area area = letterbox({33, 40}, {width, height});
      ASSERT_TRUE(area.width >= 1 && area.height >= 1 && area.x >= 0 && area.y >= 0 &&
                  area.x + area.width <= width && area.y + area.height <= height)
          << width << " x " << height;
    }
}

TEST(Scaler, OneToOneIsThePictureItself) {
  const Canvas canvas = noise(9, 7);
  EXPECT_EQ(scaled(canvas, 9, 7),
            std::vector<uint32_t>(canvas.pixels().begin(), canvas.pixels().end()));
}

TEST(Scaler, WholeMultiplesRepeatEachPixel) {
  const Canvas canvas = noise(5, 4);
  for (const int factor : {2, 3, 5}) {
    const auto pixels = scaled(canvas, 5 * factor, 4 * factor);
    for (int y = 0; y < 4 * factor; ++y)
      for (int x = 0; x < 5 * factor; ++x)
        ASSERT_EQ(pixels[static_cast<size_t>(y * 5 * factor + x)],
                  canvas.row(y / factor)[x / factor]);
  }
}

TEST(Scaler, PaintsTheBarsBlack) {
  Canvas canvas(4, 4);
  canvas.fill_rectangle(0, 0, 4, 4);
  const auto pixels = scaled(canvas, 8, 4);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 8; ++x)
      ASSERT_EQ(pixels[static_cast<size_t>(y * 8 + x)], x >= 2 && x < 6 ? 0x00FFFFFFU : 0U);
}

TEST(Scaler, KeepsAnEvenColourExactlyAtEverySize) {
  Canvas canvas(33, 40);
  for (const uint32_t colour : {0x00FFFFFFU, 0x00010203U, 0x00C86432U}) {
    canvas.set_colour(colour);
    canvas.fill_rectangle(0, 0, 33, 40);
    for (int width = 3; width < 120; width += 5) {
      const Area area = letterbox({33, 40}, {width, 77});
      const auto pixels = scaled(canvas, width, 77);
      for (int y = area.y; y < area.y + area.height; ++y)
        for (int x = area.x; x < area.x + area.width; ++x)
          ASSERT_EQ(pixels[static_cast<size_t>(y * width + x)], colour) << width;
    }
  }
}

// Some of it, to other noise.
void change_some(Canvas& canvas, std::mt19937& random) {
  for (int i = 0; i < 4; ++i) {
    canvas.set_colour(static_cast<uint32_t>(random()));
    canvas.fill_rectangle(static_cast<int>(random() % 33), static_cast<int>(random() % 40), 5, 2);
  }
}

bool is_within(const std::vector<Area>& areas, int x, int y) {
  return std::any_of(areas.begin(), areas.end(), [x, y](const Area& area) {
    return x >= area.x && x < area.x + area.width && y >= area.y && y < area.y + area.height;
  });
}

// Draws only the changed parts of a few pictures, and compares with drawing each of them whole.
void expect_parts_drawn_as_the_whole(int width, int height) {
  std::mt19937 random(5);
  Canvas canvas = noise(33, 40);
  Scaler scaler;
  std::vector<uint32_t> pixels(static_cast<size_t>(width) * static_cast<size_t>(height));
  scaler.draw(canvas, {pixels.data(), {width, height}, width});
  for (int picture = 0; picture < 5; ++picture) {
    const uint64_t version = canvas.version();
    change_some(canvas, random);
    const std::vector<uint32_t> before = pixels;
    std::vector<Area> areas;
    for (const Area& part : canvas.changed_since(version))
      areas.push_back(scaler.draw_part(canvas, part, {pixels.data(), {width, height}, width}));
    ASSERT_EQ(pixels, scaled(canvas, width, height));
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x)
        ASSERT_TRUE(is_within(areas, x, y) || pixels[static_cast<size_t>(y * width + x)] ==
                                                  before[static_cast<size_t>(y * width + x)]);
  }
}

TEST(Scaler, DrawsChangedPartsAsItDrawsTheWholeAtEverySize) {
  for (const Size size : {Size{33, 40},
                          {66, 80},
                          {99, 130},
                          {80, 48},
                          {51, 61},
                          {20, 23},
                          {8, 99},
                          {100, 7},
                          {1, 1}}) {
    SCOPED_TRACE(size.width);
    expect_parts_drawn_as_the_whole(size.width, size.height);
  }
}

// The average of what a pixel covers, computed without tables or rounding of weights.
double average(const Canvas& canvas, int shift, double left, double right, double top,
               double bottom) {
  double sum = 0;
  for (int y = 0; y < canvas.height(); ++y)
    for (int x = 0; x < canvas.width(); ++x) {
      const double across = std::min(right, x + 1.0) - std::max(left, static_cast<double>(x));
      const double down = std::min(bottom, y + 1.0) - std::max(top, static_cast<double>(y));
      if (across > 0 && down > 0)
        sum += across * down * ((canvas.row(y)[x] >> shift) & 0xFFU);
    }
  return sum / ((right - left) * (bottom - top));
}

TEST(Scaler, EveryPixelIsTheAverageOfWhatItCovers) {
  const Canvas canvas = noise(33, 40);
  for (const int height : {13, 31, 57, 101}) {
    const int width = height * 33 / 40;
    const Area area = letterbox({33, 40}, {width, height});
    const auto pixels = scaled(canvas, width, height);
    for (int y = 0; y < area.height; ++y)
      for (int x = 0; x < area.width; ++x)
        for (const int shift : {0, 8, 16}) {
          const double expected =
              average(canvas, shift, x * 33.0 / area.width, (x + 1) * 33.0 / area.width,
                      y * 40.0 / area.height, (y + 1) * 40.0 / area.height);
          const uint32_t pixel = pixels[static_cast<size_t>((area.y + y) * width + area.x + x)];
          ASSERT_NEAR((pixel >> shift) & 0xFFU, expected, 2.5);
        }
  }
}

TEST(Scaler, LosesNoThinLineWhenItShrinks) {
  for (int line = 0; line < 40; ++line) {
    Canvas canvas(40, 40);
    canvas.fill_rectangle(0, line, 40, 1);
    const auto pixels = scaled(canvas, 25, 25);
    EXPECT_TRUE(std::any_of(pixels.begin(), pixels.end(), [](uint32_t pixel) {
      return (pixel & 0xFFU) > 60;
    })) << line;
  }
}

TEST(Scaler, FollowsTheTargetsPitch) {
  const Canvas canvas = noise(3, 2);
  std::vector<uint32_t> pixels(20, 7);
  Scaler().draw(canvas, {pixels.data(), {3, 2}, 10});
  EXPECT_EQ(pixels[2], canvas.row(0)[2]);
  EXPECT_EQ(pixels[3], 7U);
  EXPECT_EQ(pixels[10], canvas.row(1)[0]);
}

} // namespace
