#include "recording/kept_games.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "host/command_error.h"
#include "host/descriptor.h"
#include "host/files.h"
#include "host/temporary_file.h"

namespace kavo::recording {

namespace {

namespace fs = std::filesystem;
using host::Descriptor;
using host::shown;

constexpr const char* extension = ".kavo";

std::string failure_to(const char* action, const fs::path& path) {
  const int error = errno;
  return std::string("cannot ") + action + " " + shown(path.string()) + ": " + std::strerror(error);
}

[[noreturn]] void fail(const char* action, const fs::path& path) {
  throw NotKept{failure_to(action, path)};
}

// A digit for each 0, and all else as it is; a second game of the same second has a number behind.
bool has_name_of_a_game(std::string_view name) {
  constexpr std::string_view pattern = "0000-00-00T00-00-00Z";
  if (name.size() < pattern.size() || !name.ends_with(extension))
    return false;
  const auto is_digit = [](char character) { return character >= '0' && character <= '9'; };
  for (size_t index = 0; index < pattern.size(); ++index)
    if (pattern[index] == '0' ? !is_digit(name[index]) : name[index] != pattern[index])
      return false;
  name.remove_prefix(pattern.size());
  name.remove_suffix(std::string_view(extension).size());
  return name.empty() || (name.front() == '-' && std::ranges::all_of(name.substr(1), is_digit));
}

bool is_kept_game(const fs::directory_entry& entry) {
  std::error_code error;
  return entry.is_regular_file(error) && has_name_of_a_game(entry.path().filename().string());
}

// Each folder on the way is the player's alone, as the desktop's rules for such folders ask.
void make_folders(const fs::path& folder) {
  std::error_code error;
  if (fs::is_directory(folder, error))
    return;
  if (folder.has_parent_path() && folder.parent_path() != folder)
    make_folders(folder.parent_path());
  if (::mkdir(folder.c_str(), S_IRWXU) == 0)
    ::chmod(folder.c_str(), S_IRWXU); // whatever the mask takes
  else if (errno != EEXIST)
    fail("make", folder);
}

// What cannot be removed stays: it is no reason not to keep another one.
void make_room(const fs::path& folder) {
  const auto games = kept_games(folder);
  for (size_t index = most_kept_games - 1; index < games.size(); ++index) {
    std::error_code error;
    fs::remove(games[index], error);
  }
}

std::string name_for(int64_t began) {
  const auto time = static_cast<std::time_t>(began);
  std::tm parts = {};
  gmtime_r(&time, &parts);
  char name[64];
  const size_t length = std::strftime(name, sizeof name, "%Y-%m-%dT%H-%M-%SZ", &parts);
  return {name, length};
}

fs::path numbered(const fs::path& folder, const std::string& name, int number) {
  return folder / (name + (number == 1 ? "" : "-" + std::to_string(number)) + extension);
}

// The save of a score, which matters more, needs two.
bool are_descriptors_left(const Descriptor& file) {
  const Descriptor first(::dup(file.value()));
  const Descriptor second(::dup(file.value()));
  return second.is_open();
}

// Closed, with errno, when it is there already, cannot be made, or takes what a save needs.
Descriptor make_file(const fs::path& path) {
  constexpr mode_t for_its_owner = S_IRUSR | S_IWUSR;
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, for_its_owner));
  if (!file.is_open() || (are_descriptors_left(file) && host::make_usable_for_owner(file)))
    return file;
  const int error = errno;
  file.close();
  ::unlink(path.c_str());
  errno = error;
  return file;
}

class KeptGame final : public Sink {
public:
  KeptGame(fs::path path, Descriptor file) : path_(std::move(path)), file_(std::move(file)) {}

  void append(const std::string& bytes) override {
    if (!host::write_all(file_, bytes))
      fail("write", path_);
  }
  // A game that cannot be compressed is kept as it is.
  void finish() override {
    file_.close();
    try {
      host::write_whole_file(path_.string(), packed(read_recording(path_)));
    } catch (const std::runtime_error&) {
      return;
    }
  }

private:
  fs::path path_;
  Descriptor file_;
};

std::string content_of(const Descriptor& file, const fs::path& path) {
  struct stat status = {};
  if (!file.is_open() || ::fstat(file.value(), &status) != 0)
    throw std::runtime_error(failure_to("read", path));
  if (!S_ISREG(status.st_mode))
    throw Damaged(shown(path.string()) + ": it is no file");
  std::string content;
  std::string part(size_t{1} << 16U, '\0');
  while (content.size() <= largest_file) {
    const ssize_t count = ::read(file.value(), part.data(), part.size());
    if (count < 0 && errno == EINTR)
      continue;
    if (count < 0)
      throw std::runtime_error(failure_to("read", path));
    if (count == 0)
      return content;
    content.append(part, 0, static_cast<size_t>(count));
  }
  throw Damaged(shown(path.string()) + ": it is larger than a recording can be");
}

} // namespace

std::vector<fs::path> kept_games(const fs::path& folder) {
  std::vector<fs::path> games;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error))
    if (is_kept_game(*entry))
      games.push_back(entry->path());
  std::ranges::sort(games, std::greater());
  return games;
}

std::unique_ptr<Sink> keep_game(const fs::path& folder, const Header& header) {
  constexpr int attempts = 100;
  make_folders(folder);
  host::remove_leftovers(folder);
  make_room(folder);
  const std::string name = name_for(header.began);
  fs::path path;
  for (int number = 1; number <= attempts; ++number) {
    path = numbered(folder, name, number);
    if (Descriptor file = make_file(path); file.is_open())
      return std::make_unique<KeptGame>(path, std::move(file));
    if (errno != EEXIST)
      break;
  }
  fail("make", path);
}

Recording read_recording(const fs::path& file) {
  const Descriptor opened(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  try {
    return parsed(content_of(opened, file));
  } catch (const Damaged& damage) {
    const std::string reason = damage.what();
    throw Damaged(reason.starts_with('"') ? reason : shown(file.string()) + ": " + reason);
  }
}

} // namespace kavo::recording
