// A new empty folder that is the current one for as long as this lives.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace kavo::test {

class TemporaryFolder {
public:
  TemporaryFolder() : old_(std::filesystem::current_path()) {
    std::string pattern = std::filesystem::temp_directory_path() / "kavo-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr)
      throw std::runtime_error("no temporary folder");
    path_ = pattern;
    std::filesystem::current_path(path_);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::current_path(old_, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

private:
  std::filesystem::path old_;
  std::filesystem::path path_;
};

} // namespace kavo::test
