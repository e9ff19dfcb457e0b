#include "tools/film/field_of_vision.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace kavo::film {

namespace {

constexpr double field_width = 341; // pixels of the screen
constexpr double field_height = 256;
constexpr double tenth_of_a_degree = field_width / 100;

int rounded_up(double number) {
  return static_cast<int>(std::ceil(number));
}

} // namespace

double height_by_distance(double scale) {
  const double field_by_distance = 2 * std::tan(5 * std::numbers::pi / 180);
  return 800 * scale / field_width * field_by_distance;
}

FieldOfVision::FieldOfVision(int width, int height, double scale)
    : cell_side_(std::max(1, 2 * static_cast<int>(tenth_of_a_degree / scale / 2))),
      columns_((width + cell_side_ - 1) / cell_side_),
      rows_((height + cell_side_ - 1) / cell_side_),
      field_columns_(std::min(columns_, rounded_up(field_width / scale / cell_side_))),
      field_rows_(std::min(rows_, rounded_up(field_height / scale / cell_side_))),
      large_(static_cast<size_t>(field_width * field_height / (scale * scale) / 4 /
                                 (cell_side_ * cell_side_))),
      sums_(stride() * (static_cast<size_t>(rows_) + 1)) {}

bool FieldOfVision::is_large(std::span<const uint32_t> cells) {
  if (!can_be_large(cells.size()))
    return false;
  sum_up(cells);
  return some_field_is_large();
}

void FieldOfVision::sum_up(std::span<const uint32_t> cells) {
  const auto columns = static_cast<size_t>(columns_);
  std::ranges::fill(sums_, 0);
  for (const uint32_t cell : cells)
    sums_[(cell / columns + 1) * stride() + cell % columns + 1] = 1;
  for (size_t corner = stride(); corner < sums_.size(); corner += stride()) {
    int32_t in_row = 0;
    for (size_t column = 1; column <= columns; ++column) {
      in_row += sums_[corner + column];
      sums_[corner + column] = sums_[corner - stride() + column] + in_row;
    }
  }
}

bool FieldOfVision::some_field_is_large() const {
  const auto height = static_cast<size_t>(field_rows_);
  const auto width = static_cast<size_t>(field_columns_);
  for (size_t bottom = height; bottom <= static_cast<size_t>(rows_); ++bottom) {
    const int32_t* below = &sums_[bottom * stride()];
    const int32_t* above = &sums_[(bottom - height) * stride()];
    for (size_t right = width; right < stride(); ++right)
      if (std::cmp_greater(
              below[right] - below[right - width] - above[right] + above[right - width], large_))
        return true;
  }
  return false;
}

} // namespace kavo::film
