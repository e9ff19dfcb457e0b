#include "tests/film/flash_meter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kavo::film {

namespace {

constexpr int cell_side = 4;                   // pixels
constexpr int field_columns = 341 / cell_side; // ten degrees of vision at a usual distance
constexpr int field_rows = 256 / cell_side;
constexpr int large_area = field_columns * field_rows / 4; // cells
constexpr int8_t one_flash = 3;                            // pictures that belong together

// The sRGB curve, for components 0..255.
std::array<float, 256> linear_values() {
  std::array<float, 256> values{};
  for (size_t index = 0; index < values.size(); ++index) {
    const double value = static_cast<double>(index) / 255;
    values[index] = static_cast<float>(value <= 0.04045 ? value / 12.92
                                                        : std::pow((value + 0.055) / 1.055, 2.4));
  }
  return values;
}

struct Light {
  float red = 0;
  float green = 0;
  float blue = 0;
};

Light mean_light(const host::Canvas& picture, int column, int row) {
  static const auto linear = linear_values();
  Light sum;
  for (int y = row * cell_side; y < (row + 1) * cell_side; ++y) {
    const uint32_t* pixels = picture.row(y) + static_cast<ptrdiff_t>(column) * cell_side;
    for (int x = 0; x < cell_side; ++x) {
      sum.red += linear[pixels[x] >> 16 & 255];
      sum.green += linear[pixels[x] >> 8 & 255];
      sum.blue += linear[pixels[x] & 255];
    }
  }
  constexpr float share = 1.0F / (cell_side * cell_side);
  return {sum.red * share, sum.green * share, sum.blue * share};
}

float relative_luminance(const Light& light) {
  return 0.2126F * light.red + 0.7152F * light.green + 0.0722F * light.blue;
}

// How red a saturated red is; 0 for every other colour.
float saturated_red(const Light& light) {
  const float sum = light.red + light.green + light.blue;
  if (sum <= 0 || light.red / sum < 0.8F)
    return 0;
  return std::max(0.0F, (light.red - light.green - light.blue) * 320);
}

} // namespace

void FlashMeter::prepare(const host::Canvas& picture) {
  columns_ = picture.width() / cell_side;
  rows_ = picture.height() / cell_side;
  const auto cells = static_cast<size_t>(columns_) * static_cast<size_t>(rows_);
  luminance_.cells.assign(cells, Cell{.age = one_flash});
  red_.cells.assign(cells, Cell{.age = one_flash});
  sums_.assign(static_cast<size_t>(columns_ + 1) * static_cast<size_t>(rows_ + 1), 0);
}

void FlashMeter::measure_cells(const host::Canvas& picture) {
  size_t index = 0;
  for (int row = 0; row < rows_; ++row) {
    for (int column = 0; column < columns_; ++column, ++index) {
      const Light light = mean_light(picture, column, row);
      luminance_.cells[index].value = relative_luminance(light);
      red_.cells[index].value = saturated_red(light);
    }
  }
}

void FlashMeter::look_at(const host::Canvas& picture, double now_ms) {
  const bool is_first = columns_ == 0;
  if (is_first)
    prepare(picture);
  measure_cells(picture);
  for (Quantity* quantity : {&luminance_, &red_}) {
    if (is_first)
      for (Cell& cell : quantity->cells)
        cell.extreme = cell.value;
    advance(*quantity, now_ms);
  }
}

// A flash that has been counted is over: its cells do not count towards the next one.
void FlashMeter::advance(Quantity& quantity, double now_ms) {
  for (Cell& cell : quantity.cells) {
    cell.age = static_cast<int8_t>(std::min(cell.age + 1, +one_flash));
    const float difference = cell.value - cell.extreme;
    const auto direction = static_cast<int8_t>((difference > 0) - (difference < 0));
    const bool is_change = std::abs(difference) >= quantity.threshold &&
                           std::min(cell.value, cell.extreme) < quantity.darkest_side_below;
    if (is_change && direction != cell.direction)
      change(cell, direction, now_ms);
    else if (direction == cell.direction)
      cell.extreme = cell.value;
  }
  if (!is_large_flash(quantity.cells))
    return;
  quantity.flashes_ms.push_back(now_ms);
  for (Cell& cell : quantity.cells)
    cell.age = one_flash;
}

void FlashMeter::change(Cell& cell, int8_t direction, double now_ms) {
  const bool is_flash = cell.has_changed && now_ms - cell.changed_at_ms < 1000;
  if (is_flash)
    cell.age = 0;
  cell.has_changed = !is_flash;
  cell.changed_at_ms = now_ms;
  cell.direction = direction;
  cell.extreme = cell.value;
}

// Whether some field of vision holds enough cells that have just flashed, by a table of sums.
bool FlashMeter::is_large_flash(const std::vector<Cell>& cells) {
  const auto has_flashed = [](const Cell& cell) { return cell.age < one_flash; };
  if (std::count_if(cells.begin(), cells.end(), has_flashed) <= large_area)
    return false;
  const auto at = [this](int row, int column) -> int32_t& {
    return sums_[static_cast<size_t>(row) * static_cast<size_t>(columns_ + 1) +
                 static_cast<size_t>(column)];
  };
  size_t index = 0;
  for (int row = 1; row <= rows_; ++row)
    for (int column = 1; column <= columns_; ++column)
      at(row, column) = at(row - 1, column) + at(row, column - 1) - at(row - 1, column - 1) +
                        (has_flashed(cells[index++]) ? 1 : 0);
  const int height = std::min(field_rows, rows_);
  const int width = std::min(field_columns, columns_);
  for (int row = height; row <= rows_; ++row)
    for (int column = width; column <= columns_; ++column)
      if (at(row, column) - at(row - height, column) - at(row, column - width) +
              at(row - height, column - width) >
          large_area)
        return true;
  return false;
}

int most_in_a_second(const std::vector<double>& times_ms) {
  ptrdiff_t most = 0;
  auto first = times_ms.begin();
  for (auto last = times_ms.begin(); last != times_ms.end(); ++last) {
    while (*last - *first >= 1000)
      ++first;
    most = std::max(most, last - first + 1);
  }
  return static_cast<int>(most);
}

} // namespace kavo::film
