// Directories, paths and the environment.
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>

#include "runtime/error.h"
#include "runtime/files.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/strings.h"

namespace {

std::optional<struct stat> status_of(const char* path) {
  struct stat status {};
  if (path == nullptr || stat(path, &status) != 0)
    return {};
  return status;
}

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return qor::text_of(value);
}

} // namespace

int qor_mkdir_native(const char* path) {
  constexpr mode_t permissions = 0755;
  return path == nullptr ? -1 : mkdir(path, permissions);
}

void qor_rmdir(const char* path) {
  if (path != nullptr)
    rmdir(path);
}

char* qor_pwd() {
  constexpr size_t longest_path = 4096;
  std::array<char, longest_path + 1> path{};
  const char* found = getcwd(path.data(), path.size());
  return qor::new_string(qor::text_of(found));
}

char* qor_cd(const char* path) {
  if (path != nullptr && *path != '\0' && chdir(path) != 0)
    qor_err_set("CD: cannot change directory", 1);
  return qor_pwd();
}

int qor_file_exists(const char* path) {
  return status_of(path) ? 1 : 0;
}

int qor_file_isdir(const char* path) {
  const auto status = status_of(path);
  return status && S_ISDIR(status->st_mode) ? 1 : 0;
}

int64_t qor_file_size(const char* path) {
  const auto status = status_of(path);
  return status && !S_ISDIR(status->st_mode) ? status->st_size : -1;
}

char* qor_mktemp(const char* prefix) {
  const bool has_folder = std::getenv("TMPDIR") != nullptr;
  const qor::String folder(has_folder ? environment("TMPDIR") : "/tmp");
  const qor::String name(qor::text_of(prefix).empty() ? "qor" : qor::text_of(prefix));
  auto path = folder + "/" + name + "XXXXXX";
  const int file = mkstemp(path.data());
  if (file < 0)
    return qor::new_string("");
  close(file);
  unlink(path.c_str());
  return qor::new_string(path);
}

char* qor_path_dirname(const char* path) {
  auto text = qor::text_of(path);
  const auto without_trailing_slashes = [](std::string_view part) {
    const auto last = part.find_last_not_of('/');
    return part.substr(0, last == std::string_view::npos ? 0 : last + 1);
  };
  const bool is_absolute = text.starts_with('/');
  text = without_trailing_slashes(text);
  const auto slash = text.rfind('/');
  const auto folder =
      without_trailing_slashes(text.substr(0, slash == std::string_view::npos ? 0 : slash));
  if (!folder.empty())
    return qor::new_string(folder);
  return qor::new_string(is_absolute ? "/" : ".");
}

char* qor_path_normalize(const char* path) {
  return qor::with_enough_memory([path] {
    auto normal = std::filesystem::path(qor::text_of(path)).lexically_normal().string();
    if (normal.size() > 1 && normal.ends_with('/'))
      normal.pop_back();
    return qor::new_string(normal.empty() ? "." : normal);
  });
}

char* qor_getenv(const char* name) {
  return qor::new_string(name == nullptr ? std::string_view() : environment(name));
}

void qor_setenv(const char* name, const char* value) {
  if (name == nullptr)
    return;
  if (value == nullptr)
    unsetenv(name);
  else
    setenv(name, value, 1);
}
