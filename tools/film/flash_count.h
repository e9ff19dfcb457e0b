// Makes flashes of the picture out of transitions of its cells, by the definitions in
// flash_meter.h.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "tools/film/field_of_vision.h"

namespace kavo::film {

// Which flashes of places occur concurrently.
enum class Concurrency { overlapping, in_step };

class FlashCount {
public:
  FlashCount(Concurrency concurrency, size_t cells);

  // The cells that end a transition with the picture shown at this time. Times must not fall.
  // Throws std::length_error when a second holds more than 64 pictures.
  void add(const std::vector<uint32_t>& cells, double now_ms, FieldOfVision& field);

  // Flashes in the second that the last picture ends, those that began before it included, and the
  // most in any second so far.
  int now() const { return static_cast<int>(ends_ms_.size()); }
  int most() const { return most_; }

private:
  static constexpr int64_t pictures_kept = 64;

  struct Picture {
    double time_ms = 0;
    std::vector<uint32_t> cells;
  };
  // A transition belongs to one flash of the picture at most.
  struct Cell {
    uint64_t changes = 0;               // that belong to none, a bit for each picture
    double is_in_flash_since_ms = -1e9; // which its next transition will end
  };

  Picture& picture(int64_t number) {
    return pictures_[static_cast<size_t>(number % pictures_kept)];
  }
  static uint64_t bit_of(int64_t number) { return uint64_t{1} << (number % pictures_kept); }
  static uint64_t bits_of(int64_t first, int64_t last);

  void forget_before(double time_ms);
  void note(uint32_t cell);
  std::optional<int64_t> moment_of_flash(FieldOfVision& field);
  std::span<const uint32_t> in_flash_from(int64_t begin);
  std::span<const uint32_t> in_flash_across(int64_t moment);
  void end_flash(int64_t moment);

  Concurrency concurrency_;
  std::vector<Cell> cells_;
  std::array<Picture, pictures_kept> pictures_;
  int64_t oldest_ = 0; // of the last second
  int64_t newest_ = -1;
  size_t flashing_ = 0; // cells with two changes or more
  std::vector<uint32_t> found_;
  std::deque<double> ends_ms_; // of the flashes of the last second
  int most_ = 0;
};

} // namespace kavo::film
