// New content on its way into a file's place, and what a killed program leaves of it.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string_view>

#include "host/descriptor.h"

namespace kavo::host {

// Lies in the folder of the file that it is to replace; gone again unless it was renamed. It is
// locked for as long as it lives, by which others tell it from a leftover.
class TemporaryFile {
public:
  explicit TemporaryFile(const std::filesystem::path& folder);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // Each step leaves errno and returns false when it fails.
  bool is_open() const { return file_.is_open(); }
  // Without a mode the user's mask decides, except that the owner may always read and write.
  bool fill(std::string_view content, std::optional<mode_t> mode);
  // Through to the disk.
  bool flush();
  bool rename_to(const std::filesystem::path& destination);

private:
  Descriptor create(const std::filesystem::path& folder);

  std::filesystem::path path_;
  bool is_renamed_ = false;
  Descriptor file_;
};

// Removes the temporary files in the folder whose programs were killed; those of programs that
// are still at work stay. What cannot be read or removed stays too and is not an error.
void remove_leftovers(const std::filesystem::path& folder);

} // namespace kavo::host
