// The pages of help, with the game's meter and blocks as they look in play.
#pragma once

#include "host/screen/canvas.h"
#include "host/settings/settings.h"

namespace kavo::host {

// Its title at y in the middle of the picture, its lines from x and below. The keys are those of
// the settings.
void draw_help_page(Canvas& canvas, int page, const Settings& settings, Language language, int x,
                    int y);

} // namespace kavo::host
