#include "host/screen/png.h"

#include <png.h>

#include "host/command.h"

namespace kavo::host {

namespace {

std::string rgb_bytes(const Canvas& canvas) {
  std::string bytes;
  bytes.reserve(canvas.pixels().size() * 3);
  for (const uint32_t pixel : canvas.pixels()) {
    bytes += static_cast<char>(pixel >> 16U);
    bytes += static_cast<char>(pixel >> 8U);
    bytes += static_cast<char>(pixel);
  }
  return bytes;
}

} // namespace

std::string png_of(const Canvas& canvas) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(canvas.width());
  image.height = static_cast<png_uint_32>(canvas.height());
  image.format = PNG_FORMAT_RGB;
  const std::string rgb = rgb_bytes(canvas);
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  std::string file(size, '\0');
  if (png_image_write_to_memory(&image, file.data(), &size, 0, rgb.data(), 0, nullptr) == 0)
    throw CommandError(std::string("cannot make the picture: ") + image.message);
  file.resize(size);
  return file;
}

} // namespace kavo::host
