// The picture being drawn: a plain framebuffer and the shapes that go into it.
//
// Pixels are 32-bit 0x00RRGGBB, row after row without padding. Everything is clipped to the
// picture; a shape that lies outside it, or has no size, draws nothing. The same calls leave the
// same bytes on every machine: there is no blending, no rounding mode and no driver in between.
//
// Shapes are noted first and painted when the pixels are asked for. By then it is known where the
// picture differs from what it was: a program that draws the same frame after frame costs no pixel.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "host/screen/area.h"
#include "host/screen/display_list.h"
#include "host/screen/font.h"
#include "host/screen/ground.h"
#include "host/screen/tiles.h"

namespace kavo::host {

class Canvas {
public:
  static constexpr int cell_width = host::cell_width;
  static constexpr int cell_height = host::cell_height;

  // A black picture; both sizes are at least 1 and at most 32767. The drawing colour starts as
  // white.
  Canvas(int width, int height);
  Canvas(Canvas&&) = default;
  Canvas& operator=(Canvas&&) = default;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas() = default;

  int width() const { return width_; }
  int height() const { return height_; }
  std::span<const uint32_t> pixels() const {
    paint_what_is_due();
    return pixels_;
  }
  const uint32_t* row(int y) const { return &pixels()[static_cast<size_t>(y) * width_]; }

  // To be written pixel by pixel, 0x00RRGGBB, all rows or some of them; valid until the picture
  // moves or a shape is drawn.
  std::span<uint32_t> pixels_to_change() { return pixels_to_change({0, height_}); }
  std::span<uint32_t> pixels_to_change(Range rows);

  // A number that grows whenever the picture is found changed, and where it has changed since it
  // was a smaller one: in areas that do not overlap, in which other pixels may be as they were.
  uint64_t version() const;
  std::vector<Area> changed_since(uint64_t version) const;

  // Moves the picture, as it is, into somebody else's memory of width × height pixels, where it is
  // whole afterwards and all that follows is drawn. The memory must stay, and nobody else write to
  // it, until the picture has moved on, or home into memory of its own. That spares whoever shows
  // it a copy.
  void move_to(uint32_t* memory);
  void move_home();

  // Makes the whole picture black; the drawing colour stays.
  void clear() { cover(0); }

  // The colour of the shapes that follow, 0x00RRGGBB.
  void set_colour(uint32_t colour) { colour_ = colour & 0x00FFFFFF; }

  // Covers the pixels x to x + width − 1 and y to y + height − 1; the outline is their outermost
  // ring, one pixel wide.
  void fill_rectangle(int x, int y, int width, int height);
  void outline_rectangle(int x, int y, int width, int height);

  // From one end point to the other, both included. The pixels are those nearest to the line, a
  // tie goes towards the larger coordinate, and the direction makes no difference.
  void line(int x1, int y1, int x2, int y2);

  // Writes UTF-8 in cells of 8 × 16 pixels, the first one's top-left corner at (x, y), without a
  // background. An invalid byte, a control character and a character that the font lacks each
  // show as a box. Pixels that touch a bright letter and on which it would be lost become dark.
  void text(int x, int y, std::string_view utf8);

private:
  // What was drawn since the pixels were last looked at.
  struct Due {
    std::optional<uint32_t> cover; // over everything, before the shapes
    DisplayList shapes;
  };

  void cover(uint32_t colour);
  void note(const Shape& shape);
  void note_with_bounds(const Shape& shape);
  void paint_what_is_due() const {
    if (due_.cover || !due_.shapes.is_empty())
      paint();
  }
  void paint() const;
  void paint_everything() const;
  void paint_within(std::span<const Area> areas) const;

  int width_;
  int height_;
  uint32_t colour_ = 0x00FFFFFF;
  std::vector<uint32_t> own_pixels_; // empty while the picture lies elsewhere
  std::span<uint32_t> pixels_;
  // A picture that is painted late is still the same picture.
  mutable Ground ground_;
  mutable Tiles tiles_;
  mutable Due due_;
};

} // namespace kavo::host
