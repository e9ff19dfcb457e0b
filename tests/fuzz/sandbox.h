// The folder that a fuzzed program may write to. It holds a few things to trip over: a folder, a
// file, links to both, a link to nowhere and one to itself.
#pragma once

#include <filesystem>
#include <string>

namespace kavo::fuzz {

// Makes a fresh folder the current one for as long as it lives.
class Sandbox {
public:
  Sandbox();
  ~Sandbox();
  Sandbox(const Sandbox&) = delete;
  Sandbox& operator=(const Sandbox&) = delete;

private:
  int outside_; // the folder to go back to
  std::filesystem::path path_;
};

// The path as it is when it stays below the current folder; an absolute one, or one that climbs,
// is bent until it does.
std::string contained(const std::string& path);

} // namespace kavo::fuzz
