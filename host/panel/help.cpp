#include "host/panel/help.h"

#include <algorithm>
#include <array>

#include "host/panel/drawing.h"
#include "host/panel/key_texts.h"
#include "host/panel/texts.h"

namespace kavo::host {

namespace {

constexpr int line_height = 22;
constexpr int block_height = 64;

struct Block {
  uint32_t colour; // as the game has it
  std::string_view letter;
};
constexpr std::array<Block, 5> blocks = {
    {{0xF06E3C, "B"}, {0x78E6F5, "L"}, {0xF5D750, "$"}, {0x6E788C, "A"}, {0xF5C8FA, "*"}}};

uint32_t brighter(uint32_t colour, int by) {
  uint32_t result = 0;
  for (const unsigned shift : {16U, 8U, 0U}) {
    const int component = static_cast<int>(colour >> shift & 0xFFU) + by;
    result |= static_cast<uint32_t>(std::clamp(component, 0, 255)) << shift;
  }
  return result;
}

void fill(Canvas& canvas, uint32_t colour, const Box& box) {
  canvas.set_colour(colour);
  canvas.fill_rectangle(box.x, box.y, box.width, box.height);
}

// Bevelled, as a cell of the well.
void draw_block(Canvas& canvas, int x, int y, const Block& block) {
  constexpr int light = 55;
  constexpr int shade = -60;
  constexpr uint32_t ink = 0x19191E;
  fill(canvas, block.colour, {x + 1, y + 1, 34, 34});
  fill(canvas, brighter(block.colour, light), {x + 1, y + 1, 34, 3});
  fill(canvas, brighter(block.colour, light), {x + 1, y + 1, 3, 34});
  fill(canvas, brighter(block.colour, shade), {x + 1, y + 32, 34, 3});
  fill(canvas, brighter(block.colour, shade), {x + 32, y + 1, 3, 34});
  draw_text(canvas, x + 13, y + 9, ink, block.letter);
}

// A board that is about to tip to the right.
void draw_meter(Canvas& canvas, int y) {
  const int middle = canvas.width() / 2;
  constexpr int half = 130;
  constexpr int mark = 80;
  constexpr int pull = 60;
  fill(canvas, 0x323E4E, {middle - half, y, 2 * half, 12});
  for (const int side : {-mark, mark})
    fill(canvas, 0x964646, {middle + side, y - 4, 3, 20});
  fill(canvas, 0xF0E178, {middle + pull - 3, y - 6, 6, 24});
}

// Returns where the next line would be.
int draw_line(Canvas& canvas, std::string_view line, int x, int y) {
  const bool is_heading = line.starts_with('!');
  if (is_heading)
    line.remove_prefix(1);
  draw_text(canvas, x, y, is_heading ? colour::chosen : colour::plain, line);
  return y + line_height;
}

void draw_blocks(Canvas& canvas, std::span<const std::string_view> lines, int x, int y) {
  for (size_t index = 0; index < blocks.size(); ++index, y += block_height) {
    draw_block(canvas, x, y, blocks[index]);
    draw_text(canvas, x + 52, y + 10, colour::plain, lines[index]);
  }
}

} // namespace

void draw_help_page(Canvas& canvas, int page, const Settings& settings, Language language, int x,
                    int y) {
  constexpr int below_the_title = 46;
  constexpr int room_of_the_meter = 60;
  const HelpPage content = help_page(page, language);
  draw_centred(canvas, y, colour::heading, content.title);
  y += below_the_title;
  if (page == page_of_the_blocks)
    return draw_blocks(canvas, content.lines, x, y);
  if (page == page_of_the_lean) {
    draw_meter(canvas, y + 10);
    y += room_of_the_meter;
  }
  if (page == page_of_the_keys || page == page_of_the_controller) {
    const Device device = page == page_of_the_keys ? Device::keyboard : Device::controller;
    for (const std::string& line : lines_of_help(settings.bindings, device, language))
      y = draw_line(canvas, line, x, y);
  }
  for (const std::string_view line : content.lines)
    y = draw_line(canvas, line, x, y);
}

} // namespace kavo::host
