// Counts general flashes and saturated-red flashes by the definitions of the Web Content
// Accessibility Guidelines 2 ("general flash and red flash thresholds"): a pair of opposing changes
// of relative luminance by a tenth of the greatest or more, the darker side below 0.8, or of
// saturated red, over more than a quarter of some 341 x 256 pixels on a screen that shows the
// picture pixel by pixel. Three in any one second are allowed.
//
// Looks at cells of 4 x 4 pixels. A cell has flashed when it made two opposing changes within a
// second; cells that did so within three pictures have flashed together.
#pragma once

#include <cstdint>
#include <vector>

#include "host/screen/canvas.h"

namespace kavo::film {

// The largest number of these times, which are in order, within less than a second.
int most_in_a_second(const std::vector<double>& times_ms);

class FlashMeter {
public:
  // The next picture and its time, which must not fall.
  void look_at(const host::Canvas& picture, double now_ms);

  // The times of all flashes so far, in order.
  const std::vector<double>& general_ms() const { return luminance_.flashes_ms; }
  const std::vector<double>& red_ms() const { return red_.flashes_ms; }

private:
  struct Cell {
    float value = 0;          // now
    float extreme = 0;        // the furthest since the last change, in its direction
    int8_t direction = 0;     // of the last change: 1 up, -1 down
    int8_t age = 0;           // pictures since the last flash, capped
    bool has_changed = false; // once, which the next change makes a flash
    double changed_at_ms = 0;
  };
  // One quantity of the picture, cell by cell.
  struct Quantity {
    float threshold;          // of a change
    float darkest_side_below; // a change between two values above this is none
    std::vector<Cell> cells{};
    std::vector<double> flashes_ms{};
  };

  void prepare(const host::Canvas& picture);
  void measure_cells(const host::Canvas& picture);
  void advance(Quantity& quantity, double now_ms);
  static void change(Cell& cell, int8_t direction, double now_ms);
  bool is_large_flash(const std::vector<Cell>& cells);

  Quantity luminance_{.threshold = 0.1F, .darkest_side_below = 0.8F};
  Quantity red_{.threshold = 20.0F, .darkest_side_below = 1e9F};
  int columns_ = 0;
  int rows_ = 0;
  std::vector<int32_t> sums_; // working memory of is_large_flash()
};

} // namespace kavo::film
