#include "recording/answers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

namespace kavo::recording {

namespace {

// Of a frame.
constexpr unsigned keys_as_before = 1;
constexpr unsigned odd_keys = 2; // neither 0 nor 1
constexpr unsigned has_chance = 4;
constexpr unsigned has_folders = 8;
constexpr unsigned readings_as_before = 16;
constexpr unsigned unfinished = 32;
constexpr unsigned readings_as_expected = 64; // as many as before, and each of them

constexpr size_t most_expected_readings = 1000; // that take no bytes
constexpr size_t most_keys = 1000;              // that a frame can ask for
constexpr double ns_per_ms = 1e6;
constexpr double longest_ms = 0x1p53 / ns_per_ms;
constexpr double chances = 0x1p53; // answers are multiples of its reciprocal
constexpr int chance_bytes = 7;
constexpr size_t bits_of_a_chance = 56;
constexpr uint64_t odd_chance = (uint64_t{1} << 54U) - 1;

// What the C++ library makes of a whole number of nanoseconds.
double milliseconds_of(int64_t nanoseconds) {
  return static_cast<double>(nanoseconds) / ns_per_ms;
}

std::optional<int64_t> nanoseconds_of(double milliseconds) {
  if (!(std::abs(milliseconds) < longest_ms) || (milliseconds == 0 && std::signbit(milliseconds)))
    return std::nullopt;
  const auto nanoseconds =
      static_cast<int64_t>(milliseconds * ns_per_ms + (milliseconds < 0 ? -0.5 : 0.5));
  if (milliseconds_of(nanoseconds) != milliseconds)
    return std::nullopt;
  return nanoseconds;
}

// Sums that wrap: a foreign file may ask for any.
int64_t sum(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
int64_t difference(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
}

void write_chance(double value, ByteWriter& out) {
  const double scaled = value * chances;
  if (scaled >= 0 && scaled < chances && std::trunc(scaled) == scaled && !std::signbit(value))
    return out.put_fixed(static_cast<uint64_t>(scaled), chance_bytes);
  out.put_fixed(odd_chance, chance_bytes);
  out.put_raw(value);
}

double read_chance(ByteReader& in) {
  const uint64_t whole = in.fixed(chance_bytes);
  const double value = whole == odd_chance ? in.raw() : static_cast<double>(whole) / chances;
  if (!(value >= 0 && value < 1))
    throw Damaged("it holds a chance that no host gives");
  return value;
}

void write_folders(const std::vector<std::vector<std::string>>& folders, ByteWriter& out) {
  out.put_whole(folders.size());
  for (const auto& names : folders) {
    out.put_whole(names.size());
    for (const std::string& name : names)
      out.put_text(name);
  }
}

void read_folders(ByteReader& in, std::vector<std::vector<std::string>>& folders) {
  folders.resize(in.count(8));
  for (auto& names : folders) {
    names.resize(in.count(8));
    for (std::string& name : names)
      name = in.text();
  }
}

bool are_odd(const std::vector<double>& keys) {
  return std::ranges::any_of(keys, [](double key) { return key != 0 && key != 1; });
}

void write_keys(const std::vector<double>& keys, ByteWriter& out) {
  out.put_whole(keys.size());
  if (are_odd(keys)) {
    for (const double key : keys)
      out.put_raw(key);
    return;
  }
  for (size_t first = 0; first < keys.size(); first += 8) {
    unsigned bits = 0;
    for (size_t index = first; index < std::min(first + 8, keys.size()); ++index)
      bits |= (keys[index] != 0 ? 1U : 0U) << (index - first);
    out.put_byte(static_cast<uint8_t>(bits));
  }
}

void read_keys(ByteReader& in, bool is_odd, std::vector<double>& keys) {
  keys.resize(in.count(is_odd ? 64 : 1));
  if (keys.size() > most_keys)
    throw Damaged("a frame asks for too many keys");
  unsigned bits = 0;
  for (size_t index = 0; index < keys.size(); ++index) {
    if (!is_odd && index % 8 == 0)
      bits = in.byte();
    keys[index] = is_odd ? in.raw() : static_cast<double>(bits >> index % 8 & 1U);
  }
}

uint8_t flags_of(const Frame& frame, const std::vector<double>& last_keys, size_t last_readings) {
  const bool is_odd = are_odd(frame.keys);
  unsigned flags = 0;
  flags |= !is_odd && frame.keys == last_keys ? keys_as_before : 0U;
  flags |= is_odd ? odd_keys : 0U;
  flags |= frame.chance.empty() ? 0U : has_chance;
  flags |= frame.folders.empty() ? 0U : has_folders;
  flags |= frame.clock.size() == last_readings ? readings_as_before : 0U;
  flags |= frame.is_whole ? 0U : unfinished;
  return static_cast<uint8_t>(flags);
}

} // namespace

void Frame::clear() {
  keys.clear();
  chance.clear();
  clock.clear();
  folders.clear();
}

void FrameCodec::write(const Frame& frame, ByteWriter& out) {
  const unsigned expected = are_as_expected(frame.clock) ? readings_as_expected : 0U;
  const auto flags = static_cast<uint8_t>(flags_of(frame, last_keys_, last_readings_) | expected);
  out.put_byte(flags);
  if ((flags & keys_as_before) == 0)
    write_keys(frame.keys, out);
  if ((flags & has_chance) != 0) {
    out.put_whole(frame.chance.size());
    for (const double value : frame.chance)
      write_chance(value, out);
  }
  if ((flags & has_folders) != 0)
    write_folders(frame.folders, out);
  if ((flags & readings_as_before) == 0)
    out.put_whole(frame.clock.size());
  for (size_t index = 0; index < frame.clock.size(); ++index)
    if (expected == 0)
      write_reading(index, frame.clock[index], out);
    else
      expected_reading(index);
  out.put_fixed(frame.fingerprint, is_checkpoint() ? 8 : 1);
  last_keys_ = frame.keys;
  last_readings_ = frame.clock.size();
  ++frames_;
}

void FrameCodec::read(ByteReader& in, Frame& frame) {
  frame.clear();
  const uint8_t flags = in.byte();
  if ((flags & keys_as_before) != 0)
    frame.keys = last_keys_;
  else
    read_keys(in, (flags & odd_keys) != 0, frame.keys);
  if ((flags & has_chance) != 0) {
    frame.chance.resize(in.count(bits_of_a_chance));
    for (double& value : frame.chance)
      value = read_chance(in);
  }
  if ((flags & has_folders) != 0)
    read_folders(in, frame.folders);
  const bool is_expected = (flags & readings_as_expected) != 0;
  const size_t readings =
      (flags & readings_as_before) != 0 || is_expected ? last_readings_ : in.count(8);
  if (readings >
      (is_expected ? std::min(most_expected_readings, last_intervals_.size()) : in.left()))
    throw Damaged("it ends too early");
  frame.clock.resize(readings);
  for (size_t index = 0; index < readings; ++index)
    frame.clock[index] = is_expected ? expected_reading(index) : read_reading(index, in);
  frame.fingerprint = in.fixed(is_checkpoint() ? 8 : 1);
  frame.known_fingerprint = is_checkpoint() ? ~uint64_t{0} : 0xFFU;
  frame.is_whole = (flags & unfinished) == 0;
  last_keys_ = frame.keys;
  last_readings_ = readings;
  ++frames_;
}

// 0 stands before a reading as it is; other values are one more than what is meant.
void FrameCodec::write_reading(size_t index, double reading, ByteWriter& out) {
  const auto nanoseconds = nanoseconds_of(reading);
  if (!nanoseconds) {
    out.put_whole(0);
    return out.put_raw(reading);
  }
  const int64_t expected = sum(last_nanoseconds_, usual_interval(index));
  const int64_t surprise = difference(*nanoseconds, expected);
  out.put_signed(surprise >= 0 ? sum(surprise, 1) : surprise);
  learn(index, *nanoseconds);
}

double FrameCodec::read_reading(size_t index, ByteReader& in) {
  const int64_t value = in.signed_whole();
  if (value == 0)
    return in.raw();
  const int64_t expected = sum(last_nanoseconds_, usual_interval(index));
  const int64_t nanoseconds = sum(expected, value > 0 ? value - 1 : value);
  learn(index, nanoseconds);
  return milliseconds_of(nanoseconds);
}

// Those of a clock that moves only when the game sleeps are; the system's never.
bool FrameCodec::are_as_expected(const std::vector<double>& readings) const {
  if (readings.size() != last_readings_ || readings.size() > last_intervals_.size() ||
      readings.size() > most_expected_readings)
    return false;
  int64_t expected = last_nanoseconds_;
  for (size_t index = 0; index < readings.size(); ++index) {
    expected = sum(expected, last_intervals_[index]);
    if (nanoseconds_of(readings[index]) != expected)
      return false;
  }
  return true;
}

// For a reading of the frame before.
double FrameCodec::expected_reading(size_t index) {
  last_nanoseconds_ = sum(last_nanoseconds_, last_intervals_[index]);
  return milliseconds_of(last_nanoseconds_);
}

int64_t& FrameCodec::usual_interval(size_t index) {
  if (index >= usual_intervals_.size())
    usual_intervals_.resize(index + 1);
  return usual_intervals_[index];
}

// A mean that an interrupted frame moves no farther than any other; a new place is believed at
// once.
void FrameCodec::learn(size_t index, int64_t nanoseconds) {
  constexpr int64_t share = 8;
  int64_t& usual = usual_interval(index);
  const int64_t interval = difference(nanoseconds, last_nanoseconds_);
  last_nanoseconds_ = nanoseconds;
  const int64_t farthest = 512 + std::abs(std::max(usual, -INT64_MAX)) / 32;
  last_intervals_.resize(std::max(last_intervals_.size(), index + 1));
  last_intervals_[index] = interval;
  if (frames_ == 0 && index == 0)
    return; // nothing was read before
  if (usual == 0)
    usual = interval;
  else
    usual = sum(usual, std::clamp(difference(interval, usual), -farthest, farthest) / share);
}

} // namespace kavo::recording
