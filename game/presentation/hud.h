// What the playing screen says beside and over the board.
#pragma once

#include "game/routine.h"

namespace kavo {

// Title, best score, help, counters, preview and lean meter.
Out<> draw_hud();

// The tip-over and combo announcements; each counts its own timer down.
Out<> draw_banners();

// "GAME OVER" and the pause box.
Out<> draw_overlays();

} // namespace kavo
