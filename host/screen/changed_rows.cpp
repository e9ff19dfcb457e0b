#include "host/screen/changed_rows.h"

#include <algorithm>
#include <cstddef>

namespace kavo::host {

namespace {

// To show so many rows more costs less than to show another piece.
constexpr int smallest_gap = 4;

} // namespace

const std::vector<Rows>& ChangedRows::find(const Canvas& canvas) {
  const auto pixels = canvas.pixels();
  if (shown_.size() != pixels.size()) {
    shown_.assign(pixels.begin(), pixels.end());
    changed_ = {{0, canvas.height()}};
    return changed_;
  }
  changed_.clear();
  for (int y = 0; y < canvas.height(); ++y) {
    const ptrdiff_t start = static_cast<ptrdiff_t>(y) * canvas.width();
    const uint32_t* row = pixels.data() + start;
    uint32_t* shown = shown_.data() + start;
    if (std::equal(row, row + canvas.width(), shown))
      continue;
    std::copy_n(row, canvas.width(), shown);
    note(y);
  }
  return changed_;
}

void ChangedRows::note(int row) {
  if (changed_.empty() || row - changed_.back().first - changed_.back().count >= smallest_gap)
    changed_.push_back({row, 0});
  changed_.back().count = row + 1 - changed_.back().first;
}

} // namespace kavo::host
