// The shapes of a picture, in the order in which they were drawn, to be painted later.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/screen/area.h"

namespace kavo::host {

struct Shape {
  enum class Kind : uint8_t { rectangle, line, text };

  Kind kind;
  uint32_t colour; // 0x00RRGGBB
  // What it may change of the picture; a rectangle changes all of it.
  Range columns;
  Range rows;
  // A line's ends; a text's top-left corner.
  int x1 = 0;
  int y1 = 0;
  int x2 = 0;
  int y2 = 0;
  std::string_view text = {}; // UTF-8
};

class DisplayList {
public:
  bool is_empty() const { return shapes_.empty(); }
  size_t size() const { return shapes_.size(); }

  // Keeps a copy of the text.
  void add(const Shape& shape) {
    const size_t letters = letters_.size();
    letters_ += shape.text;
    shapes_.push_back({shape, letters});
  }
  void clear() {
    shapes_.clear();
    letters_.clear();
  }

  // Calls it with every shape; the texts are valid meanwhile.
  template<typename Paint>
  void for_each(Paint paint) const {
    for (const Kept& kept : shapes_) {
      Shape shape = kept.shape;
      shape.text = std::string_view(letters_).substr(kept.letters, shape.text.size());
      paint(shape);
    }
  }

private:
  struct Kept {
    Shape shape; // of its text only the length counts
    size_t letters;
  };

  std::vector<Kept> shapes_;
  std::string letters_; // of all texts, one after the other
};

} // namespace kavo::host
