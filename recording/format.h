// A recording's file: a mark of its kind, then blocks, each with its length and a checksum, so that
// a damaged end loses only that. The first block says what was played and how the game stood; the
// following ones hold frames; a last one says how the game ended, unless nobody was there to see.
//
//   mark    89 4B 41 56 4F 0D 0A 1A
//   block   kind (1), method (1: 0 as it is, 1 zlib), size in the file (4), size (4), checksum of
//   the
//           ten bytes before and of the content in the file (4), content; numbers lowest byte first
//
// While a game is played its blocks are written as they are, one each half second; afterwards the
// file is written anew, compressed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "recording/bytes.h"

namespace kavo::recording {

inline constexpr uint64_t format_version = 1;

// Far more than hours of play.
inline constexpr size_t largest_file = size_t{64} << 20U;      // bytes
inline constexpr size_t largest_block = size_t{1} << 20U;      // bytes, as recorded
inline constexpr size_t largest_recording = size_t{96} << 20U; // bytes, all blocks together

// How far a game has come.
struct Progress {
  int64_t frames = 0;
  double milliseconds = 0; // by the game's clock
  int64_t score = 0;
  int64_t rows = 0; // cleared
  int64_t tips = 0;
  int64_t level = 1;

  bool operator==(const Progress&) const = default;
};

struct ScoreEntry {
  std::string name;
  double score = 0;
};

struct Header {
  std::string version;                     // of the game
  int64_t began = 0;                       // seconds since 1970
  std::vector<std::string> arguments = {}; // of the program, without its name
  std::vector<ScoreEntry> table = {};      // of scores, best first, for who reads the file
  std::string state = {};                  // of the game: state_image.h
};

struct Recording {
  Header header;
  std::string frames = {};  // as FrameCodec writes them
  Progress last = {};       // that is known
  bool is_complete = false; // the game ended, and `last` is its end
  std::string damage = {};  // what is wrong with the end; empty when nothing is
};

std::string_view mark();

enum class BlockKind : uint8_t { header = 1, frames = 2, end = 3 };

// Blocks as bytes for the file, uncompressed.
std::string header_block(const Header& header);
std::string frames_block(const Progress& progress, std::string_view frames);
std::string end_block(const Progress& progress);

// Throws Damaged when the bytes are no recording or one of another format, or its header is
// damaged. What is wrong behind the header ends the recording there, and is told.
Recording parsed(std::string_view file);

// The whole file, compressed where that can be done.
std::string packed(const Recording& recording, bool is_compressed = true);

} // namespace kavo::recording
