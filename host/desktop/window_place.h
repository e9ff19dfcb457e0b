// Where a window opens: where it was the last time, if that is still there, or in the middle.
#pragma once

#include <optional>
#include <span>

#include "host/screen/presenter.h"
#include "host/screen/scaler.h"

namespace kavo::host {

// The window's size at the start: the picture times `scale`, or as large as fits on a display
// with so much room beside panels, with its title bar.
Size start_size(Size picture, double scale, Size room);

// By which whole number the picture and `scale` can be multiplied so that the window leaves a tenth
// of the room, either way; at least 1.
int largest_comfortable_multiple(Size picture, double scale, Size room);

// The whole multiples of the picture that fit a display with so much room; at least 1.
int largest_multiple(Size picture, Size room);

// In the middle of the room, together with its title bar. SDL forgets that and, on a small display,
// would have the bar push the picture off the lower edge.
Area middle_of(const Area& room, Size window);

// Where a window that was there before goes: onto the display on which most of it lies, moved and
// made smaller only as far as that asks for. Without a corner, or where no display is any more, in
// the middle of the first. The displays are the rooms beside their panels, at least one.
Area placed_again(const WindowPlace& place, Size picture, std::span<const Area> displays);

} // namespace kavo::host
