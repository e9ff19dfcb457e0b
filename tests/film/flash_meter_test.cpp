#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <ostream>
#include <stdexcept>

#include "tools/film/flash_meter.h"

namespace kavo::film {
namespace {

constexpr uint32_t white = 0xFFFFFF;
constexpr uint32_t black = 0x000000;
constexpr int second = 60; // pictures

using Draw = std::function<void(host::Canvas& picture, int frame)>;

FlashMeter film(int frames, const Draw& draw, double scale = 1) {
  FlashMeter meter(scale);
  host::Canvas picture(660, 800);
  for (int frame = 0; frame <= frames; ++frame) {
    draw(picture, frame);
    meter.look_at(picture, frame * 1000.0 / second);
  }
  return meter;
}

void fill(host::Canvas& picture, uint32_t colour, int x, int y, int width, int height) {
  picture.set_colour(colour);
  picture.fill_rectangle(x, y, width, height);
}

// Whether something that blinks so many times in a second shows its first side now.
bool is_first(int frame, int times) {
  return frame * times * 2 / second % 2 == 0;
}

// Shows a square of one colour and then of the other, so many times in one second.
FlashMeter blinking(int times, int side, uint32_t first, uint32_t other, double scale = 1) {
  return film(
      second,
      [&](host::Canvas& picture, int frame) {
        fill(picture, is_first(frame, times) ? first : other, 100, 100, side, side);
      },
      scale);
}

struct Counts {
  int overlapping;
  int in_step;
  bool operator==(const Counts&) const = default;
};

void PrintTo(const Counts& counts, std::ostream* out) {
  *out << counts.overlapping << " overlapping, " << counts.in_step << " in step";
}

Counts general(const FlashMeter& meter) {
  return {meter.general().overlapping.most(), meter.general().in_step.most()};
}

Counts red(const FlashMeter& meter) {
  return {meter.red().overlapping.most(), meter.red().in_step.most()};
}

Counts both(int count) {
  return {count, count};
}

TEST(FlashMeter, AStillPictureDoesNotFlash) {
  EXPECT_EQ(general(blinking(1, 300, white, white)), both(0));
}

TEST(FlashMeter, CountsEveryFlashOfALargeSquare) {
  for (const int times : {1, 3, 4, 15, 30})
    EXPECT_EQ(general(blinking(times, 300, black, white)), both(times));
}

TEST(FlashMeter, CountsEveryFlashOfTheWholePicture) {
  for (const int times : {3, 30})
    EXPECT_EQ(general(film(second,
                           [&](host::Canvas& picture, int frame) {
                             fill(picture, is_first(frame, times) ? white : black, 0, 0, 660, 800);
                           })),
              both(times));
}

// A quarter of 341 x 256 pixels is a square of 147.7.
TEST(FlashMeter, AreasUpToAQuarterOfTheFieldOfVisionDoNotCount) {
  EXPECT_EQ(general(blinking(10, 146, black, white)), both(0));
  EXPECT_EQ(general(blinking(10, 150, black, white)), both(10));
}

// A fifth of the field, and three tenths.
TEST(FlashMeter, AreasThatFlashTogetherAreCombined) {
  const auto two_areas = [](int width) {
    return film(second, [width](host::Canvas& picture, int frame) {
      const uint32_t colour = is_first(frame, 5) ? black : white;
      fill(picture, colour, 0, 300, width, 180);
      fill(picture, colour, 240, 300, width, 180);
    });
  };
  EXPECT_EQ(general(two_areas(48)), both(0));
  EXPECT_EQ(general(two_areas(72)), both(5));
}

TEST(FlashMeter, AreasTooFarApartForOneFieldOfVisionAreNotCombined) {
  EXPECT_EQ(general(film(second,
                         [](host::Canvas& picture, int frame) {
                           const uint32_t colour = is_first(frame, 5) ? black : white;
                           fill(picture, colour, 0, 0, 132, 132);
                           fill(picture, colour, 528, 660, 132, 132);
                         })),
            both(0));
}

// Each of the two is a fifth of the field.
TEST(FlashMeter, AnAreaThatDarkensWhileAnotherLightsUpIsCombinedWithIt) {
  EXPECT_EQ(general(film(second,
                         [](host::Canvas& picture, int frame) {
                           const bool is_left = is_first(frame, 5);
                           fill(picture, is_left ? white : black, 0, 300, 96, 180);
                           fill(picture, is_left ? black : white, 96, 300, 96, 180);
                         })),
            both(5));
}

TEST(FlashMeter, HalvesThatFlickerInTurnCount) {
  EXPECT_EQ(general(film(second,
                         [](host::Canvas& picture, int frame) {
                           const bool is_upper = is_first(frame, 8);
                           fill(picture, is_upper ? white : black, 0, 0, 660, 400);
                           fill(picture, is_upper ? black : white, 0, 400, 660, 400);
                         })),
            both(8));
}

// Four areas of a tenth of a field, each of which flickers twice while the others stay dark.
TEST(FlashMeter, SmallAreasThatFlickerOneAfterAnotherAreNotCombined) {
  EXPECT_EQ(general(film(32,
                         [](host::Canvas& picture, int frame) {
                           fill(picture, black, 0, 0, 660, 800);
                           if (frame < 32 && frame % 4 >= 2)
                             fill(picture, white, frame / 8 * 75, 300, 75, 120);
                         })),
            both(0));
}

// A flash of the picture needs no place of its own: whoever looks at the whole sees them all.
TEST(FlashMeter, LargeAreasThatFlashOneAfterAnotherAreAllCounted) {
  EXPECT_EQ(general(film(16,
                         [](host::Canvas& picture, int frame) {
                           fill(picture, black, 0, 0, 660, 800);
                           if (frame < 16 && frame % 4 >= 2)
                             fill(picture, white, 0, frame / 4 * 200, 660, 200);
                         })),
            both(4));
}

// In step are places that change with one picture, which those that an edge passes do not.
TEST(FlashMeter, AnEdgeThatSweepsThereAndBackOverlapsButIsNotInStep) {
  EXPECT_EQ(general(film(second,
                         [](host::Canvas& picture, int frame) {
                           const int phase = frame % 12;
                           const int width = 66 * (phase < 6 ? phase : 12 - phase);
                           fill(picture, black, 0, 0, 660, 800);
                           fill(picture, white, 0, 0, width, 800);
                         })),
            (Counts{5, 0}));
}

// Twelve columns that blink at one rate, each a picture after its neighbour: a moving grating.
TEST(FlashMeter, StaggeredPlacesOverlapAtTheRateOfEach) {
  for (const int period : {12, 20})
    EXPECT_EQ(general(film(second,
                           [period](host::Canvas& picture, int frame) {
                             for (int column = 0; column < 12; ++column)
                               fill(picture, (frame + column) % period < period / 2 ? white : black,
                                    column * 55, 0, 55, 800);
                           })),
              (Counts{second / period, 0}))
        << period;
}

TEST(FlashMeter, AnEdgeThatScrollsThroughIsNoFlash) {
  EXPECT_EQ(general(film(second,
                         [](host::Canvas& picture, int frame) {
                           fill(picture, black, 0, 0, 660, 800);
                           fill(picture, white, 0, 0, 660, frame * 13);
                         })),
            both(0));
}

// Nor is a bar that hides less than a quarter of the field at a time.
TEST(FlashMeter, ANarrowBarThatScrollsThroughIsNoFlash) {
  EXPECT_EQ(general(film(second,
                         [](host::Canvas& picture, int frame) {
                           fill(picture, black, 0, 0, 660, 800);
                           fill(picture, white, 0, frame * 13, 660, 42);
                         })),
            both(0));
}

// Up and down in a second is one flash; in ten seconds it is none, for no second holds both.
TEST(FlashMeter, ASlowFadeIsAtMostOneFlashInASecond) {
  const auto fading = [](int period) {
    return film(period, [period](host::Canvas& picture, int frame) {
      const double phase = 2 * std::numbers::pi * frame / period;
      const auto grey = static_cast<uint32_t>(127 - 127 * std::cos(phase));
      fill(picture, grey << 16 | grey << 8 | grey, 0, 0, 300, 300);
    });
  };
  EXPECT_EQ(general(fading(second)), both(1));
  EXPECT_EQ(general(fading(10 * second)), both(0));
}

TEST(FlashMeter, FlashesFarApartAreNotAddedUp) {
  EXPECT_EQ(general(film(4 * second,
                         [](host::Canvas& picture, int frame) {
                           fill(picture, frame % 100 < 5 ? white : black, 0, 0, 660, 800);
                         })),
            both(1));
}

TEST(FlashMeter, AChangeOfLessThanATenthDoesNotCount) {
  EXPECT_EQ(general(blinking(10, 300, black, 0x585858)), both(0));  // luminance 0.098
  EXPECT_EQ(general(blinking(10, 300, black, 0x5A5A5A)), both(10)); // 0.102
}

// The first valley is lower than the picture that the film begins with.
TEST(FlashMeter, ASmallFirstChangeIsPartOfTheNext) {
  constexpr uint32_t greys[] = {0x606060, 0x404040, 0x6C6C6C, 0x404040}; // 0.117, 0.051, 0.150
  EXPECT_EQ(general(film(3, [&](host::Canvas& picture,
                                int frame) { fill(picture, greys[frame], 0, 0, 660, 800); })),
            both(0));
  constexpr uint32_t wider[] = {0x606060, 0x404040, 0x707070, 0x404040}; // 0.162
  EXPECT_EQ(general(film(3, [&](host::Canvas& picture,
                                int frame) { fill(picture, wider[frame], 0, 0, 660, 800); })),
            both(1));
}

TEST(FlashMeter, ChangesBetweenBrightPicturesDoNotCount) {
  EXPECT_EQ(general(blinking(10, 300, 0xE8E8E8, white)), both(0));  // luminance 0.81
  EXPECT_EQ(general(blinking(10, 300, 0xE6E6E6, white)), both(10)); // 0.79
}

TEST(FlashMeter, CountsSaturatedRedHoweverDark) {
  EXPECT_EQ(red(blinking(5, 300, black, 0xB00000)), both(5));
  EXPECT_EQ(red(blinking(5, 300, black, 0x300000)), both(5));
  EXPECT_EQ(red(blinking(5, 300, 0x0000FF, 0xFF0000)), both(5));
}

TEST(FlashMeter, OtherColoursAreNoRedFlashes) {
  EXPECT_EQ(red(blinking(5, 300, black, 0x00B000)), both(0));
  EXPECT_EQ(red(blinking(5, 300, black, 0xDC5A5A)), both(0));    // 78 % red
  EXPECT_EQ(red(blinking(5, 300, 0xF00000, 0x700000)), both(0)); // the same colour, darker
}

// An alternating checkerboard, of squares below and above a tenth of a degree (3.4 pixels).
TEST(FlashMeter, AFineBalancedPatternDoesNotCount) {
  const auto checkerboard = [](int side) {
    return film(8, [side](host::Canvas& picture, int frame) {
      fill(picture, black, 0, 0, 660, 800);
      for (int row = 0; row * side < 300; ++row)
        for (int column = (row + frame) % 2; column * side < 300; column += 2)
          fill(picture, white, column * side, row * side, side, side);
    });
  };
  EXPECT_EQ(general(checkerboard(1)), both(0));
  EXPECT_EQ(general(checkerboard(4)), both(4));
}

// A grid of squares, dark on bright, that is moved to and fro by some pixels in every picture.
FlashMeter shaking(int square, int by, double scale = 1) {
  return film(
      16,
      [=](host::Canvas& picture, int frame) {
        fill(picture, black, 0, 0, 660, 800);
        for (int y = 0; y < 800; y += 2 * square)
          for (int x = 0; x < 660; x += 2 * square)
            fill(picture, white, x + (frame % 2 == 0 ? 0 : by), y, square, square);
      },
      scale);
}

// All edges of a shaken picture flip together, one side up and one side down.
TEST(FlashMeter, AShakenGridCountsWhereItsEdgesAreMuchOfIt) {
  EXPECT_EQ(general(shaking(36, 6)), both(0)); // a twelfth flips on either side of the squares
  EXPECT_EQ(general(shaking(12, 12)), both(8));
}

// Twice as large on the screen, a square fills four times as much of the field of vision.
TEST(FlashMeter, InALargeWindowSmallerAreasCount) {
  EXPECT_EQ(general(blinking(10, 100, black, white, 1)), both(0));
  EXPECT_EQ(general(blinking(10, 100, black, white, 2)), both(10));
}

TEST(FlashMeter, SaysWhenItCannotTellPicturesApart) {
  FlashMeter meter;
  const host::Canvas picture(660, 800);
  EXPECT_THROW(
      {
        for (int frame = 0; frame < 70; ++frame)
          meter.look_at(picture, frame);
      },
      std::length_error);
}

} // namespace
} // namespace kavo::film
