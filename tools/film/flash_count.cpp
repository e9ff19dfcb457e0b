#include "tools/film/flash_count.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

namespace kavo::film {

namespace {

constexpr double second_ms = 1000;
constexpr double never = -1e9;

} // namespace

FlashCount::FlashCount(Concurrency concurrency, size_t cells)
    : concurrency_(concurrency), cells_(cells) {}

// A flash is taken with the picture that ends it.
void FlashCount::add(const std::vector<uint32_t>& cells, double now_ms, FieldOfVision& field) {
  forget_before(now_ms - second_ms);
  ++newest_;
  if (newest_ - oldest_ >= pictures_kept)
    throw std::length_error("more pictures in a second than the flash meter can tell apart");
  picture(newest_) = {.time_ms = now_ms, .cells = {}};
  for (const uint32_t cell : cells)
    note(cell);
  if (const auto moment = moment_of_flash(field)) {
    end_flash(*moment);
    ends_ms_.push_back(now_ms);
    most_ = std::max(most_, now());
  }
}

void FlashCount::forget_before(double time_ms) {
  for (; oldest_ <= newest_ && picture(oldest_).time_ms <= time_ms; ++oldest_)
    for (const uint32_t cell : picture(oldest_).cells) {
      cells_[cell].changes &= ~bit_of(oldest_);
      flashing_ -= std::has_single_bit(cells_[cell].changes) ? 1U : 0U;
    }
  while (!ends_ms_.empty() && ends_ms_.front() <= time_ms)
    ends_ms_.pop_front();
}

void FlashCount::note(uint32_t cell) {
  auto& [changes, is_in_flash_since_ms] = cells_[cell];
  const bool ends_flash = picture(newest_).time_ms - is_in_flash_since_ms < second_ms;
  is_in_flash_since_ms = never;
  if (ends_flash)
    return;
  flashing_ += std::has_single_bit(changes) ? 1U : 0U;
  changes |= bit_of(newest_);
  picture(newest_).cells.push_back(cell);
}

uint64_t FlashCount::bits_of(int64_t first, int64_t last) {
  return std::rotl(~uint64_t{0} >> (pictures_kept - 1 - (last - first)),
                   static_cast<int>(first % pictures_kept));
}

// The last picture at which all places are in the flash that the newest picture ends, if it ends
// one.
std::optional<int64_t> FlashCount::moment_of_flash(FieldOfVision& field) {
  if (picture(newest_).cells.empty() || !field.can_be_large(flashing_))
    return {};
  for (int64_t number = newest_ - 1; number >= oldest_; --number) {
    if (picture(number).cells.empty())
      continue;
    if (concurrency_ == Concurrency::in_step && field.is_large(in_flash_from(number)))
      return newest_ - 1;
    if (concurrency_ == Concurrency::overlapping && field.is_large(in_flash_across(number)))
      return number;
  }
  return {};
}

// The cells whose transitions this picture ended, and then the newest one.
std::span<const uint32_t> FlashCount::in_flash_from(int64_t begin) {
  const uint64_t since = bits_of(begin, newest_);
  const uint64_t both = bit_of(begin) | bit_of(newest_);
  found_.clear();
  for (const uint32_t cell : picture(begin).cells)
    if ((cells_[cell].changes & since) == both)
      found_.push_back(cell);
  return found_;
}

// The cells that are between two transitions while this picture is shown.
std::span<const uint32_t> FlashCount::in_flash_across(int64_t moment) {
  const uint64_t before = bits_of(oldest_, moment);
  found_.clear();
  for (int64_t number = oldest_; number <= moment; ++number) {
    const uint64_t earlier = bits_of(oldest_, number) & ~bit_of(number);
    for (const uint32_t cell : picture(number).cells) {
      const uint64_t changes = cells_[cell].changes;
      if ((changes & earlier) == 0 && (changes & ~before) != 0)
        found_.push_back(cell);
    }
  }
  return found_;
}

// Whatever is between two transitions at that moment belongs to the flash, even where it ends
// later.
void FlashCount::end_flash(int64_t moment) {
  for (int64_t number = oldest_; number <= newest_; ++number) {
    for (const uint32_t index : picture(number).cells) {
      Cell& cell = cells_[index];
      cell.is_in_flash_since_ms = number <= moment ? picture(number).time_ms : never;
      cell.changes = 0;
    }
    picture(number).cells.clear();
  }
  flashing_ = 0;
}

} // namespace kavo::film
