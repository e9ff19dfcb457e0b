#include "host/screen_commands.h"

#include "host/files.h"
#include "host/host.h"
#include "host/screen/coordinates.h"
#include "host/screen/png.h"

namespace kavo::host {

namespace {

constexpr int largest_side = 8192; // pixels
constexpr double smallest_scale = 0.1;
constexpr double largest_scale = 16;

int pixel(const Arguments& arguments, int index) {
  return to_pixel(arguments.number(index));
}

} // namespace

double open_screen(Host& host, const Arguments& arguments) {
  const ScreenRequest request = {
      static_cast<int>(arguments.whole_number(0, "width", 1, largest_side)),
      static_cast<int>(arguments.whole_number(1, "height", 1, largest_side)),
      std::string(arguments.text(2)),
      arguments.number_within(3, "scale", smallest_scale, largest_scale),
  };
  host.keyboard.release_all();
  host.open_screen(request);
  return 0;
}

double clear_picture(Host& host, const Arguments&) {
  host.screen.canvas().clear();
  return 0;
}

double set_drawing_colour(Host& host, const Arguments& arguments) {
  const uint32_t red = to_colour_component(arguments.number(0));
  const uint32_t green = to_colour_component(arguments.number(1));
  const uint32_t blue = to_colour_component(arguments.number(2));
  host.screen.canvas().set_colour(red << 16U | green << 8U | blue);
  return 0;
}

double draw_rectangle(Host& host, const Arguments& arguments) {
  Canvas& canvas = host.screen.canvas();
  const int x = pixel(arguments, 0), y = pixel(arguments, 1);
  const int width = pixel(arguments, 2), height = pixel(arguments, 3);
  if (arguments.number(4) != 0)
    canvas.fill_rectangle(x, y, width, height);
  else
    canvas.outline_rectangle(x, y, width, height);
  return 0;
}

double draw_line(Host& host, const Arguments& arguments) {
  host.screen.canvas().line(pixel(arguments, 0), pixel(arguments, 1), pixel(arguments, 2),
                            pixel(arguments, 3));
  return 0;
}

double draw_text(Host& host, const Arguments& arguments) {
  host.screen.canvas().text(pixel(arguments, 0), pixel(arguments, 1), arguments.text(2));
  return 0;
}

double show_picture(Host& host, const Arguments&) {
  host.show_picture();
  return 0;
}

double report_replay(Host& host, const Arguments& arguments) {
  using Standing = ReplayReport::Standing;
  constexpr int over = -1;
  const auto standing = static_cast<int>(
      arguments.whole_number(0, "standing", over, static_cast<int>(Standing::diverged)));
  if (standing == over) {
    host.end_replay();
    return ReplayControls::leave;
  }
  return host.take_replay_report({.standing = static_cast<Standing>(standing),
                                  .milliseconds = arguments.number(1),
                                  .length_ms = arguments.number(2),
                                  .frame = arguments.whole_number(3, "frame", 0, INT64_MAX)});
}

double key_state(Host& host, const Arguments& arguments) {
  return host.is_key_held(arguments.text(0)) ? 1 : 0;
}

double save_screenshot(Host& host, const Arguments& arguments) {
  write_whole_file(arguments.text(0), png_of(host.screen.canvas()));
  return 0;
}

double close_screen(Host& host, const Arguments&) {
  host.keyboard.release_all();
  host.close_screen();
  return 0;
}

} // namespace kavo::host
