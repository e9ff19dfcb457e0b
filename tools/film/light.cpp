#include "tools/film/light.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace kavo::film {

namespace {

// The sRGB curve, for components 0..255.
std::array<float, 256> linear_values() {
  std::array<float, 256> values{};
  for (size_t index = 0; index < values.size(); ++index) {
    const double value = static_cast<double>(index) / 255;
    values[index] = static_cast<float>(value <= 0.04045 ? value / 12.92
                                                        : std::pow((value + 0.055) / 1.055, 2.4));
  }
  return values;
}

} // namespace

Light mean_light(const host::Canvas& picture, int x, int y, int side) {
  static const auto linear = linear_values();
  const int right = std::min(x + side, picture.width());
  const int bottom = std::min(y + side, picture.height());
  Light sum;
  for (int row = y; row < bottom; ++row) {
    const uint32_t* pixels = picture.row(row);
    for (int column = x; column < right; ++column) {
      sum.red += linear[pixels[column] >> 16 & 255];
      sum.green += linear[pixels[column] >> 8 & 255];
      sum.blue += linear[pixels[column] & 255];
    }
  }
  const float share = 1.0F / static_cast<float>((right - x) * (bottom - y));
  return {.red = sum.red * share, .green = sum.green * share, .blue = sum.blue * share};
}

float relative_luminance(const Light& light) {
  return 0.2126F * light.red + 0.7152F * light.green + 0.0722F * light.blue;
}

bool is_saturated_red(const Light& light) {
  const float sum = light.red + light.green + light.blue;
  return sum > 0 && light.red >= 0.8F * sum;
}

// By way of CIE XYZ with the primaries of sRGB (IEC 61966-2-1).
Chromaticity chromaticity(const Light& light) {
  const float x = 0.4124F * light.red + 0.3576F * light.green + 0.1805F * light.blue;
  const float y = relative_luminance(light);
  const float z = 0.0193F * light.red + 0.1192F * light.green + 0.9505F * light.blue;
  const float sum = x + 15 * y + 3 * z;
  if (sum <= 0)
    return {.u = 0.1978F, .v = 0.4683F};
  return {.u = 4 * x / sum, .v = 9 * y / sum};
}

float distance(Chromaticity one, Chromaticity other) {
  return std::hypot(one.u - other.u, one.v - other.v);
}

} // namespace kavo::film
