// Counts general flashes and flashes of saturated red by the definitions of the Web Content
// Accessibility Guidelines 2.2, "general flash and red flash thresholds". In their words, and
// what this meter makes of them:
//
// - "a pair of opposing changes in relative luminance of 10 % or more of the maximum relative
//   luminance (1.0) where the relative luminance of the darker image is below 0.80", an increase
//   and a decrease in either order; a change is one "between adjacent peaks and valleys in a
//   plot of relative luminance measurement against time". So every place has its own plot.
// - "a pair of opposing transitions involving a saturated red": from or to R / (R + G + B) >=
//   0.8, by more than 0.2 in the CIE 1976 UCS diagram.
// - "the combined area of flashes occurring concurrently" may be a quarter of any 341 x 256
//   pixels. Areas are combined whichever way they change: a place that darkens while its
//   neighbour lights up flashes with it.
// - "Flashing that is a fine, balanced, pattern" of squares smaller than a tenth of a degree is
//   left out: what a place shows is the mean of a cell as small as that.
// - "no more than three general flashes and / or no more than three red flashes within any one-
//   second period": flashes of the picture, wherever on it, each after the end of the one
//   before. A change belongs to one of them at most.
//
// When flashes of places are concurrent they do not say. The meter counts by two readings:
//
// - overlapping: the places are between two opposing changes at one moment, whenever each of
//   these came. What is between changes then belongs to the flash, so that places which flicker
//   at one rate count at that rate, however they are staggered. An edge that sweeps there and
//   back is a flash.
// - in step: the places change with one picture and change back with one later picture. That is
//   the narrower: moving edges are a flash where they go to and fro at once, as in a picture
//   that shakes.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/screen/canvas.h"
#include "tools/film/changes.h"
#include "tools/film/field_of_vision.h"
#include "tools/film/flash_count.h"

namespace kavo::film {

class FlashMeter {
public:
  struct Counts {
    explicit Counts(size_t cells)
        : overlapping(Concurrency::overlapping, cells), in_step(Concurrency::in_step, cells) {}

    FlashCount overlapping;
    FlashCount in_step;
  };

  // Each pixel of the pictures is shown as `scale` x `scale` pixels of the guidelines' screen, of
  // 1024 x 768 at the usual distance. They would have a window of 800 rows scaled down to that,
  // which makes its flashes smaller; 1 does without.
  explicit FlashMeter(double scale = 1) : scale_(scale) {}

  // The next picture and its time, which must not fall.
  void look_at(const host::Canvas& picture, double now_ms);

  // Of no picture, no flashes.
  const Counts& general() const { return general_.counts; }
  const Counts& red() const { return red_.counts; }

private:
  // One quantity of the picture, cell by cell.
  template<Quantity Q>
  struct Plots {
    void start(const std::vector<Light>& lights);
    void advance(const std::vector<uint32_t>& changed, const std::vector<Light>& lights,
                 double now_ms, FieldOfVision& field);

    std::vector<Changes<Q>> cells;
    Counts counts{0};
  };

  void find_changed_cells(const host::Canvas& picture);
  bool has_changed(const host::Canvas& picture, int x, int y, int width) const;

  double scale_;
  std::optional<FieldOfVision> field_;
  std::vector<uint32_t> last_pixels_; // of the last picture
  std::vector<uint32_t> changed_;     // cells that this picture shows differently
  std::vector<Light> lights_;         // theirs
  Plots<Brightness> general_;
  Plots<Redness> red_;
};

} // namespace kavo::film
