// Areas of pixels, by the widest registers of this processor and by those that all have.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "host/screen/pixels.h"

namespace {

using kavo::host::PixelRows;

constexpr int64_t pitch = 100;
constexpr int64_t rows = 5;
constexpr uint32_t before = 0x00112233;
constexpr uint32_t colour = 0x00ABCDEF;

// A framebuffer with an area of `height` rows whose first pixel is (11, 1).
struct Framebuffer {
  std::vector<uint32_t> pixels = std::vector<uint32_t>(static_cast<size_t>(pitch * rows), before);
  PixelRows area(int64_t width, int64_t height) {
    return {&pixels[pitch + 11], pitch, width, height};
  }
};

using Fill = void (*)(const PixelRows&, uint32_t);

void expect_to_fill_what_a_loop_fills(Fill fill) {
  for (int64_t width = 1; width <= 80; ++width)
    for (int64_t height = 1; height <= 3; ++height) {
      Framebuffer filled, expected;
      fill(filled.area(width, height), colour);
      for (int64_t y = 0; y < height; ++y)
        for (int64_t x = 0; x < width; ++x)
          expected.pixels[static_cast<size_t>((y + 1) * pitch + 11 + x)] = colour;
      ASSERT_EQ(filled.pixels, expected.pixels) << width << " by " << height;
    }
}

TEST(Pixels, AreFilledToTheLastAndNoFurther) {
  expect_to_fill_what_a_loop_fills(kavo::host::fill);
}

TEST(Pixels, AreFilledAlikeByNarrowRegisters) {
  expect_to_fill_what_a_loop_fills(kavo::host::fill_narrowly);
}

using FillBits = void (*)(const PixelRows&, const uint8_t*, uint32_t);

void expect_to_colour_what_a_loop_colours(FillBits fill_bits) {
  for (unsigned first_row = 0; first_row < 256; ++first_row) {
    const std::array<uint8_t, 3> bits = {static_cast<uint8_t>(first_row),
                                         static_cast<uint8_t>(~first_row), 0x81};
    Framebuffer filled, expected;
    fill_bits(filled.area(8, 3), bits.data(), colour);
    for (size_t y = 0; y < bits.size(); ++y)
      for (size_t x = 0; x < 8; ++x)
        if ((bits[y] >> (7 - x) & 1U) != 0)
          expected.pixels[(y + 1) * pitch + 11 + x] = colour;
    ASSERT_EQ(filled.pixels, expected.pixels) << first_row;
  }
}

TEST(Pixels, AreColouredBitByBit) {
  expect_to_colour_what_a_loop_colours(kavo::host::fill_bits);
}

TEST(Pixels, AreColouredAlikeByNarrowRegisters) {
  expect_to_colour_what_a_loop_colours(kavo::host::fill_bits_narrowly);
}

// One pixel of another colour is seen wherever it stands, and not when it stands beside the area.
TEST(Pixels, OneColourIsToldFromTwo) {
  constexpr int64_t row_length = 18;
  for (int64_t width = 8; width <= 16; ++width)
    for (int64_t place = 0; place < 3 * row_length; ++place) {
      std::vector<uint32_t> pixels(3 * row_length, 0x00123456);
      pixels[static_cast<size_t>(place)] = 0x00123457;
      const kavo::host::PixelRows area = {&pixels[1], row_length, width, 3};
      const bool is_inside = place % row_length >= 1 && place % row_length <= width;
      EXPECT_EQ(kavo::host::has_one_colour(area, 0x00123456), !is_inside) << width << ", " << place;
      EXPECT_EQ(kavo::host::has_one_colour_narrowly(area, 0x00123456), !is_inside)
          << width << ", " << place;
    }
}

} // namespace
