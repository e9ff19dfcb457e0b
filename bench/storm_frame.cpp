#include "bench/storm_frame.h"

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "host/screen/coordinates.h"

namespace kavo::bench {

namespace {

Shape::Kind kind_of(std::string_view name, const std::array<int, 5>& numbers) {
  if (name == "RECT")
    return numbers[4] != 0 ? Shape::Kind::filled : Shape::Kind::outlined;
  static const std::map<std::string_view, Shape::Kind> kinds = {
      {"CLS", Shape::Kind::clear},
      {"DRAWCOLOR", Shape::Kind::colour},
      {"LINE", Shape::Kind::line},
      {"TEXT", Shape::Kind::text},
  };
  return kinds.at(name);
}

// A line such as: TEXT f20 i30 "text"
Shape shape_in(const std::string& line) {
  std::istringstream words(line);
  std::string name;
  words >> name >> std::ws;
  std::array<int, 5> numbers = {};
  for (size_t i = 0; i < numbers.size() && !words.eof() && words.peek() != '"'; ++i) {
    std::string number;
    words >> number >> std::ws;
    numbers[i] = kavo::host::to_pixel(std::stod(number.substr(1)));
  }
  const size_t quote = line.find('"');
  std::string text =
      quote == std::string::npos ? "" : line.substr(quote + 1, line.size() - quote - 2);
  return {
      kind_of(name, numbers), {numbers[0], numbers[1], numbers[2], numbers[3]}, std::move(text)};
}

} // namespace

uint32_t Shape::colour() const {
  const auto part = [this](size_t index) {
    return kavo::host::to_colour_component(numbers[index]);
  };
  return part(0) << 16U | part(1) << 8U | part(2);
}

Shapes storm_frame() {
  Shapes shapes;
  std::ifstream lines(KAVO_STORM_FRAME);
  for (std::string line; std::getline(lines, line);)
    shapes.push_back(shape_in(line));
  if (shapes.empty())
    throw std::runtime_error("no shape in " KAVO_STORM_FRAME);
  return shapes;
}

void draw(kavo::host::Canvas& canvas, const Shape& shape) {
  const auto& n = shape.numbers;
  switch (shape.kind) {
  case Shape::Kind::clear:
    return canvas.clear();
  case Shape::Kind::colour:
    return canvas.set_colour(shape.colour());
  case Shape::Kind::filled:
    return canvas.fill_rectangle(n[0], n[1], n[2], n[3]);
  case Shape::Kind::outlined:
    return canvas.outline_rectangle(n[0], n[1], n[2], n[3]);
  case Shape::Kind::line:
    return canvas.line(n[0], n[1], n[2], n[3]);
  case Shape::Kind::text:
    return canvas.text(n[0], n[1], shape.text);
  }
}

void draw_anew(kavo::host::Canvas& canvas, const Shapes& shapes, int frame) {
  bool is_on_ground = false;
  for (const Shape& shape : shapes) {
    if (shape.kind == Shape::Kind::colour && is_on_ground)
      canvas.set_colour(shape.colour() ^ static_cast<uint32_t>(frame & 1));
    else
      draw(canvas, shape);
    is_on_ground =
        is_on_ground || (shape.kind == Shape::Kind::filled && shape.numbers[2] >= canvas.width() &&
                         shape.numbers[3] >= canvas.height());
  }
}

} // namespace kavo::bench
