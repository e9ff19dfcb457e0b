#include "tools/film/changes.h"

#include <algorithm>
#include <cmath>

namespace kavo::film {

bool Brightness::differs_from(const Brightness& other) const {
  return std::abs(level - other.level) >= 0.1F && std::min(level, other.level) < 0.8F;
}

Redness::Redness(const Light& light)
    : colour(chromaticity(light)), is_saturated(is_saturated_red(light)) {
  static const Chromaticity purest = chromaticity({.red = 1, .green = 0, .blue = 0});
  level = -distance(colour, purest);
}

bool Redness::differs_from(const Redness& other) const {
  return (is_saturated || other.is_saturated) && distance(colour, other.colour) > 0.2F;
}

} // namespace kavo::film
