// What the host tells the program beyond input, as events that only this program knows.
#pragma once

#include <cstdint>
#include <filesystem>

namespace kavo::recording {

// RECORDINGS folder, is_wanted: where games are kept, and whether the player wants that.
struct HostNews {
  std::filesystem::path folder = {}; // empty: the host knows none
  bool is_recording_wanted = false;
  bool has_changed = false; // since somebody has looked
};

HostNews& host_news();

// The dispatcher that hears of it, and passes on all else to the game.
void dispatch_event(const char* name, const int64_t* values, const uint32_t* tags, int64_t count);

} // namespace kavo::recording
