// What came from outside in one frame of the game, in the order of the questions of each kind, and
// how frames become bytes.
//
// Most keys stay as they were, and the clock is read in the same places frame by frame: written are
// the changes. Times are whole nanoseconds wherever the reading is one (the system's are), and then
// what each differs from its expectation: the reading before it and a mean of the intervals that
// were seen at that place; nothing when all are as in the frame before. A reading that is no whole
// number of nanoseconds is written as it is.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "recording/bytes.h"

namespace kavo::recording {

struct Frame {
  std::vector<double> keys = {};
  std::vector<double> chance = {};
  std::vector<double> clock = {}; // milliseconds
  std::vector<std::vector<std::string>> folders = {};
  uint64_t fingerprint = 0; // of all commands since the recording began, this frame's included
  // Which bits of it are known: eight in each frame, all in each 64th.
  uint64_t known_fingerprint = ~uint64_t{0};
  bool is_whole = true; // false: the program ended within this frame

  void clear();
};

// Writes frames one after the other, or reads them; one object for one direction.
class FrameCodec {
public:
  void write(const Frame& frame, ByteWriter& out);
  // Throws Damaged.
  void read(ByteReader& in, Frame& frame);

private:
  void write_reading(size_t index, double reading, ByteWriter& out);
  double read_reading(size_t index, ByteReader& in);
  bool are_as_expected(const std::vector<double>& readings) const;
  double expected_reading(size_t index);
  int64_t& usual_interval(size_t index);
  void learn(size_t index, int64_t nanoseconds);
  bool is_checkpoint() const { return frames_ % 64 == 0; }

  uint64_t frames_ = 0;
  std::vector<double> last_keys_;
  size_t last_readings_ = 0;
  int64_t last_nanoseconds_ = 0;
  std::vector<int64_t> last_intervals_;  // of each reading in a frame to the one before
  std::vector<int64_t> usual_intervals_; // of each reading in a frame to the one before
};

} // namespace kavo::recording
