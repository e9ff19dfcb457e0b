// When a place of the picture changes: the transitions between the peaks and valleys of a quantity
// over time, by the definitions in flash_meter.h.
#pragma once

#include <concepts>
#include <cstdint>

#include "tools/film/light.h"

namespace kavo::film {

// A quantity says by `level` which of two lights is higher, and by differs_from() whether going
// from one to the other is a transition.
template<typename Q>
concept Quantity = requires(const Q& one, const Q& other) {
  { one.level } -> std::convertible_to<float>;
  { one.differs_from(other) } -> std::same_as<bool>;
};

// By a tenth of the greatest luminance, from or to less than 0.8.
struct Brightness {
  Brightness() = default;
  explicit Brightness(const Light& light) : level(relative_luminance(light)) {}
  bool differs_from(const Brightness& other) const;

  float level = 0;
};

// From or to a saturated red, by more than 0.2 in the UCS diagram.
struct Redness {
  Redness() = default;
  explicit Redness(const Light& light);
  bool differs_from(const Redness& other) const;

  float level = 0; // the nearer to the purest red, the higher
  Chromaticity colour;
  bool is_saturated = false;
};

// One place.
template<Quantity Q>
class Changes {
public:
  void start(const Q& value) {
    highest_ = lowest_ = value;
    direction_ = 0;
  }

  // Whether the next value ends a transition that opposes the last one.
  bool advance(const Q& value) {
    const bool rises =
        direction_ <= 0 && value.level > lowest_.level && value.differs_from(lowest_);
    const bool falls =
        direction_ >= 0 && value.level < highest_.level && value.differs_from(highest_);
    if (rises || falls) {
      highest_ = lowest_ = value;
      direction_ = rises ? 1 : -1;
      return true;
    }
    if (value.level > highest_.level)
      highest_ = value;
    if (value.level < lowest_.level)
      lowest_ = value;
    return false;
  }

private:
  Q highest_; // since the last transition
  Q lowest_;
  int8_t direction_ = 0; // of the last transition: 1 up, -1 down, 0 there was none
};

} // namespace kavo::film
