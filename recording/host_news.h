// What the host has told the program: where games are kept, and whether the player wants that.
#pragma once

#include <filesystem>

namespace kavo::recording {

struct HostNews {
  std::filesystem::path folder = {}; // empty: the host knows none
  bool is_recording_wanted = false;
  bool has_changed = false; // since somebody has looked
};

HostNews& host_news();

} // namespace kavo::recording
