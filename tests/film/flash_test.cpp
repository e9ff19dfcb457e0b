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
  EXPECT_EQ(blinking(1, 300, white, white).most_general(), 0);
}

TEST(FlashMeter, CountsEveryFlashOfALargeSquare) {
  for (const int times : {1, 3, 4, 30})
    EXPECT_EQ(blinking(times, 300, black, white).most_general(), times);
}

TEST(FlashMeter, ASquareOfLessThanAQuarterOfTheFieldOfVisionDoesNotCount) {
  EXPECT_EQ(blinking(10, 140, black, white).most_general(), 0);
  EXPECT_EQ(blinking(10, 152, black, white).most_general(), 10);
}

TEST(FlashMeter, AChangeOfLessThanATenthDoesNotCount) {
  EXPECT_EQ(blinking(10, 300, black, 0x585858).most_general(), 0);  // luminance 0.098
  EXPECT_EQ(blinking(10, 300, black, 0x5A5A5A).most_general(), 10); // 0.102
}

TEST(FlashMeter, ChangesBetweenBrightPicturesDoNotCount) {
  EXPECT_EQ(blinking(10, 300, 0xE8E8E8, white).most_general(), 0); // luminance 0.81
}

TEST(FlashMeter, CountsSaturatedRedApart) {
  EXPECT_EQ(blinking(5, 300, black, 0xB00000).most_red(), 5);
  EXPECT_EQ(blinking(5, 300, black, 0x00B000).most_red(), 0);
}

TEST(FlashMeter, FlashesFarApartAreNotAddedUp) {
  FlashMeter meter;
  host::Canvas picture(660, 800);
  for (int frame = 0; frame < 20; ++frame) {
    picture.set_colour(frame % 2 == 0 ? black : white);
    picture.fill_rectangle(0, 0, 660, 800);
    meter.look_at(picture, frame * 2000.0);
  }
  EXPECT_EQ(meter.most_general(), 0);
}

// Four quarters of the picture that blink one after the other are four things that flash once.
TEST(FlashMeter, PlacesThatFlashInTurnAreNotAddedUp) {
  FlashMeter meter;
  host::Canvas picture(660, 800);
  for (int frame = 0; frame < 12; ++frame) {
    picture.set_colour(frame % 3 == 1 ? white : black);
    picture.fill_rectangle(0, frame / 3 * 200, 660, 200);
    meter.look_at(picture, frame * 50.0);
  }
  EXPECT_EQ(meter.most_general(), 1);
}

// A grid of squares, dark on bright, that is moved to and fro by some pixels in every picture.
FlashMeter shaking(int square, int by) {
  FlashMeter meter;
  for (int frame = 0; frame < 16; ++frame) {
    host::Canvas picture(660, 800);
    const int offset = frame % 2 == 0 ? 0 : by;
    picture.set_colour(white);
    for (int y = 0; y < 800; y += 2 * square)
      for (int x = 0; x < 660; x += 2 * square)
        picture.fill_rectangle(x + offset, y, square, square);
    meter.look_at(picture, frame * 1000.0 / 60);
  }
  return meter;
}

TEST(FlashMeter, TheEdgesOfAShakenGridCountWhereTheyAreALargePartOfIt) {
  EXPECT_EQ(shaking(36, 4).most_general(), 0); // edges are a ninth of the squares
  EXPECT_EQ(shaking(12, 12).most_general(), 7);
}

// Tips and bombs move the whole well, block edges over each place several times: kavo-film tells
// how often. Everything else that the game shows, the rows that clear, lightning, popups and the
// red pulse of a full well, stays within what the guidelines allow.
TEST(Flashes, WhereTheWellStandsStillThereAreThreeInASecondAtMost) {
  const test::WorkingFolder scores;
  for (const double pull : {0.4, -0.3}) {
    const auto count = flashes_of_play(Player({.pull = pull}, 10), 1, 500);
    ASSERT_TRUE(count.has_ended_well);
    EXPECT_GE(count.seconds, 8);
    EXPECT_LE(count.at_rest.general, 3);
    EXPECT_LE(count.at_rest.red, 3);
  }
}

} // namespace
} // namespace kavo::film
