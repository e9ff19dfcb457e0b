// The animation of a clear.
#pragma once

#include <cstdint>
#include <vector>

#include "game/routine.h"

namespace kavo {

// Shows these rows of the board flashing. Blocks for four frames.
Out<> flash_rows(const std::vector<int64_t>& rows);

} // namespace kavo
