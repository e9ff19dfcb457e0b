// Text files, read and written in one piece.
#include "runtime/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "runtime/encoding.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/strings.h"

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File open_file(const char* path, const char* mode) {
  return File(path == nullptr ? nullptr : std::fopen(path, mode));
}

// Null for what is no regular file, too: opening a pipe would wait for a writer, and some devices
// never end.
File open_to_read(const char* path) {
  const int descriptor =
      path == nullptr ? -1 : open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (descriptor < 0)
    return nullptr;
  struct stat status {};
  const bool is_regular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  auto* file = is_regular ? fdopen(descriptor, "rb") : nullptr;
  if (file == nullptr)
    close(descriptor);
  return File(file);
}

std::string read_whole(const char* path) {
  std::string contents;
  const auto file = open_to_read(path);
  if (file == nullptr)
    return contents;
  std::array<char, 65536> block; // fread fills what is read
  while (const auto count = std::fread(block.data(), 1, block.size(), file.get()))
    contents.append(block.data(), count);
  return contents;
}

void write_whole(const char* path, std::string_view bytes, int64_t append) {
  const auto file = open_file(path, append != 0 ? "ab" : "wb");
  if (file != nullptr && !bytes.empty())
    std::fwrite(bytes.data(), 1, bytes.size(), file.get());
}

std::string encoded(const char* text, const char* encoding, bool is_behind_text) {
  constexpr std::string_view mark = "\xFF\xFE";
  const auto utf8 = qor::bytes_of(text);
  bool is_encoded = false;
  auto bytes = qor_enc::encode_from_utf8(utf8, qor::text_of(encoding), &is_encoded);
  if (!is_encoded)
    return std::string(utf8);
  if (is_behind_text && bytes.starts_with(mark))
    bytes.erase(0, mark.size());
  return bytes;
}

} // namespace

char* qor_txtreader(const char* path) {
  return qor_txtreader_enc(path, "");
}

char* qor_txtreader_enc(const char* path, const char* encoding) {
  return qor::with_enough_memory([=] {
    const auto bytes = read_whole(path);
    bool is_decoded = false;
    const auto text = qor_enc::decode_to_utf8(bytes, qor::text_of(encoding), &is_decoded);
    return qor::new_whole_string(is_decoded ? text : bytes);
  });
}

void qor_txtwriter(const char* path, const char* text) {
  qor_txtwriter3(path, text, 0);
}

void qor_txtwriter_append(const char* path, const char* text) {
  qor_txtwriter3(path, text, 1);
}

void qor_txtwriter3(const char* path, const char* text, int64_t append) {
  write_whole(path, qor::bytes_of(text), append);
}

void qor_txtwriter_enc(const char* path, const char* text, int64_t append, const char* encoding) {
  const bool is_behind_text = append != 0 && qor_file_size(path) > 0;
  qor::with_enough_memory(
      [=] { write_whole(path, encoded(text, encoding, is_behind_text), append); });
}
