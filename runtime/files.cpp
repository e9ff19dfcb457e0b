#include "runtime/files.h"

#include "runtime/internal/strings.h"

#include <array>
#include <cstdio>
#include <memory>
#include <string>

#include <sys/stat.h>

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File open_file(const char* path, const char* mode) {
  return File(path == nullptr ? nullptr : std::fopen(path, mode));
}

std::string read_whole(const char* path) {
  std::string contents;
  const auto file = open_file(path, "rb");
  if (file == nullptr)
    return contents;
  std::array<char, 65536> block; // NOLINT(*-member-init): fread fills what is read
  while (const auto count = std::fread(block.data(), 1, block.size(), file.get()))
    contents.append(block.data(), count);
  return contents;
}

} // namespace

char* qor_txtreader(const char* path) {
  return qor::new_string(read_whole(path));
}

int qor_mkdir_native(const char* path) {
  constexpr mode_t permissions = 0755;
  return path == nullptr ? -1 : mkdir(path, permissions);
}
