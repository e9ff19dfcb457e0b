// The finished picture at another size: every pixel of the result is the average of what it
// covers of the original. That leaves whole multiples crisp, gives pixels between them soft edges
// of at most one pixel, and loses no thin line when the picture shrinks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/screen/area.h"
#include "host/screen/canvas.h"

namespace kavo::host {

// The largest size with the picture's proportions that the bounds allow, at least 1 × 1.
Size largest_within(Size picture, Size bounds);

// The middle of the window, as large as the picture fits into it undistorted.
Area letterbox(Size picture, Size window);

// 32-bit 0x00RRGGBB pixels that belong to somebody else.
struct PixelBuffer {
  uint32_t* pixels;
  Size size;
  ptrdiff_t pitch; // pixels from one row to the next
};

class Scaler {
public:
  // Fills the whole target: the picture in its letterbox, black around it.
  void draw(const Canvas& canvas, const PixelBuffer& target);

  // Draws a part of the picture anew where the target holds what was drawn before, by this scaler
  // and in this size, and only such parts have changed since. Gives where in the target.
  Area draw_part(const Canvas& canvas, const Area& part, const PixelBuffer& target);

private:
  // For each pixel of the result along one axis: the original's pixels that it covers and how
  // much of each, in 1/256; the weights of one pixel add up to 256.
  struct Axis {
    struct Cover {
      int first;
      int count;
      size_t weights;
    };
    int from = 0;
    int to = 0;
    std::vector<Cover> covers;
    std::vector<uint32_t> weights;

    void prepare(int original_size, int result_size);
  };

  Area draw_resampled(const Canvas& canvas, const Area& part, const Area& area,
                      const PixelBuffer& target);
  void scale_row(const uint32_t* source, Range columns, uint32_t* result) const;
  void mix_rows(const Axis::Cover& cover, Range columns, uint32_t* result) const;

  Axis columns_;
  Axis rows_;
  std::vector<uint32_t> narrowed_; // all rows of the original at the result's width
};

} // namespace kavo::host
