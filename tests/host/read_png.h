// A PNG file as pixels, read with libpng.
#pragma once

#include <png.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace kavo::test {

struct PngPicture {
  int width;
  int height;
  std::vector<uint32_t> pixels; // 0x00RRGGBB
};

inline PngPicture read_png(const std::string& bytes) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0)
    throw std::runtime_error(image.message);
  image.format = PNG_FORMAT_RGB;
  std::vector<uint8_t> rgb(PNG_IMAGE_SIZE(image));
  if (png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr) == 0)
    throw std::runtime_error(image.message);
  PngPicture picture = {static_cast<int>(image.width), static_cast<int>(image.height), {}};
  for (size_t i = 0; i < rgb.size(); i += 3)
    picture.pixels.push_back(uint32_t{rgb[i]} << 16U | uint32_t{rgb[i + 1]} << 8U | rgb[i + 2]);
  return picture;
}

} // namespace kavo::test
