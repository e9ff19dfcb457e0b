#include "host/desktop/window_place.h"

#include <algorithm>
#include <cmath>

namespace kavo::host {

namespace {

constexpr int title_bar_height = 40; // what desktops put above a window, generously
constexpr int border_width = 8;

// Without what desktops put around a window.
Size inner(Size room) {
  return {room.width - border_width, room.height - title_bar_height};
}

int64_t common_area(const Area& one, const Area& other) {
  const int64_t width =
      std::min(one.x + one.width, other.x + other.width) - std::max(one.x, other.x);
  const int64_t height =
      std::min(one.y + one.height, other.y + other.height) - std::max(one.y, other.y);
  return std::max<int64_t>(width, 0) * std::max<int64_t>(height, 0);
}

Area moved_within(Area window, const Area& room) {
  window.x = std::clamp(window.x, room.x, std::max(room.x, room.x + room.width - window.width));
  window.y = std::clamp(window.y, room.y, std::max(room.y, room.y + room.height - window.height));
  return window;
}

} // namespace

Size start_size(Size picture, double scale, Size room) {
  const Size wanted = {static_cast<int>(std::lround(picture.width * scale)),
                       static_cast<int>(std::lround(picture.height * scale))};
  const Size bounds = inner(room);
  if (wanted.width <= bounds.width && wanted.height <= bounds.height)
    return wanted;
  return largest_within(picture, bounds);
}

int largest_comfortable_multiple(Size picture, double scale, Size room) {
  constexpr double share = 0.9;
  const double across = share * room.width / (picture.width * scale);
  const double down = share * room.height / (picture.height * scale);
  return std::max(1, static_cast<int>(std::min(across, down)));
}

int largest_multiple(Size picture, Size room) {
  const Size bounds = inner(room);
  return std::max(1, std::min(bounds.width / picture.width, bounds.height / picture.height));
}

Area middle_of(const Area& room, Size window) {
  return {room.x + (room.width - window.width) / 2,
          room.y + (room.height - title_bar_height - window.height) / 2, window.width,
          window.height};
}

Area placed_again(const WindowPlace& place, Size picture, std::span<const Area> displays) {
  const Area was = place.corner ? Area{place.corner->x, place.corner->y, place.width, place.height}
                                : Area{0, 0, 0, 0};
  const auto most = std::ranges::max_element(
      displays, {}, [&](const Area& display) { return common_area(was, display); });
  const Area& display = *most;
  const bool is_still_there = common_area(was, display) > 0;
  const Size bounds = inner({display.width, display.height});
  Size size = {place.width, place.height};
  if (size.width > bounds.width || size.height > bounds.height)
    size = largest_within(picture, bounds);
  return is_still_there ? moved_within({was.x, was.y, size.width, size.height}, display)
                        : middle_of(display, size);
}

} // namespace kavo::host
