#include "recording/format.h"

#include <algorithm>
#include <utility>

#include "recording/compression.h"

namespace kavo::recording {

namespace {

constexpr size_t head_size = 10; // of a block, without its checksum
constexpr size_t most_arguments = 64;
constexpr size_t most_scores = 64;

enum Method : uint8_t { as_it_is = 0, by_zlib = 1 };

struct Block {
  BlockKind kind;
  std::string content;
};

std::string block_of(BlockKind kind, std::string_view content, bool is_compressed) {
  const std::string small = is_compressed ? compressed(content) : "";
  const bool is_smaller = !small.empty() && small.size() < content.size();
  const std::string_view stored = is_smaller ? std::string_view(small) : content;
  ByteWriter out;
  out.put_byte(static_cast<uint8_t>(kind));
  out.put_byte(is_smaller ? by_zlib : as_it_is);
  out.put_fixed(stored.size(), 4);
  out.put_fixed(content.size(), 4);
  const std::string head = out.bytes();
  out.put_fixed(checksum(head + std::string(stored)), 4);
  return out.bytes() + std::string(stored);
}

Block next_block(ByteReader& in) {
  const std::string_view head = in.span(head_size);
  ByteReader fields(head);
  const uint8_t kind = fields.byte();
  const uint8_t method = fields.byte();
  const uint64_t stored_size = fields.fixed(4);
  const uint64_t size = fields.fixed(4);
  const auto expected = static_cast<uint32_t>(in.fixed(4));
  if (size > largest_block || stored_size > largest_block || method > by_zlib)
    throw Damaged("a block says of itself what no block can be");
  const std::string_view stored = in.span(stored_size);
  if (checksum(std::string(head) + std::string(stored)) != expected)
    throw Damaged("a block's checksum is wrong");
  if (method == as_it_is && size != stored_size)
    throw Damaged("a block has two sizes");
  return {static_cast<BlockKind>(kind), method == as_it_is
                                            ? std::string(stored)
                                            : decompressed(stored, static_cast<size_t>(size))};
}

void put_progress(ByteWriter& out, const Progress& progress) {
  out.put_signed(progress.frames);
  out.put_number(progress.milliseconds);
  for (const int64_t value : {progress.score, progress.rows, progress.tips, progress.level})
    out.put_signed(value);
}

Progress progress_in(ByteReader& in) {
  Progress progress;
  progress.frames = in.signed_whole();
  progress.milliseconds = in.number();
  for (int64_t* value : {&progress.score, &progress.rows, &progress.tips, &progress.level})
    *value = in.signed_whole();
  return progress;
}

std::string content_of(const Header& header) {
  ByteWriter out;
  out.put_whole(format_version);
  out.put_text(header.version);
  out.put_signed(header.began);
  out.put_whole(header.arguments.size());
  for (const std::string& argument : header.arguments)
    out.put_text(argument);
  out.put_whole(header.table.size());
  for (const ScoreEntry& entry : header.table) {
    out.put_text(entry.name);
    out.put_number(entry.score);
  }
  out.put_text(header.state);
  return out.bytes();
}

size_t count_of(ByteReader& in, size_t most) {
  const size_t count = in.count(8);
  if (count > most)
    throw Damaged("its header counts more than any");
  return count;
}

Header header_in(std::string_view content) {
  ByteReader in(content);
  const uint64_t version = in.whole();
  if (version != format_version)
    throw Damaged("it is a recording of format " + std::to_string(version) +
                  "; this program reads format " + std::to_string(format_version));
  Header header;
  header.version = in.text();
  header.began = in.signed_whole();
  header.arguments.resize(count_of(in, most_arguments));
  for (std::string& argument : header.arguments)
    argument = in.text();
  header.table.resize(count_of(in, most_scores));
  for (ScoreEntry& entry : header.table) {
    entry.name = in.text();
    entry.score = in.number();
  }
  header.state = in.text();
  return header;
}

// Takes up one block behind the header.
void take(const Block& block, Recording& recording) {
  if (recording.is_complete)
    throw Damaged("something follows its end");
  ByteReader in(block.content);
  switch (block.kind) {
  case BlockKind::frames:
    recording.last = progress_in(in);
    if (recording.frames.size() + in.left() > largest_recording)
      throw Damaged("it is longer than any game");
    recording.frames += in.span(in.left());
    return;
  case BlockKind::end:
    recording.last = progress_in(in);
    recording.is_complete = true;
    return;
  case BlockKind::header:
    break;
  }
  throw Damaged("it has a block of an unknown kind");
}

} // namespace

std::string_view mark() {
  return "\x89KAVO\r\n\x1A";
}

std::string header_block(const Header& header) {
  return block_of(BlockKind::header, content_of(header), false);
}

std::string frames_block(const Progress& progress, std::string_view frames) {
  ByteWriter out;
  put_progress(out, progress);
  return block_of(BlockKind::frames, out.bytes() + std::string(frames), false);
}

std::string end_block(const Progress& progress) {
  ByteWriter out;
  put_progress(out, progress);
  return block_of(BlockKind::end, out.bytes(), false);
}

Recording parsed(std::string_view file) {
  if (!file.starts_with(mark()))
    throw Damaged("it is no recording of a game");
  ByteReader in(file.substr(mark().size()));
  const Block first = next_block(in);
  if (first.kind != BlockKind::header)
    throw Damaged("it does not begin with a header");
  Recording recording{.header = header_in(first.content)};
  try {
    while (in.left() > 0)
      take(next_block(in), recording);
  } catch (const Damaged& damage) {
    recording.damage = damage.what();
  }
  return recording;
}

std::string packed(const Recording& recording, bool is_compressed) {
  constexpr size_t part = largest_block / 2;
  std::string file(mark());
  file += block_of(BlockKind::header, content_of(recording.header), is_compressed);
  ByteWriter progress;
  put_progress(progress, recording.last);
  const std::string_view frames = recording.frames;
  for (size_t start = 0; start < frames.size(); start += part)
    file += block_of(BlockKind::frames, progress.bytes() + std::string(frames.substr(start, part)),
                     is_compressed);
  if (recording.is_complete)
    file += block_of(BlockKind::end, progress.bytes(), is_compressed);
  return file;
}

} // namespace kavo::recording
