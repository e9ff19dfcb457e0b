// PulseAudio's client library, which SDL and ALSA load, looks for the player's sound server in
// XDG_RUNTIME_DIR. Without that it makes folders of its own in the home and the temporary folder,
// even where there is no server, and leaves them behind.
#pragma once

namespace kavo::sound {

// Call it before SDL looks for a sound device, while no other thread reads the environment. Does
// nothing where a server may be found or started through such folders. What cannot be prevented is
// no error.
void keep_sound_client_out_of_home();

} // namespace kavo::sound
