// ALSA's library writes several lines of its own to standard error whenever a device cannot be
// opened. SDL reports the failure as well, and one line is enough.
#pragma once

namespace kavo::sound {

// Does nothing on a system where SDL does not use ALSA.
void silence_alsa();

} // namespace kavo::sound
