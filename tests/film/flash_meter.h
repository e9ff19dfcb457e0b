// Counts general flashes and saturated-red flashes by the definitions of the Web Content
// Accessibility Guidelines 2 ("general flash and red flash thresholds"): a pair of opposing changes
// of relative luminance by a tenth of the greatest or more, the darker side below 0.8, or of
// saturated red, over more than a quarter of some 341 x 256 pixels on a screen that shows the
// picture pixel by pixel. Three in any one second are allowed.
//
// A flash is something that a place does. So every cell of 4 x 4 pixels, which is what the
// guidelines leave out as a fine pattern, counts its own flashes of the last second; the picture
// flashes n times in it when cells that did so n times or more are more than a quarter of some
// field. Whether they did so together is not asked, which errs on the side of counting.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "host/screen/canvas.h"

namespace kavo::film {

class FlashMeter {
public:
  // The next picture and its time, which must not fall.
  void look_at(const host::Canvas& picture, double now_ms);

  // The flashes in the second that the last picture ends, and the most in any second so far.
  int general_now() const { return luminance_.now; }
  int most_general() const { return luminance_.most; }
  int most_red() const { return red_.most; }

private:
  struct Cell {
    float value = 0;          // now
    float extreme = 0;        // the furthest since the last change, in its direction
    int8_t direction = 0;     // of the last change: 1 up, -1 down
    uint8_t flashes = 0;      // in the last second
    bool has_changed = false; // once, which the next change makes a flash
    double changed_at_ms = 0;
  };
  // Cells that flashed at one time.
  struct Flash {
    double time_ms;
    std::vector<uint32_t> cells;
  };
  // One quantity of the picture, cell by cell.
  struct Quantity {
    float threshold;          // of a change
    float darkest_side_below; // a change between two values above this is none
    std::vector<Cell> cells{};
    std::deque<Flash> last_second{};
    size_t flashes = 0; // of all cells in it
    int now = 0;
    int most = 0;
  };

  void prepare(const host::Canvas& picture);
  void measure_changed_cells(const host::Canvas& picture);
  bool has_changed(const host::Canvas& picture, int column, int row) const;
  void advance(Quantity& quantity, double now_ms);
  static void forget_before(Quantity& quantity, double time_ms);
  Flash change_cells(Quantity& quantity, double now_ms) const;
  static bool completes_flash(Cell& cell, int8_t direction, double now_ms);
  int flashes_of_large_area(const Quantity& quantity);
  bool is_large(const std::vector<Cell>& cells, int flashes);

  Quantity luminance_{.threshold = 0.1F, .darkest_side_below = 0.8F};
  Quantity red_{.threshold = 20.0F, .darkest_side_below = 1e9F};
  int columns_ = 0;
  int rows_ = 0;
  std::optional<host::Canvas> last_picture_;
  std::vector<uint32_t> changed_; // cells that this picture shows differently
  std::vector<int32_t> sums_;     // working memory of is_large()
};

} // namespace kavo::film
