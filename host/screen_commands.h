// The screen and the keyboard.
#pragma once

#include "host/command.h"

namespace kavo::host {

// SCREEN width, height, title, scale
double open_screen(Host& host, const Arguments& arguments);

// CLS
double clear_picture(Host& host, const Arguments& arguments);

// DRAWCOLOR red, green, blue
double set_drawing_colour(Host& host, const Arguments& arguments);

// RECT x, y, width, height, fill
double draw_rectangle(Host& host, const Arguments& arguments);

// LINE x1, y1, x2, y2
double draw_line(Host& host, const Arguments& arguments);

// TEXT x, y, text
double draw_text(Host& host, const Arguments& arguments);

// SCREENFLIP
double show_picture(Host& host, const Arguments& arguments);

// REPLAY standing, milliseconds, length, frame
double report_replay(Host& host, const Arguments& arguments);

// GFX.KEYSTATE key name: 1 while held, 0 otherwise
double key_state(Host& host, const Arguments& arguments);

// GFX.SAVE_SCREENSHOT path
double save_screenshot(Host& host, const Arguments& arguments);

// GFX.CLOSE
double close_screen(Host& host, const Arguments& arguments);

} // namespace kavo::host
