#include "host/screen/ground.h"

#include "host/screen/pixels.h"

namespace kavo::host {

Ground::Ground(int width, int height)
    : width_(width), height_(height),
      bands_(static_cast<size_t>((height - 1) / band_height + 1), Band{nothing_drawn(), 0, false}) {
}

void Ground::change(uint32_t colour) {
  colour_ = colour;
  is_due_ = true;
  for (Band& band : bands_)
    band.is_due = true;
}

void Ground::lay_everywhere(uint32_t* pixels) {
  for (int top = 0; top < height_; top += band_height)
    if (bands_[static_cast<size_t>(top / band_height)].is_due)
      lay_band(pixels, top, no_columns());
  is_due_ = false;
}

void Ground::lay_band(uint32_t* pixels, int top, Range hidden) {
  Band& band = bands_[static_cast<size_t>(top / band_height)];
  const Range due = band.laid == colour_ ? band.drawn : Range{0, width_};
  const int rows = std::min(band_height, height_ - top);
  for (const Range part : {Range{due.begin, std::min(due.end, hidden.begin)},
                           Range{std::max(due.begin, hidden.end), due.end}})
    if (!part.is_empty())
      fill({pixels + int64_t{top} * width_ + part.begin, width_, part.end - part.begin, rows},
           colour_);
  band = {nothing_drawn(), colour_, false};
}

} // namespace kavo::host
