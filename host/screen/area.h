// Parts of a picture.
#pragma once

#include <algorithm>

namespace kavo::host {

// From one column or row to the one before another.
struct Range {
  int begin;
  int end;
  bool is_empty() const { return begin >= end; }
};

struct Size {
  int width;
  int height;
};

struct Area {
  int x;
  int y;
  int width;
  int height;

  Range columns() const { return {x, x + width}; }
  Range rows() const { return {y, y + height}; }
};

inline Range common_part(Range one, Range other) {
  return {std::max(one.begin, other.begin), std::min(one.end, other.end)};
}

} // namespace kavo::host
