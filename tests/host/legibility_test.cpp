// Letters on grounds that would swallow them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>

#include "host/screen/canvas.h"
#include "host/screen/legibility.h"

namespace {

using kavo::host::Canvas;
using kavo::host::Legibility;

constexpr int width = 64;
constexpr int height = 40;
constexpr int left = 12; // where the text stands
constexpr int top = 10;

// Relative luminance and contrast ratio as the guidelines write them.
double luminance(uint32_t colour) {
  const auto light = [colour](unsigned shift) {
    const double part = static_cast<double>((colour >> shift) & 0xFFU) / 255;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * light(16) + 0.7152 * light(8) + 0.0722 * light(0);
}

double contrast(uint32_t one, uint32_t other) {
  const double a = luminance(one) + 0.05;
  const double b = luminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

Canvas ground_of(uint32_t colour) {
  Canvas canvas(width, height);
  canvas.set_colour(colour);
  canvas.fill_rectangle(0, 0, width, height);
  return canvas;
}

void write(Canvas& canvas, uint32_t colour, int x = left, int y = top) {
  canvas.set_colour(colour);
  canvas.text(x, y, "+8%Wj");
}

// The text's pixels, from a picture on which nothing is outlined.
bool is_letter(int x, int y) {
  static const Canvas letters = [] {
    Canvas canvas(width, height);
    write(canvas, 0x00FFFFFF);
    return canvas;
  }();
  return letters.row(y)[x] != 0;
}

bool touches_a_letter(int x, int y) {
  for (int row = std::max(y - 1, 0); row <= std::min(y + 1, height - 1); ++row)
    for (int column = std::max(x - 1, 0); column <= std::min(x + 1, width - 1); ++column)
      if (is_letter(column, row))
        return true;
  return false;
}

void for_each_pixel(const std::function<void(int x, int y)>& look) {
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      look(x, y);
}

// Popups, the combo's banner, the lean's, the game's end, the HUD.
class LetterColours : public ::testing::TestWithParam<uint32_t> {};
INSTANTIATE_TEST_SUITE_P(OfTheGame, LetterColours,
                         ::testing::Values(0x00FBFB5A, 0x00FFB450, 0x00FAE65A, 0x00F05A5A,
                                           0x0096A5B4, 0x00FFFFFF));

TEST_P(LetterColours, StandOutOnAnyGroundByThreeToOne) {
  const uint32_t colour = GetParam();
  for (const uint32_t ground : {colour, 0x00EBCD46U, 0x00C86ED2U, 0x00808080U, 0x00FFFFFFU, 0U}) {
    Canvas canvas = ground_of(ground);
    write(canvas, colour);
    for_each_pixel([&](int x, int y) {
      const uint32_t pixel = canvas.row(y)[x];
      if (is_letter(x, y))
        EXPECT_EQ(pixel, colour) << x << ", " << y;
      else if (touches_a_letter(x, y))
        EXPECT_GE(contrast(pixel, colour), 3) << x << ", " << y;
      else
        EXPECT_EQ(pixel, ground) << x << ", " << y;
    });
  }
}

TEST_P(LetterColours, LeaveAGroundOnWhichTheyCanBeRead) {
  for (const uint32_t ground : {0x000C1A2CU, 0x001C2838U, 0U}) {
    Canvas canvas = ground_of(ground);
    write(canvas, GetParam());
    for_each_pixel([&](int x, int y) {
      EXPECT_EQ(canvas.row(y)[x], is_letter(x, y) ? GetParam() : ground) << x << ", " << y;
    });
  }
}

TEST(DarkLetters, HaveNoOutline) {
  for (const uint32_t colour : {0x00202830U, 0x00465464U}) {
    Canvas canvas = ground_of(0x00303840);
    write(canvas, colour);
    for_each_pixel(
        [&](int x, int y) { EXPECT_EQ(canvas.row(y)[x], is_letter(x, y) ? colour : 0x00303840U); });
  }
}

TEST(Outline, ComesOnlyWhereTheGroundIsBright) {
  Canvas canvas = ground_of(0x000C1A2C);
  canvas.set_colour(0x00EBCD46);
  canvas.fill_rectangle(left + 14, 0, width, height);
  write(canvas, 0x00FAE65A);
  for_each_pixel([&](int x, int y) {
    if (!is_letter(x, y) && touches_a_letter(x, y)) {
      EXPECT_EQ(canvas.row(y)[x], x < left + 14 ? 0x000C1A2CU : Legibility::outline);
    }
  });
}

// The pixels that are not what a larger picture would show there.
int wrong_pixels(int x, int y) {
  Canvas canvas = ground_of(0x00FFFF00);
  write(canvas, 0x00FFFF00, x, y);
  int wrong = 0;
  for_each_pixel([&](int column, int row) {
    const int there = column + left - x;
    const int above = row + top - y;
    const bool is_known = there >= 0 && there < width && above >= 0 && above < height;
    const bool is_outline = is_known && !is_letter(there, above) && touches_a_letter(there, above);
    if (is_outline != (canvas.row(row)[column] == Legibility::outline))
      ++wrong;
  });
  return wrong;
}

TEST(Outline, IsClippedOnEverySide) {
  for (const int y : {-18, -17, -16, -15, -1, 0, 1, 23, 24, 25, 39, 40, 41})
    for (const int x : {-42, -41, -40, -39, -9, -8, -1, 0, 1, 24, 55, 56, 57, 63, 64, 65})
      EXPECT_EQ(wrong_pixels(x, y), 0) << x << ", " << y;
}

} // namespace
