#include "host/screen/legibility.h"

#include <array>
#include <cmath>

namespace kavo::host {

namespace {

constexpr double full = 65535; // whole numbers: pictures are the same on every machine

// How much light a component of 0 to 255 gives.
std::array<int64_t, 256> make_light() {
  std::array<int64_t, 256> light = {};
  for (size_t value = 0; value < light.size(); ++value) {
    const double part = static_cast<double>(value) / 255;
    const double linear = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    light[value] = std::llround(linear * full);
  }
  return light;
}

// Proportional to luminance + 0.05, whose quotients are contrast ratios.
int64_t brightness_of(uint32_t colour) {
  static const std::array<int64_t, 256> light = make_light();
  constexpr auto glare = static_cast<int64_t>(0.05 * full * 10'000);
  return 2126 * light[(colour >> 16U) & 0xFFU] + 7152 * light[(colour >> 8U) & 0xFFU] +
         722 * light[colour & 0xFFU] + glare;
}

bool contrast_is_too_low(int64_t brightness, int64_t other) {
  return brightness < 3 * other && other < 3 * brightness;
}

} // namespace

Legibility::Legibility(uint32_t letters)
    : brightness_(brightness_of(letters)),
      have_outline_(brightness_ >= 3 * brightness_of(outline)) {}

bool Legibility::are_near(uint32_t pixel) const {
  return contrast_is_too_low(brightness_, brightness_of(pixel));
}

} // namespace kavo::host
