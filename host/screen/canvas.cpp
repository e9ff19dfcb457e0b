#include "host/screen/canvas.h"

#include <algorithm>
#include <cstdlib>

#include "host/screen/fingerprint.h"
#include "host/screen/painter.h"
#include "host/screen/pixels.h"

namespace kavo::host {

namespace {

// Beyond this a coordinate is far outside any picture; nearer, products of two differences of
// coordinates still fit 64 bits.
constexpr int farthest = 1'000'000'000;

// So many shapes are painted at once at the latest: a program may draw for ever and show nothing.
constexpr size_t most_shapes = 8192;

Range clipped(int64_t start, int64_t size, int limit) {
  return {static_cast<int>(std::clamp<int64_t>(start, 0, limit)),
          static_cast<int>(std::clamp<int64_t>(start + size, 0, limit))};
}

uint64_t two_in_one(int one, int other) {
  return uint64_t{static_cast<uint32_t>(one)} << 32U | static_cast<uint32_t>(other);
}

uint64_t print_of(const Shape& shape) {
  const uint64_t what =
      shape.kind == Shape::Kind::text ? print_of_text(shape.text) : two_in_one(shape.x2, shape.y2);
  return print_of_shape(two_in_one(shape.x1, shape.y1), what,
                        two_in_one(static_cast<int>(shape.kind), static_cast<int>(shape.colour)));
}

} // namespace

Canvas::Canvas(int width, int height)
    : width_(width), height_(height),
      own_pixels_(static_cast<size_t>(width) * static_cast<size_t>(height)), pixels_(own_pixels_),
      ground_(width, height), tiles_(width, height) {}

std::span<uint32_t> Canvas::pixels_to_change(Range rows) {
  paint_what_is_due();
  ground_.make_room(pixels_.data(), {0, width_}, rows, false);
  tiles_.spoil(rows);
  return pixels_.subspan(static_cast<size_t>(rows.begin) * static_cast<size_t>(width_),
                         static_cast<size_t>(rows.end - rows.begin) * static_cast<size_t>(width_));
}

uint64_t Canvas::version() const {
  paint_what_is_due();
  return tiles_.version();
}

std::vector<Area> Canvas::changed_since(uint64_t version) const {
  paint_what_is_due();
  return tiles_.changed_since(version);
}

void Canvas::move_to(uint32_t* memory) {
  paint_what_is_due();
  if (memory == pixels_.data())
    return;
  std::copy(pixels_.begin(), pixels_.end(), memory);
  pixels_ = {memory, pixels_.size()};
  own_pixels_ = {};
}

void Canvas::move_home() {
  if (!own_pixels_.empty())
    return;
  own_pixels_.assign(pixels_.begin(), pixels_.end());
  pixels_ = own_pixels_;
}

void Canvas::paint() const {
  const std::vector<Area>& changed = tiles_.settle();
  if (!due_.cover || tiles_.are_mostly_changed())
    paint_everything();
  else
    paint_within(changed);
  due_.cover.reset();
  due_.shapes.clear();
}

void Canvas::paint_everything() const {
  if (due_.cover)
    ground_.change(*due_.cover);
  Painter painter(pixels_.data(), width_, ground_, {0, 0, width_, height_});
  due_.shapes.for_each([&painter](const Shape& shape) { painter.paint(shape); });
  ground_.lay(pixels_.data());
}

// Everything begins with a cover, so that what is outside these areas is there already.
void Canvas::paint_within(std::span<const Area> areas) const {
  const auto painter = [this](const Area& area) {
    return Painter(pixels_.data(), width_, ground_, area);
  };
  for (const Area& area : areas)
    painter(area).paint({.kind = Shape::Kind::rectangle,
                         .colour = *due_.cover,
                         .columns = area.columns(),
                         .rows = area.rows()});
  due_.shapes.for_each([&](const Shape& shape) {
    if (!tiles_.are_changed_within(shape.columns, shape.rows))
      return;
    for (const Area& area : areas)
      if (!common_part(area.columns(), shape.columns).is_empty() &&
          !common_part(area.rows(), shape.rows).is_empty())
        painter(area).paint(shape);
  });
}

void Canvas::cover(uint32_t colour) {
  tiles_.cover_all(colour);
  due_.shapes.clear();
  due_.cover = colour;
}

void Canvas::fill_rectangle(int x, int y, int width, int height) {
  const Range columns = clipped(x, width, width_);
  const Range rows = clipped(y, height, height_);
  if (columns.is_empty() || rows.is_empty())
    return;
  if (columns.end - columns.begin == width_ && rows.end - rows.begin == height_)
    return cover(colour_);
  note({.kind = Shape::Kind::rectangle, .colour = colour_, .columns = columns, .rows = rows});
  tiles_.cover(columns, rows, colour_);
}

void Canvas::note(const Shape& shape) {
  if (due_.shapes.size() >= most_shapes)
    paint();
  due_.shapes.add(shape);
}

void Canvas::note_with_bounds(const Shape& shape) {
  if (shape.columns.is_empty() || shape.rows.is_empty())
    return;
  note(shape);
  tiles_.touch(shape.columns, shape.rows, print_of(shape));
}

void Canvas::outline_rectangle(int x, int y, int width, int height) {
  if (width <= 0 || height <= 0)
    return;
  // Saturated so that a rectangle that reaches out of all bounds keeps its far edges there.
  const auto right = static_cast<int>(std::min<int64_t>(int64_t{x} + width - 1, INT32_MAX));
  const auto bottom = static_cast<int>(std::min<int64_t>(int64_t{y} + height - 1, INT32_MAX));
  fill_rectangle(x, y, width, 1);
  fill_rectangle(x, bottom, width, 1);
  fill_rectangle(x, y, 1, height);
  fill_rectangle(right, y, 1, height);
}

void Canvas::line(int x1, int y1, int x2, int y2) {
  x1 = std::clamp(x1, -farthest, farthest);
  y1 = std::clamp(y1, -farthest, farthest);
  x2 = std::clamp(x2, -farthest, farthest);
  y2 = std::clamp(y2, -farthest, farthest);
  if (y1 == y2)
    return fill_rectangle(std::min(x1, x2), y1, std::abs(x2 - x1) + 1, 1);
  if (x1 == x2)
    return fill_rectangle(x1, std::min(y1, y2), 1, std::abs(y2 - y1) + 1);
  note_with_bounds({.kind = Shape::Kind::line,
                    .colour = colour_,
                    .columns = clipped(std::min(x1, x2), int64_t{std::abs(x2 - x1)} + 1, width_),
                    .rows = clipped(std::min(y1, y2), int64_t{std::abs(y2 - y1)} + 1, height_),
                    .x1 = x1,
                    .y1 = y1,
                    .x2 = x2,
                    .y2 = y2});
}

// A letter has a byte or more, and an outline of a pixel around it.
void Canvas::text(int x, int y, std::string_view utf8) {
  const int64_t most_letters = std::ssize(utf8);
  note_with_bounds({.kind = Shape::Kind::text,
                    .colour = colour_,
                    .columns = clipped(int64_t{x} - 1, most_letters * cell_width + 2, width_),
                    .rows = clipped(int64_t{y} - 1, cell_height + 2, height_),
                    .x1 = x,
                    .y1 = y,
                    .text = utf8});
}

} // namespace kavo::host
