// What makes a letter readable on a ground of nearly its own brightness.
#pragma once

#include <cstdint>

namespace kavo::host {

// Letters of one colour, 0x00RRGGBB. Brightness and contrast are the relative luminance and the
// contrast ratio of the Web Content Accessibility Guidelines 2.2.
class Legibility {
public:
  // The colour of outlines: dark, and no darker than the darkest of the game's grounds.
  static constexpr uint32_t outline = 0x000C1018;

  explicit Legibility(uint32_t letters);

  // Dark letters do not stand out from a dark outline, and get none.
  bool have_outline() const { return have_outline_; }

  // True where the contrast of the letters with this pixel is less than 3 : 1. Most pixels of a
  // ground are like their neighbours, so the last one is remembered.
  bool are_lost_on(uint32_t pixel) {
    if (pixel != last_pixel_) {
      last_pixel_ = pixel;
      are_lost_on_last_ = are_near(pixel);
    }
    return are_lost_on_last_;
  }

private:
  bool are_near(uint32_t pixel) const;

  int64_t brightness_;
  bool have_outline_;
  uint32_t last_pixel_ = outline;
  bool are_lost_on_last_ = false;
};

} // namespace kavo::host
