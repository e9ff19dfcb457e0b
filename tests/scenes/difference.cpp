#include "tests/scenes/difference.h"

#include <algorithm>
#include <cstdlib>

namespace kavo::test {

namespace {

// The largest distance between two colours' components, each 0x00RRGGBB.
int distance_between(uint32_t left, uint32_t right) {
  int distance = 0;
  for (uint32_t shift = 0; shift <= 16; shift += 8) {
    const auto component = [shift](uint32_t color) {
      return static_cast<int>(color >> shift & 0xFFU);
    };
    distance = std::max(distance, std::abs(component(left) - component(right)));
  }
  return distance;
}

} // namespace

Difference difference_between(const kavo::test::PngPicture& left,
                              const kavo::test::PngPicture& right, int tolerance) {
  Difference result;
  for (size_t pixel = 0; pixel < left.pixels.size(); ++pixel) {
    const int distance = distance_between(left.pixels[pixel], right.pixels[pixel]);
    result.largest = std::max(result.largest, distance);
    if (distance <= tolerance)
      continue;
    if (result.pixels++ == 0) {
      result.first_x = static_cast<int>(pixel) % left.width;
      result.first_y = static_cast<int>(pixel) / left.width;
    }
  }
  return result;
}

} // namespace kavo::test
