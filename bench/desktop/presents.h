// The window's own cost, apart from the game's.
#pragma once

#include <string>

namespace kavo::bench {

// Processor time of showing one finished picture in a window of `scale` times its size, in
// seconds: the median over many, without the X server's share.
double present_seconds(const std::string& display_name, int scale);

} // namespace kavo::bench
