// What the host draws above the game's picture, in the game's own look.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/screen/canvas.h"
#include "host/settings/settings.h"

// The game's own colours, 0x00RRGGBB.
namespace kavo::host::colour {
inline constexpr uint32_t ground = 0x0C1A2C; // behind its menus
inline constexpr uint32_t chosen_ground = 0x1C3048;
inline constexpr uint32_t frame = 0x4F6480;
inline constexpr uint32_t heading = 0xF5F5FF;
inline constexpr uint32_t chosen = 0xFAE678;
inline constexpr uint32_t plain = 0xC8D2DC;
inline constexpr uint32_t faint = 0xA0AFBE;
} // namespace kavo::host::colour

namespace kavo::host {

struct Box {
  int x;
  int y;
  int width;
  int height;

  bool contains(int column, int row) const {
    return column >= x && column < x + width && row >= y && row < y + height;
  }
};

// Makes the whole picture a quarter as bright.
void dim(Canvas& canvas);

// A filled area of the panel's with a frame.
void draw_box(Canvas& canvas, const Box& box);

// How many characters a text has, each of which takes a cell of the font.
int length_of(std::string_view utf8);

void draw_text(Canvas& canvas, int x, int y, uint32_t colour, std::string_view utf8);
void draw_centred(Canvas& canvas, int y, uint32_t colour, std::string_view utf8);

// The sign in the picture's upper right corner that opens the panel when it is clicked.
Box corner_sign(const Canvas& canvas);
void draw_corner_sign(Canvas& canvas);

// A line at the foot of the picture.
void draw_foot_line(Canvas& canvas, std::string_view utf8);

// The dimmed picture of a game that waits for its player, in English or German.
void draw_waiting(Canvas& canvas, Language language);

} // namespace kavo::host
