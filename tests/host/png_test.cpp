// What is drawn is what the PNG file holds.
#include <gtest/gtest.h>

#include <vector>

#include "host/screen/png.h"
#include "tests/host/read_png.h"

namespace {

using kavo::host::Canvas;
using kavo::host::png_of;
using kavo::test::read_png;

TEST(Png, HoldsEveryPixel) {
  Canvas canvas(37, 23);
  for (int i = 0; i < 37 * 23; ++i) {
    canvas.set_colour(static_cast<uint32_t>(i) * 0x010307U);
    canvas.fill_rectangle(i % 37, i / 37, 1, 1);
  }
  const auto picture = read_png(png_of(canvas));
  EXPECT_EQ(picture.width, 37);
  EXPECT_EQ(picture.height, 23);
  EXPECT_EQ(picture.pixels, std::vector<uint32_t>(canvas.pixels().begin(), canvas.pixels().end()));
}

TEST(Png, CanBeOnePixel) {
  Canvas canvas(1, 1);
  canvas.fill_rectangle(0, 0, 1, 1);
  EXPECT_EQ(read_png(png_of(canvas)).pixels, std::vector<uint32_t>{0x00FFFFFF});
}

TEST(Png, TheSamePictureGivesTheSameBytes) {
  EXPECT_EQ(png_of(Canvas(64, 64)), png_of(Canvas(64, 64)));
}

} // namespace
