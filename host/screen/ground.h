// The one colour on which a frame is drawn, written late and only where it will be seen.
//
// Frame after frame begins with a fill of the whole picture, mostly in the colour of the last one:
// only what was drawn since then needs it, and not even that under a large shape. That spares half
// of the pixels of a busy frame, and fetching them from the core on which the X server read the
// last one.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "host/screen/area.h"

namespace kavo::host {

class Ground {
public:
  // Black, under a picture of that size in which all pixels are black.
  Ground(int width, int height);

  // All that was drawn is gone, the picture is of this colour alone: to be laid later.
  void change(uint32_t colour);

  // Before a shape is drawn within these columns and rows of the picture. The ground is laid where
  // the shape will not hide it; `is_covering` if it hides all of them.
  void make_room(uint32_t* pixels, Range columns, Range rows, bool is_covering) {
    for (int top = first_row_of_band(rows.begin); top < rows.end; top += band_height) {
      Band& band = bands_[static_cast<unsigned>(top) / band_height];
      if (band.is_due) {
        const bool is_hidden = is_covering && rows.begin <= top && top + band_height <= rows.end;
        lay_band(pixels, top, is_hidden ? columns : no_columns());
      }
      band.drawn.begin = std::min(band.drawn.begin, columns.begin);
      band.drawn.end = std::max(band.drawn.end, columns.end);
    }
  }

  // Lays what is still due; after that the picture is whole. Asked for every row that is read.
  void lay(uint32_t* pixels) {
    if (is_due_)
      lay_everywhere(pixels);
  }

private:
  // Rows are treated in groups: fewer notes to take, for a little more to fill.
  static constexpr int band_height = 8;

  struct Band {
    Range drawn; // columns that may not show the colour `laid`
    uint32_t laid;
    bool is_due; // the ground has changed since
  };

  void lay_everywhere(uint32_t* pixels);
  void lay_band(uint32_t* pixels, int top, Range hidden);

  static int first_row_of_band(int row) { return row & -band_height; }
  Range no_columns() const { return {width_, width_}; }
  Range nothing_drawn() const { return {width_, 0}; } // so that any columns widen it to themselves

  int width_;
  int height_;
  uint32_t colour_ = 0;
  bool is_due_ = false; // in some band
  std::vector<Band> bands_;
};

} // namespace kavo::host
