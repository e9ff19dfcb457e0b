#include "tests/fuzz/sandbox.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "tests/fuzz/input.h"

namespace kavo::fuzz {

namespace {

namespace fs = std::filesystem;

// In memory where there is such a place: every file that is written is flushed to the disk.
fs::path place_for_folders() {
  const fs::path memory = "/dev/shm";
  return access(memory.c_str(), W_OK) == 0 ? memory : fs::temp_directory_path();
}

} // namespace

Sandbox::Sandbox() : outside_(open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  std::string name = place_for_folders() / "kavo-fuzz-XXXXXX";
  require(outside_ >= 0 && mkdtemp(name.data()) != nullptr, "a folder can be made");
  path_ = name;
  fs::current_path(path_);
  fs::create_directory("folder");
  std::ofstream("file") << "old";
  fs::create_symlink("folder", "to folder");
  fs::create_symlink("file", "to file");
  fs::create_symlink("nowhere", "to nowhere");
  fs::create_symlink("to itself", "to itself");
}

Sandbox::~Sandbox() {
  require(fchdir(outside_) == 0, "the way back is open");
  close(outside_);
  fs::remove_all(path_);
}

std::string contained(const std::string& path) {
  std::string inside = path;
  inside.erase(0, inside.find_first_not_of('/'));
  for (size_t at = 0; (at = inside.find("..", at)) != std::string::npos; ++at)
    inside[at] = '_';
  return inside;
}

} // namespace kavo::fuzz
