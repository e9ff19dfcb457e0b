#include "host/screen/scaler.h"

#include <algorithm>
#include <cmath>

namespace kavo::host {

namespace {

constexpr uint32_t whole = 256;
constexpr uint32_t red_and_blue = 0x00FF00FF;
constexpr uint32_t green = 0x0000FF00;

// Sums of weighted pixels; red and blue share a word, 16 bits each.
struct Sum {
  uint32_t red_blue = 0x00800080; // rounds to the nearest
  uint32_t green_only = 0x00000080;

  void add(uint32_t pixel, uint32_t weight) {
    red_blue += (pixel & red_and_blue) * weight;
    green_only += ((pixel & green) >> 8U) * weight;
  }
  uint32_t pixel() const { return ((red_blue >> 8U) & red_and_blue) | (green_only & green); }
};

void fill(const PixelBuffer& target, const Area& area) {
  for (int y = area.y; y < area.y + area.height; ++y)
    std::fill_n(target.pixels + y * target.pitch + area.x, area.width, 0U);
}

void draw_bars(const Area& picture, const PixelBuffer& target) {
  const int right = picture.x + picture.width;
  const int bottom = picture.y + picture.height;
  fill(target, {0, 0, target.size.width, picture.y});
  fill(target, {0, bottom, target.size.width, target.size.height - bottom});
  fill(target, {0, picture.y, picture.x, picture.height});
  fill(target, {right, picture.y, target.size.width - right, picture.height});
}

Area draw_multiplied(const Canvas& canvas, const Area& part, const Area& area,
                     const PixelBuffer& target) {
  const int factor = area.width / canvas.width();
  const Area drawn = {area.x + part.x * factor, area.y + part.y * factor, part.width * factor,
                      part.height * factor};
  for (int y = 0; y < part.height; ++y) {
    uint32_t* first = target.pixels + (drawn.y + y * factor) * target.pitch + drawn.x;
    const uint32_t* source = canvas.row(part.y + y) + part.x;
    if (factor == 1)
      std::copy_n(source, part.width, first);
    else
      for (int x = 0; x < part.width; ++x)
        std::fill_n(first + static_cast<ptrdiff_t>(x) * factor, factor, source[x]);
    for (int copy = 1; copy < factor; ++copy)
      std::copy_n(first, drawn.width, first + copy * target.pitch);
  }
  return drawn;
}

// The pixels of the result, of `to` in all, that cover some of these of the original's `from`.
Range covering(Range original, int from, int to) {
  return {static_cast<int>(int64_t{original.begin} * to / from),
          static_cast<int>((int64_t{original.end} * to + from - 1) / from)};
}

} // namespace

Size largest_within(Size picture, Size bounds) {
  const double scale = std::min(static_cast<double>(bounds.width) / picture.width,
                                static_cast<double>(bounds.height) / picture.height);
  const auto side = [scale](int length) {
    return std::max(1, static_cast<int>(std::lround(length * scale)));
  };
  return {side(picture.width), side(picture.height)};
}

Area letterbox(Size picture, Size window) {
  const Size fitted = largest_within(picture, window);
  const int width = std::min(fitted.width, window.width);
  const int height = std::min(fitted.height, window.height);
  return {(window.width - width) / 2, (window.height - height) / 2, width, height};
}

void Scaler::draw(const Canvas& canvas, const PixelBuffer& target) {
  draw_bars(letterbox({canvas.width(), canvas.height()}, target.size), target);
  draw_part(canvas, {0, 0, canvas.width(), canvas.height()}, target);
}

Area Scaler::draw_part(const Canvas& canvas, const Area& part, const PixelBuffer& target) {
  const Area area = letterbox({canvas.width(), canvas.height()}, target.size);
  const int factor = area.width / canvas.width();
  const bool is_whole_multiple =
      area.width == factor * canvas.width() && area.height == factor * canvas.height();
  return is_whole_multiple ? draw_multiplied(canvas, part, area, target)
                           : draw_resampled(canvas, part, area, target);
}

void Scaler::Axis::prepare(int original_size, int result_size) {
  if (original_size == from && result_size == to)
    return;
  from = original_size;
  to = result_size;
  covers.clear();
  weights.clear();
  for (int64_t i = 0; i < to; ++i) {
    // One pixel of the result is `from` units wide, one of the original `to`.
    const int64_t begin = i * from;
    const int64_t end = begin + from;
    const Cover cover = {static_cast<int>(begin / to),
                         static_cast<int>((end - 1) / to - begin / to + 1), weights.size()};
    // Rounded running sums, so that the weights add up exactly.
    int64_t sum = 0;
    for (int64_t pixel = cover.first; pixel < cover.first + cover.count; ++pixel) {
      const int64_t covered = std::min(end, (pixel + 1) * to) - begin;
      const int64_t next_sum = (covered * whole + from / 2) / from;
      weights.push_back(static_cast<uint32_t>(next_sum - sum));
      sum = next_sum;
    }
    covers.push_back(cover);
  }
}

Area Scaler::draw_resampled(const Canvas& canvas, const Area& part, const Area& area,
                            const PixelBuffer& target) {
  columns_.prepare(canvas.width(), area.width);
  rows_.prepare(canvas.height(), area.height);
  narrowed_.resize(static_cast<size_t>(area.width) * static_cast<size_t>(canvas.height()));
  const Range columns = covering(part.columns(), canvas.width(), area.width);
  const Range rows = covering(part.rows(), canvas.height(), area.height);
  for (int y = part.y; y < part.y + part.height; ++y)
    scale_row(canvas.row(y), columns, &narrowed_[static_cast<size_t>(y) * columns_.covers.size()]);
  for (int y = rows.begin; y < rows.end; ++y)
    mix_rows(rows_.covers[static_cast<size_t>(y)], columns,
             target.pixels + (area.y + y) * target.pitch + area.x);
  return {area.x + columns.begin, area.y + rows.begin, columns.end - columns.begin,
          rows.end - rows.begin};
}

void Scaler::scale_row(const uint32_t* source, Range columns, uint32_t* result) const {
  for (int x = columns.begin; x < columns.end; ++x) {
    const Axis::Cover& cover = columns_.covers[static_cast<size_t>(x)];
    Sum sum;
    for (int i = 0; i < cover.count; ++i)
      sum.add(source[cover.first + i], columns_.weights[cover.weights + static_cast<size_t>(i)]);
    result[x] = sum.pixel();
  }
}

void Scaler::mix_rows(const Axis::Cover& cover, Range columns, uint32_t* result) const {
  const size_t width = columns_.covers.size();
  const uint32_t* first = &narrowed_[static_cast<size_t>(cover.first) * width];
  const uint32_t* weights = &rows_.weights[cover.weights];
  if (cover.count == 1) {
    std::copy(first + columns.begin, first + columns.end, result + columns.begin);
    return;
  }
  for (int x = columns.begin; x < columns.end; ++x) {
    Sum sum;
    for (int i = 0; i < cover.count; ++i)
      sum.add(first[static_cast<size_t>(i) * width + static_cast<size_t>(x)], weights[i]);
    result[x] = sum.pixel();
  }
}

} // namespace kavo::host
