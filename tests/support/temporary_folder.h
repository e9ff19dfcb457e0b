// Folders of a test's own, gone with all that is in them when the test ends.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>

namespace kavo::test {

class TemporaryFolder {
public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "kavo-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
      throw std::runtime_error("no temporary folder");
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::filesystem::path path() const { return path_; }
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

  size_t entry_count() const {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(path_),
                                             std::filesystem::directory_iterator()));
  }

private:
  std::filesystem::path path_;
};

// The current folder for as long as it lives.
class WorkingFolder {
public:
  WorkingFolder() : old_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder_.path());
  }
  ~WorkingFolder() {
    std::error_code ignored;
    std::filesystem::current_path(old_, ignored);
  }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
  std::filesystem::path old_;
  TemporaryFolder folder_;
};

} // namespace kavo::test
