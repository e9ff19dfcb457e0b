// How large the window is at first.
#include <gtest/gtest.h>

#include "host/desktop/window.h"

namespace {

using kavo::host::Size;
using kavo::host::start_size;

TEST(StartSize, IsThePictureTimesTheScale) {
  EXPECT_EQ(start_size({660, 800}, 1, {1920, 1080}).width, 660);
  EXPECT_EQ(start_size({660, 800}, 1, {1920, 1080}).height, 800);
  EXPECT_EQ(start_size({660, 800}, 2, {3840, 2160}).height, 1600);
  EXPECT_EQ(start_size({660, 800}, 0.5, {1920, 1080}).height, 400);
}

TEST(StartSize, FitsASmallDisplayWithItsTitleBar) {
  const Size size = start_size({660, 800}, 1, {1366, 768});
  EXPECT_LE(size.height, 768 - 30);
  EXPECT_GE(size.height, 700);
  EXPECT_NEAR(static_cast<double>(size.width) / size.height, 660.0 / 800.0, 0.002);
}

} // namespace
