// Build-time tool: copies the pixels of a PNG file into a C++ header.
//   icongen PNG HEADER
#include <png.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Picture {
  uint32_t width;
  uint32_t height;
  std::vector<uint8_t> rgba;
};

Picture read(const char* path) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&image, path) == 0)
    throw std::runtime_error(std::string(path) + ": " + image.message);
  image.format = PNG_FORMAT_RGBA;
  Picture picture = {image.width, image.height, std::vector<uint8_t>(PNG_IMAGE_SIZE(image))};
  if (png_image_finish_read(&image, nullptr, picture.rgba.data(), 0, nullptr) == 0)
    throw std::runtime_error(std::string(path) + ": " + image.message);
  return picture;
}

void write(const Picture& picture, std::ostream& out) {
  out << "// Made by icongen.\n#pragma once\n\n#include <cstdint>\n\nnamespace kavo::host {\n\n"
      << "constexpr int icon_width = " << picture.width << ";\n"
      << "constexpr int icon_height = " << picture.height << ";\n"
      << "constexpr uint8_t icon_rgba[] = {";
  for (size_t i = 0; i < picture.rgba.size(); ++i)
    out << (i % 24 == 0 ? "\n    " : " ") << int{picture.rgba[i]} << ',';
  out << "\n};\n\n} // namespace kavo::host\n";
}

} // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 3)
      throw std::runtime_error("usage: icongen PNG HEADER");
    std::ofstream out(argv[2]);
    write(read(argv[1]), out);
    if (!out.flush())
      throw std::runtime_error(std::string("cannot write ") + argv[2]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "icongen: %s\n", error.what());
    return 1;
  }
}
