// Numbers and texts as bytes, the same on every machine: whole numbers in groups of seven bits, the
// lowest first; other numbers in eight bytes, the lowest first.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kavo::recording {

// What a file holds is no recording, or not one of this kind; the text says why.
class Damaged : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

class ByteWriter {
public:
  void put_byte(uint8_t byte) { bytes_ += static_cast<char>(byte); }
  void put_fixed(uint64_t value, int bytes);
  void put_whole(uint64_t value);
  void put_signed(int64_t value);
  void put_number(double value); // short for small whole ones
  void put_raw(double value);    // always eight bytes
  void put_text(std::string_view text);

  const std::string& bytes() const { return bytes_; }
  void clear() { bytes_.clear(); }

private:
  std::string bytes_;
};

// Every read throws Damaged when the bytes end before it does.
class ByteReader {
public:
  explicit ByteReader(std::string_view bytes) : left_(bytes) {}

  uint8_t byte();
  uint64_t fixed(int bytes);
  uint64_t whole();
  int64_t signed_whole();
  double number();
  double raw();
  std::string_view text();
  std::string_view span(uint64_t size);

  // A count of things that take at least so many bits each of what is left.
  size_t count(size_t bits_each);

  size_t left() const { return left_.size(); }

private:
  std::string_view left_;
};

} // namespace kavo::recording
