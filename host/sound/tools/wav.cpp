#include "host/sound/tools/wav.h"

#include <bit>
#include <cerrno>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <system_error>

namespace kavo::sound {

namespace {

constexpr uint32_t channels = 2;
constexpr uint32_t sample_bytes = 4;
constexpr uint16_t float_format = 3;
constexpr uint32_t header_bytes = 50; // of the file, behind its own size field, without samples

// WAV is little-endian whatever the machine is.
void put(std::string& bytes, uint32_t value, int width) {
  for (int i = 0; i < width; ++i)
    bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

std::string header(uint32_t data_bytes, uint32_t rate) {
  std::string bytes = "RIFF";
  put(bytes, header_bytes + data_bytes, 4);
  bytes += "WAVEfmt ";
  put(bytes, 18, 4);
  put(bytes, float_format, 2);
  put(bytes, channels, 2);
  put(bytes, rate, 4);
  put(bytes, rate * channels * sample_bytes, 4);
  put(bytes, channels * sample_bytes, 2);
  put(bytes, 8 * sample_bytes, 2);
  put(bytes, 0, 2);
  bytes += "fact";
  put(bytes, 4, 4);
  put(bytes, data_bytes / (channels * sample_bytes), 4);
  bytes += "data";
  put(bytes, data_bytes, 4);
  return bytes;
}

} // namespace

void write_wav(const std::string& path, const std::vector<float>& interleaved, int rate) {
  std::string bytes =
      header(static_cast<uint32_t>(interleaved.size() * sample_bytes), static_cast<uint32_t>(rate));
  for (const float sample : interleaved)
    put(bytes, std::bit_cast<uint32_t>(sample), sample_bytes);
  errno = 0;
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file)
    throw std::system_error(errno, std::generic_category(), path);
}

} // namespace kavo::sound
