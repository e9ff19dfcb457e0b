// How far two pictures differ.
#pragma once

#include <cstdint>

#include "tests/host/read_png.h"

namespace kavo::test {

struct Difference {
  int64_t pixels = 0; // whose red, green or blue is further apart than the tolerance
  int first_x = 0;    // the first of them
  int first_y = 0;
  int largest = 0; // the largest distance of a component
};

// Both pictures have the same size.
Difference difference_between(const kavo::test::PngPicture& left,
                              const kavo::test::PngPicture& right, int tolerance);

} // namespace kavo::test
