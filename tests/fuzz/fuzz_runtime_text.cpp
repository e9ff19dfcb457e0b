// Split, join and replace against the straightforward loop.
#include "tests/fuzz/input.h"

namespace {

std::string replaced(std::string text, const std::string& find, const std::string& with) {
  for (size_t at = 0; !find.empty() && (at = text.find(find, at)) != std::string::npos;
       at += with.size())
    text.replace(at, find.size(), with);
  return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  kavo::fuzz::Input input(data, size);
  const auto find = input.text(16);
  const auto with = input.text(16);
  const auto text = input.text();
  const kavo::fuzz::Text result(qor_replace(text.c_str(), find.c_str(), with.c_str()));
  kavo::fuzz::require(result.get() == replaced(text, find, with), "replace is the loop's");
  const kavo::fuzz::Array pieces(qor_split(text.c_str(), find.c_str()));
  const kavo::fuzz::Text joined(qor_join_arr(pieces.get(), find.c_str()));
  kavo::fuzz::require(joined.get() == text, "the pieces join to the text");
  const kavo::fuzz::Array characters(qor_str_to_chars(text.c_str()));
  const kavo::fuzz::Text whole(qor_join_arr(characters.get(), ""));
  kavo::fuzz::require(whole.get() == text, "the characters join to the text");
  const auto found = text.find(find);
  const auto expected = found == std::string::npos ? -1 : static_cast<int64_t>(found);
  kavo::fuzz::require(qor_instr(text.c_str(), find.c_str()) == expected, "instr is find");
  return 0;
}
