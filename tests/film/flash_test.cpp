#include <gtest/gtest.h>

#include "tests/film/flash_meter.h"
#include "tests/film/flashes.h"
#include "tests/support/temporary_folder.h"

namespace kavo::film {
namespace {

constexpr uint32_t white = 0xFFFFFF;
constexpr uint32_t black = 0x000000;

// Shows a square of one colour and then of the other, so many times in one second.
FlashMeter blinking(int times, int side, uint32_t first, uint32_t second) {
  FlashMeter meter;
  host::Canvas picture(660, 800);
  for (int frame = 0; frame <= 60; ++frame) {
    const bool is_first = frame * times * 2 / 60 % 2 == 0;
    picture.set_colour(is_first ? first : second);
    picture.fill_rectangle(100, 100, side, side);
    meter.look_at(picture, frame * 1000.0 / 60);
  }
  return meter;
}

TEST(FlashMeter, AStillPictureDoesNotFlash) {
  EXPECT_EQ(blinking(1, 300, white, white).general_ms().size(), 0U);
}

TEST(FlashMeter, CountsEveryFlashOfALargeSquare) {
  EXPECT_EQ(most_in_a_second(blinking(3, 300, black, white).general_ms()), 3);
  EXPECT_EQ(most_in_a_second(blinking(10, 300, black, white).general_ms()), 10);
}

TEST(FlashMeter, ASquareOfLessThanAQuarterOfTheFieldOfVisionDoesNotCount) {
  EXPECT_EQ(blinking(10, 140, black, white).general_ms().size(), 0U);
  EXPECT_GT(blinking(10, 152, black, white).general_ms().size(), 0U);
}

TEST(FlashMeter, AChangeOfLessThanATenthDoesNotCount) {
  EXPECT_EQ(blinking(10, 300, black, 0x585858).general_ms().size(), 0U); // luminance 0.098
  EXPECT_GT(blinking(10, 300, black, 0x5A5A5A).general_ms().size(), 0U); // 0.102
}

TEST(FlashMeter, ChangesBetweenBrightPicturesDoNotCount) {
  EXPECT_EQ(blinking(10, 300, 0xE8E8E8, white).general_ms().size(), 0U); // luminance 0.81
}

TEST(FlashMeter, CountsSaturatedRedApart) {
  const auto meter = blinking(5, 300, black, 0xB00000);
  EXPECT_EQ(most_in_a_second(meter.red_ms()), 5);
  EXPECT_EQ(blinking(5, 300, black, 0x00B000).red_ms().size(), 0U);
}

TEST(FlashMeter, FlashesFarApartAreNotAddedUp) {
  FlashMeter meter;
  host::Canvas picture(660, 800);
  for (int frame = 0; frame < 20; ++frame) {
    picture.set_colour(frame % 2 == 0 ? black : white);
    picture.fill_rectangle(0, 0, 660, 800);
    meter.look_at(picture, frame * 2000.0);
  }
  EXPECT_EQ(most_in_a_second(meter.general_ms()), 0);
}

// Tips and bombs move the whole well, block edges over each place several times: kavo-film tells
// how often. Everything else that the game shows, the rows that clear, lightning, popups and the
// red pulse of a full well, stays within what the guidelines allow.
TEST(Flashes, WhereTheWellStandsStillThereAreThreeInASecondAtMost) {
  const test::TemporaryFolder scores;
  for (const double pull : {0.4, -0.3}) {
    const auto count = flashes_of_play(Player({.pull = pull}, 10), 1, 1000);
    ASSERT_TRUE(count.has_ended_well);
    EXPECT_GE(count.seconds, 15);
    EXPECT_LE(most_in_a_second(count.general_ms_at_rest), 3);
    EXPECT_LE(most_in_a_second(count.red_ms_at_rest), 3);
  }
}

} // namespace
} // namespace kavo::film
