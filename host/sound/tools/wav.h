// Writing sound as a WAV file that any player and measuring tool reads.
#pragma once

#include <string>
#include <vector>

namespace kavo::sound {

// 32-bit floats, left and right in turn. Throws std::system_error when the file cannot be
// written.
void write_wav(const std::string& path, const std::vector<float>& interleaved, int rate);

} // namespace kavo::sound
