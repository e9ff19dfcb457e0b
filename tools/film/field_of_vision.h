// Whether places of a picture fill more of a field of vision than may flash: a quarter of ten
// degrees, wherever on the picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kavo::film {

// How high a picture of 800 rows is, as a share of its distance from the eyes, where each of its
// pixels is shown as `scale` x `scale` of a screen whose 341 columns are ten degrees.
double height_by_distance(double scale);

// A picture in square cells, row by row. A cell is less than a tenth of a degree, which the
// guidelines leave out as a fine pattern, and an even number of pixels: an odd one would leave a
// checkerboard unbalanced.
class FieldOfVision {
public:
  // Of a picture so many pixels large, each of which is shown as `scale` x `scale` of a screen
  // whose 341 x 256 pixels are ten degrees.
  FieldOfVision(int width, int height, double scale);

  int cell_side() const { return cell_side_; } // pixels
  int columns() const { return columns_; }

  // Takes the indices of cells, each once.
  bool is_large(std::span<const uint32_t> cells);

  // Whether so many cells are too many if one field holds them all.
  bool can_be_large(size_t cells) const { return cells > large_; }

private:
  size_t stride() const { return static_cast<size_t>(columns_) + 1; }
  void sum_up(std::span<const uint32_t> cells);
  bool some_field_is_large() const;

  int cell_side_;
  int columns_;
  int rows_;
  int field_columns_;
  int field_rows_;
  size_t large_;              // cells; more are too many
  std::vector<int32_t> sums_; // of the cells above and to the left of each corner
};

} // namespace kavo::film
