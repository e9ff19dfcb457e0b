// Argument lists as a program may send them: any count, any tags, slots that are what their tags
// say.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tests/fuzz/input.h"

namespace kavo::fuzz {

// A text that the host may know as a byte string, and forgets with it.
class SentText {
public:
  SentText(std::string bytes, bool is_registered);
  ~SentText();
  SentText(const SentText&) = delete;
  SentText& operator=(const SentText&) = delete;

  const char* get() const { return bytes_.c_str(); }
  const std::string& bytes() const { return bytes_; }
  bool is_registered() const { return is_registered_; }

private:
  std::string bytes_;
  bool is_registered_;
};

// All that one input makes, so that slots stay valid until its end.
struct Values {
  std::vector<Array> arrays;
  std::vector<std::unique_ptr<SentText>> texts;
};

struct ArgumentList {
  std::vector<qor_slot> slots;
  std::vector<uint32_t> tags;
};

const char* any_text(Input& input, Values& values);
ArgumentList any_arguments(Input& input, Values& values);
// Values of these kinds.
ArgumentList arguments_of(const std::vector<uint32_t>& tags, Input& input, Values& values);

} // namespace kavo::fuzz
