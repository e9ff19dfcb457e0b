#include "tools/film/flash_meter.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace kavo::film {

void FlashMeter::look_at(const host::Canvas& picture, double now_ms) {
  const bool is_first = !field_;
  if (is_first)
    field_.emplace(picture.width(), picture.height(), scale_);
  find_changed_cells(picture);
  last_pixels_.assign(picture.pixels().begin(), picture.pixels().end());
  if (is_first) {
    general_.start(lights_);
    red_.start(lights_);
  }
  general_.advance(changed_, lights_, now_ms, *field_);
  red_.advance(changed_, lights_, now_ms, *field_);
}

// Most of a picture is as it was in the last one.
void FlashMeter::find_changed_cells(const host::Canvas& picture) {
  const int side = field_->cell_side();
  changed_.clear();
  lights_.clear();
  uint32_t index = 0;
  for (int y = 0; y < picture.height(); y += side) {
    if (!has_changed(picture, 0, y, picture.width())) {
      index += static_cast<uint32_t>(field_->columns());
      continue;
    }
    for (int x = 0; x < picture.width(); x += side, ++index) {
      if (!has_changed(picture, x, y, side))
        continue;
      changed_.push_back(index);
      lights_.push_back(mean_light(picture, x, y, side));
    }
  }
}

// Whether the row of cells at `y` shows something else from `x` on, so many pixels wide.
bool FlashMeter::has_changed(const host::Canvas& picture, int x, int y, int width) const {
  if (last_pixels_.empty())
    return true;
  const auto pixels = picture.pixels();
  const auto bytes = static_cast<size_t>(std::min(width, picture.width() - x)) * sizeof(uint32_t);
  const int bottom = std::min(y + field_->cell_side(), picture.height());
  for (int row = y; row < bottom; ++row) {
    const auto first =
        static_cast<size_t>(row) * static_cast<size_t>(picture.width()) + static_cast<size_t>(x);
    if (std::memcmp(&pixels[first], &last_pixels_[first], bytes) != 0)
      return true;
  }
  return false;
}

template<Quantity Q>
void FlashMeter::Plots<Q>::start(const std::vector<Light>& lights) {
  cells.resize(lights.size());
  for (size_t index = 0; index < lights.size(); ++index)
    cells[index].start(Q(lights[index]));
  counts = Counts(lights.size());
}

template<Quantity Q>
void FlashMeter::Plots<Q>::advance(const std::vector<uint32_t>& changed,
                                   const std::vector<Light>& lights, double now_ms,
                                   FieldOfVision& field) {
  std::vector<uint32_t> transitions;
  for (size_t index = 0; index < changed.size(); ++index)
    if (cells[changed[index]].advance(Q(lights[index])))
      transitions.push_back(changed[index]);
  counts.overlapping.add(transitions, now_ms, field);
  counts.in_step.add(transitions, now_ms, field);
}

} // namespace kavo::film
