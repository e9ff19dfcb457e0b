#include "tests/film/flash_meter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "tests/film/studio.h"

namespace kavo::film {

namespace {

constexpr int cell_side = 4;                   // pixels
constexpr int field_columns = 341 / cell_side; // ten degrees of vision at a usual distance
constexpr int field_rows = 256 / cell_side;
constexpr int large_area = field_columns * field_rows / 4; // cells
constexpr double second_ms = 1000;

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
  luminance_.cells.assign(cells, Cell{});
  red_.cells.assign(cells, Cell{});
  sums_.assign(static_cast<size_t>(columns_ + 1) * static_cast<size_t>(rows_ + 1), 0);
}

// Most of a picture is as it was in the last one.
void FlashMeter::measure_changed_cells(const host::Canvas& picture) {
  changed_.clear();
  uint32_t index = 0;
  for (int row = 0; row < rows_; ++row) {
    for (int column = 0; column < columns_; ++column, ++index) {
      if (!has_changed(picture, column, row))
        continue;
      const Light light = mean_light(picture, column, row);
      luminance_.cells[index].value = relative_luminance(light);
      red_.cells[index].value = saturated_red(light);
      changed_.push_back(index);
    }
  }
  last_picture_ = copy_of(picture);
}

bool FlashMeter::has_changed(const host::Canvas& picture, int column, int row) const {
  if (!last_picture_)
    return true;
  const auto first = static_cast<ptrdiff_t>(column) * cell_side;
  for (int y = row * cell_side; y < (row + 1) * cell_side; ++y)
    if (std::memcmp(picture.row(y) + first, last_picture_->row(y) + first,
                    cell_side * sizeof(uint32_t)) != 0)
      return true;
  return false;
}

void FlashMeter::look_at(const host::Canvas& picture, double now_ms) {
  const bool is_first = columns_ == 0;
  if (is_first)
    prepare(picture);
  measure_changed_cells(picture);
  for (Quantity* quantity : {&luminance_, &red_}) {
    if (is_first)
      for (Cell& cell : quantity->cells)
        cell.extreme = cell.value;
    advance(*quantity, now_ms);
  }
}

void FlashMeter::advance(Quantity& quantity, double now_ms) {
  forget_before(quantity, now_ms - second_ms);
  quantity.last_second.push_back(change_cells(quantity, now_ms));
  quantity.now = flashes_of_large_area(quantity);
  quantity.most = std::max(quantity.most, quantity.now);
}

void FlashMeter::forget_before(Quantity& quantity, double time_ms) {
  auto& flashes = quantity.last_second;
  for (; !flashes.empty() && flashes.front().time_ms <= time_ms; flashes.pop_front())
    for (const uint32_t index : flashes.front().cells) {
      --quantity.cells[index].flashes;
      --quantity.flashes;
    }
}

FlashMeter::Flash FlashMeter::change_cells(Quantity& quantity, double now_ms) const {
  Flash flash{.time_ms = now_ms, .cells = {}};
  for (const uint32_t index : changed_) {
    Cell& cell = quantity.cells[index];
    const float difference = cell.value - cell.extreme;
    const auto direction = static_cast<int8_t>((difference > 0) - (difference < 0));
    const bool is_change = std::abs(difference) >= quantity.threshold &&
                           std::min(cell.value, cell.extreme) < quantity.darkest_side_below;
    if (is_change && direction != cell.direction) {
      if (completes_flash(cell, direction, now_ms)) {
        flash.cells.push_back(index);
        ++cell.flashes;
      }
    } else if (direction == cell.direction) {
      cell.extreme = cell.value;
    }
  }
  quantity.flashes += flash.cells.size();
  return flash;
}

bool FlashMeter::completes_flash(Cell& cell, int8_t direction, double now_ms) {
  const bool is_flash = cell.has_changed && now_ms - cell.changed_at_ms < second_ms;
  cell.has_changed = !is_flash;
  cell.changed_at_ms = now_ms;
  cell.direction = direction;
  cell.extreme = cell.value;
  return is_flash;
}

int FlashMeter::flashes_of_large_area(const Quantity& quantity) {
  if (quantity.flashes <= large_area)
    return 0;
  int flashes = 0;
  while (is_large(quantity.cells, flashes + 1))
    ++flashes;
  return flashes;
}

// Whether some field of vision holds enough cells that have flashed so often, by a table of sums.
bool FlashMeter::is_large(const std::vector<Cell>& cells, int flashes) {
  const auto has_flashed = [flashes](const Cell& cell) { return cell.flashes >= flashes; };
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

} // namespace kavo::film
