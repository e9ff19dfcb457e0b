// Whole files as texts.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace kavo::test {

inline void write_file(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

// "" when there is no such file.
inline std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace kavo::test
