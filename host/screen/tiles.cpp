#include "host/screen/tiles.h"

#include <algorithm>
#include <bit>
#include <cstddef>

#include "host/screen/fingerprint.h"

namespace kavo::host {

namespace {

// With more of them it is cheaper to show what lies between them.
constexpr size_t most_areas = 64;

// To show one area more costs about as much as the pixels of two tiles.
uint64_t with_gaps_closed(uint64_t bits) {
  const uint64_t of_one = bits << 1U & bits >> 1U;
  const uint64_t of_two = (bits << 1U & bits >> 2U) | (bits << 2U & bits >> 1U);
  return bits | of_one | of_two;
}

uint64_t bits_from(int first, int count) {
  return (~uint64_t{0} >> (64 - count)) << first;
}

uint64_t with_everything_between(uint64_t bits) {
  if (bits == 0)
    return 0;
  const int first = std::countr_zero(bits);
  return bits_from(first, 64 - std::countl_zero(bits) - first);
}

// One below the other they are one area where they have the same columns.
void add(const Area& area, std::vector<Area>& areas) {
  const auto above = std::find_if(areas.rbegin(), areas.rend(), [&area](const Area& one) {
    return one.y + one.height == area.y && one.x == area.x && one.width == area.width;
  });
  if (above == areas.rend())
    areas.push_back(area);
  else
    above->height += area.height;
}

} // namespace

Tiles::Tiles(int width, int height)
    : width_(width), height_(height),
      width_bits_(std::max(least_width_bits, static_cast<int>(std::bit_width(static_cast<unsigned>(
                                                 (width - 1) / most_columns))))),
      columns_(((width - 1) >> width_bits_) + 1), rows_((height - 1) / tile_height + 1),
      prints_(static_cast<size_t>(columns_) * static_cast<size_t>(rows_), print_of_colour(0)),
      settled_(prints_), changed_at_(prints_.size(), version_),
      row_changed_at_(static_cast<size_t>(rows_), version_), changed_(static_cast<size_t>(rows_)) {
  areas_.reserve(most_areas + static_cast<size_t>(rows_) + most_columns);
}

void Tiles::cover_all(uint32_t colour) {
  std::ranges::fill(prints_, print_of_colour(colour));
}

Range Tiles::tile_rows(Range rows) {
  return {rows.begin / tile_height, (rows.end - 1) / tile_height + 1};
}

// Tiles at the right and the lower edge of the picture are covered when what there is of them is.
void Tiles::cover(Range columns, Range rows, uint32_t colour) {
  const uint64_t alone = print_of_colour(colour);
  const uint64_t shape = print_of_shape(
      (static_cast<uint64_t>(columns.begin) << 32U) | static_cast<uint64_t>(columns.end),
      (static_cast<uint64_t>(rows.begin) << 32U) | static_cast<uint64_t>(rows.end), colour);
  const int first = columns.begin >> width_bits_;
  const int end = ((columns.end - 1) >> width_bits_) + 1;
  const int first_covered = ((columns.begin - 1) >> width_bits_) + 1;
  const int end_covered = columns.end == width_ ? columns_ : columns.end >> width_bits_;
  for (int row = rows.begin / tile_height; row <= (rows.end - 1) / tile_height; ++row) {
    uint64_t* prints = &prints_[tile_at(0, row)];
    const bool is_row_covered =
        rows.begin <= row * tile_height && rows.end >= std::min((row + 1) * tile_height, height_);
    for (int column = first; column < end; ++column) {
      const bool is_covered = is_row_covered && column >= first_covered && column < end_covered;
      prints[column] = is_covered ? alone : followed_by(prints[column], shape);
    }
  }
}

void Tiles::touch(Range columns, Range rows, uint64_t shape) {
  const int first = columns.begin >> width_bits_;
  const int end = ((columns.end - 1) >> width_bits_) + 1;
  for (int row = rows.begin / tile_height; row <= (rows.end - 1) / tile_height; ++row)
    for (int column = first; column < end; ++column) {
      uint64_t& print = prints_[tile_at(column, row)];
      print = followed_by(print, shape);
    }
}

void Tiles::spoil(Range rows) {
  if (rows.is_empty())
    return;
  ++version_;
  touch({0, width_}, rows, print_of_shape(version_, 0, 0));
  const Range among = tile_rows(rows);
  const size_t first = tile_at(0, among.begin);
  const size_t count = tile_at(0, among.end) - first;
  std::copy_n(&prints_[first], count, &settled_[first]);
  std::fill_n(&changed_at_[first], count, version_);
  std::fill_n(&row_changed_at_[static_cast<size_t>(among.begin)], among.end - among.begin,
              version_);
}

std::span<uint64_t> Tiles::row_of(std::vector<uint64_t>& tiles, int row) const {
  return {&tiles[tile_at(0, row)], static_cast<size_t>(columns_)};
}

// Gives the tiles that have come to differ, which few rows have.
uint64_t Tiles::settle_row(int row) {
  const std::span<uint64_t> prints = row_of(prints_, row);
  const std::span<uint64_t> settled = row_of(settled_, row);
  if (std::ranges::equal(prints, settled))
    return 0;
  const std::span<uint64_t> changed_at = row_of(changed_at_, row);
  uint64_t mask = 0;
  for (size_t column = 0; column < prints.size(); ++column)
    if (prints[column] != settled[column]) {
      mask |= uint64_t{1} << column;
      changed_at[column] = version_ + 1;
    }
  std::ranges::copy(prints, settled.begin());
  row_changed_at_[static_cast<size_t>(row)] = version_ + 1;
  return mask;
}

const std::vector<Area>& Tiles::settle() {
  int count = 0;
  for (int row = 0; row < rows_; ++row) {
    const uint64_t mask = settle_row(row);
    changed_[static_cast<size_t>(row)] = mask;
    if (mask != 0)
      count += std::popcount(mask);
  }
  is_most_ = 2 * count > columns_ * rows_;
  version_ += count > 0 ? 1 : 0;
  find_areas(changed_, areas_);
  return areas_;
}

uint64_t Tiles::bits_of(Range columns) const {
  const int first = columns.begin >> width_bits_;
  return bits_from(first, ((columns.end - 1) >> width_bits_) + 1 - first);
}

bool Tiles::are_changed_within(Range columns, Range rows) const {
  const uint64_t bits = bits_of(columns);
  const Range among = tile_rows(rows);
  return std::any_of(changed_.begin() + among.begin, changed_.begin() + among.end,
                     [bits](uint64_t mask) { return (mask & bits) != 0; });
}

std::vector<Area> Tiles::changed_since(uint64_t version) const {
  std::vector<Area> areas;
  if (version == version_)
    return areas;
  Masks masks(static_cast<size_t>(rows_));
  for (int row = 0; row < rows_; ++row)
    if (row_changed_at_[static_cast<size_t>(row)] > version)
      for (int column = 0; column < columns_; ++column)
        masks[static_cast<size_t>(row)] |=
            uint64_t{changed_at_[tile_at(column, row)] > version ? 1U : 0U} << column;
  find_areas(masks, areas);
  return areas;
}

// The masks come to hold what the areas do.
void Tiles::find_areas(Masks& masks, std::vector<Area>& areas) const {
  std::ranges::transform(masks, masks.begin(), with_gaps_closed);
  find_exact_areas(masks, most_areas, areas);
  if (areas.size() <= most_areas)
    return;
  std::ranges::transform(masks, masks.begin(), with_everything_between);
  find_exact_areas(masks, masks.size(), areas);
}

// Given up when they are more than so many.
void Tiles::find_exact_areas(const Masks& masks, size_t most, std::vector<Area>& areas) const {
  areas.clear();
  for (int row = 0; row < rows_ && areas.size() <= most; ++row)
    for (uint64_t left = masks[static_cast<size_t>(row)]; left != 0;) {
      const int first = std::countr_zero(left);
      const int count = std::countr_one(left >> first);
      left &= ~bits_from(first, count);
      add(area_of(first, count, row), areas);
    }
}

Area Tiles::area_of(int first_column, int column_count, int row) const {
  const int x = first_column << width_bits_;
  const int y = row * tile_height;
  return {x, y, std::min(column_count << width_bits_, width_ - x),
          std::min(tile_height, height_ - y)};
}

} // namespace kavo::host
