// Where a picture has changed, found out from what is drawn and not from its pixels.
//
// The picture is divided into tiles. Each has a fingerprint of all that was drawn on it: the shapes
// that touch it, in order, from the last one on that covers it. Equal fingerprints mean equal
// pixels. A step from one fingerprint to the next is one to one, so that a tile on which a single
// shape differs never keeps its fingerprint; where several differ it does by a chance of 1 in 2^64.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/screen/area.h"

namespace kavo::host {

class Tiles {
public:
  // Of a black picture of that size.
  Tiles(int width, int height);

  // All of the picture has one colour now.
  void cover_all(uint32_t colour);
  // A shape hides these pixels, which all have one colour now.
  void cover(Range columns, Range rows, uint32_t colour);
  // A shape is drawn on these pixels, or some of them; `shape` tells it from all others.
  void touch(Range columns, Range rows, uint64_t shape);
  // Rows of a settled picture become what nobody can foresee.
  void spoil(Range rows);

  // Takes what was drawn so far as the picture, and gives the tiles that have come to differ from
  // the one before: few areas rather than exact ones, none of which overlap. Valid until the next
  // call. Takes no memory, so that it cannot fail.
  const std::vector<Area>& settle();
  // Whether the last ones were most of the picture.
  bool are_mostly_changed() const { return is_most_; }
  // Whether a shape within these bounds may show in the last areas.
  bool are_changed_within(Range columns, Range rows) const;

  // How often the picture has changed, and where since it had done so for the `version`th time.
  uint64_t version() const { return version_; }
  std::vector<Area> changed_since(uint64_t version) const;

private:
  static constexpr int tile_height = 8;
  static constexpr int most_columns = 64; // a bit each
  // A tile is as wide as a row of its pixels costs no more to show than another area does.
  static constexpr int least_width_bits = 5;

  // One bit for each tile of a row of tiles.
  using Masks = std::vector<uint64_t>;

  size_t tile_at(int column, int row) const {
    return static_cast<size_t>(row) * static_cast<size_t>(columns_) + static_cast<size_t>(column);
  }
  uint64_t bits_of(Range columns) const;
  static Range tile_rows(Range rows);
  std::span<uint64_t> row_of(std::vector<uint64_t>& tiles, int row) const;
  uint64_t settle_row(int row);
  void find_areas(Masks& masks, std::vector<Area>& areas) const;
  void find_exact_areas(const Masks& masks, size_t most, std::vector<Area>& areas) const;
  Area area_of(int first_column, int column_count, int row) const;

  int width_;
  int height_;
  int width_bits_; // a tile is two to that power wide
  int columns_;
  int rows_;
  uint64_t version_ = 1;
  std::vector<uint64_t> prints_;  // of what is drawn
  std::vector<uint64_t> settled_; // of the picture
  std::vector<uint64_t> changed_at_;
  std::vector<uint64_t> row_changed_at_; // the latest of each row of tiles
  bool is_most_ = false;
  Masks changed_;
  std::vector<Area> areas_;
};

} // namespace kavo::host
