// The kinds of piece and block. A number 1..12 that also selects the colour; 0 is an empty cell.
#pragma once

namespace kavo::kind {

inline constexpr int first_special = 8; // from here on a block carries a letter
inline constexpr int bomb = 8;
inline constexpr int cross_line = 9;
inline constexpr int coin = 10;
inline constexpr int heavy = 11; // fires nothing, stays on the board and pulls twice
inline constexpr int row_filler = 12;
inline constexpr int filling = 4; // what the row filler leaves behind

} // namespace kavo::kind
