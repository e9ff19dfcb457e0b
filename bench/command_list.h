// A recorded list of drawing commands, ready to be sent.
#pragma once

#include "runtime/value.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace bench {

struct RecordedCommand {
  std::string name;
  std::vector<qor_slot> slots;
  std::vector<uint32_t> tags;

  double number(size_t index) const {
    return tags[index] == QOR_TAG_INT64 ? static_cast<double>(slots[index].i64) : slots[index].f64;
  }
  int whole(size_t index) const { return static_cast<int>(number(index)); }
};

struct CommandList {
  std::vector<RecordedCommand> commands;
  std::deque<std::string> texts; // which the slots point to
};

// Lines such as "RECT 0 0 660 800 1"; # begins a remark. Throws std::runtime_error when the file
// cannot be read.
CommandList read_commands(const std::string& path);

} // namespace bench
