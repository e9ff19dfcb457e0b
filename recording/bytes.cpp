#include "recording/bytes.h"

#include <bit>
#include <cmath>

namespace kavo::recording {

namespace {

constexpr double largest_short = 0x1p40;
constexpr uint64_t number_in_full = 0; // stands before eight bytes; short ones begin at 1

uint64_t folded(int64_t value) {
  return static_cast<uint64_t>(value) << 1U ^ static_cast<uint64_t>(value >> 63U);
}
int64_t unfolded(uint64_t value) {
  return static_cast<int64_t>(value >> 1U ^ (~(value & 1U) + 1));
}

// Minus zero is another number than zero.
bool is_short(double value) {
  return std::abs(value) < largest_short && std::trunc(value) == value &&
         std::bit_cast<uint64_t>(value) != std::bit_cast<uint64_t>(-0.0);
}

} // namespace

void ByteWriter::put_fixed(uint64_t value, int bytes) {
  for (; bytes > 0; --bytes, value >>= 8U)
    put_byte(static_cast<uint8_t>(value));
}

void ByteWriter::put_whole(uint64_t value) {
  for (; value >= 0x80U; value >>= 7U)
    put_byte(static_cast<uint8_t>(value | 0x80U));
  put_byte(static_cast<uint8_t>(value));
}

void ByteWriter::put_signed(int64_t value) {
  put_whole(folded(value));
}

void ByteWriter::put_number(double value) {
  if (is_short(value))
    return put_whole(folded(static_cast<int64_t>(value)) + 1);
  put_whole(number_in_full);
  put_raw(value);
}

void ByteWriter::put_raw(double value) {
  put_fixed(std::bit_cast<uint64_t>(value), 8);
}

void ByteWriter::put_text(std::string_view text) {
  put_whole(text.size());
  bytes_ += text;
}

uint8_t ByteReader::byte() {
  return static_cast<uint8_t>(span(1).front());
}

uint64_t ByteReader::fixed(int bytes) {
  uint64_t value = 0;
  for (int index = 0; index < bytes; ++index)
    value |= uint64_t{byte()} << (8U * static_cast<unsigned>(index));
  return value;
}

uint64_t ByteReader::whole() {
  uint64_t value = 0;
  for (unsigned shift = 0; shift < 64; shift += 7) {
    const uint8_t next = byte();
    value |= uint64_t{next & 0x7FU} << shift;
    if (next < 0x80U)
      return value;
  }
  throw Damaged("it holds a number of more than 64 bits");
}

int64_t ByteReader::signed_whole() {
  return unfolded(whole());
}

double ByteReader::number() {
  const uint64_t value = whole();
  return value == number_in_full ? raw() : static_cast<double>(unfolded(value - 1));
}

double ByteReader::raw() {
  return std::bit_cast<double>(fixed(8));
}

std::string_view ByteReader::text() {
  return span(whole());
}

std::string_view ByteReader::span(uint64_t size) {
  if (size > left_.size())
    throw Damaged("it ends too early");
  const std::string_view result = left_.substr(0, static_cast<size_t>(size));
  left_.remove_prefix(result.size());
  return result;
}

size_t ByteReader::count(size_t bits_each) {
  const uint64_t value = whole();
  if (value > uint64_t{left_.size()} * 8 / bits_each)
    throw Damaged("it counts more than it holds");
  return static_cast<size_t>(value);
}

} // namespace kavo::recording
