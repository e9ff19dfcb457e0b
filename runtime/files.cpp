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

// Nothing here waits: opening a pipe would for its other end, and some devices for anything.
int open_at_once(const char* path, int flags) {
  constexpr mode_t readable_and_writable = 0666; // less the process's mask
  return path == nullptr
             ? -1
             : open(path, flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, readable_and_writable);
}

// Null for what is no regular file, too: a pipe may have no writer, and some devices never end.
File open_to_read(const char* path) {
  const int descriptor = open_at_once(path, O_RDONLY);
  if (descriptor < 0)
    return nullptr;
  struct stat status {};
  const bool is_regular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
  auto* file = is_regular ? fdopen(descriptor, "rb") : nullptr;
  if (file == nullptr)
    close(descriptor);
  return File(file);
}

// Null for a pipe that nobody reads, too. One that is read takes what it has room for.
File open_to_write(const char* path, bool is_to_append) {
  const int descriptor =
      open_at_once(path, O_WRONLY | O_CREAT | (is_to_append ? O_APPEND : O_TRUNC));
  if (descriptor < 0)
    return nullptr;
  auto* file = fdopen(descriptor, is_to_append ? "ab" : "wb");
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
  const auto file = open_to_write(path, append != 0);
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
