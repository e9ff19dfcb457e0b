// Strings taken apart and put together: replace, split, join, characters.
#include <algorithm>
#include <cstring>
#include <string_view>

#include "runtime/internal/array_slots.h"
#include "runtime/internal/nesting.h"
#include "runtime/internal/numbers_to_text.h"
#include "runtime/internal/string_builder.h"
#include "runtime/internal/string_list.h"
#include "runtime/internal/strings.h"
#include "runtime/text.h"

namespace {

// Looks for a needle again and again, by its first byte, which is the fastest way between the words
// of a sentence; once that has misled too often by the whole needle, in linear time.
class Search {
public:
  explicit Search(std::string_view needle) : needle_(needle) {}

  // Where the needle next begins in `text`; null when it does not.
  const char* in(std::string_view text) {
    const auto* at = text.data();
    const auto* end = at + text.size();
    for (; end - at >= std::ssize(needle_) && misleads_left_ > 0; ++at) {
      const auto room = static_cast<size_t>(end - at) - needle_.size() + 1;
      at = static_cast<const char*>(std::memchr(at, needle_.front(), room));
      if (at == nullptr)
        return at;
      const bool is_needle = is_at(at);
      misleads_left_ += is_needle ? 1 : -1; // a success pays for a mislead
      if (is_needle)
        return at;
    }
    return static_cast<const char*>(
        memmem(at, static_cast<size_t>(end - at), needle_.data(), needle_.size()));
  }

private:
  // Where its first byte is. Short needles need no call.
  bool is_at(const char* at) const {
    const auto length = needle_.size();
    return at[length - 1] == needle_.back() &&
           (length <= 2 || std::memcmp(at, needle_.data(), length) == 0);
  }

  std::string_view needle_;
  int misleads_left_ = 64;
};

// Calls `take` with each piece between the occurrences of a non-empty separator.
template<typename Take>
void for_each_piece(std::string_view text, std::string_view separator, Take take) {
  for (Search search(separator);;) {
    const auto* stop = search.in(text);
    if (stop == nullptr)
      return take(text);
    const auto length = static_cast<size_t>(stop - text.data());
    take(text.substr(0, length));
    text.remove_prefix(length + separator.size());
  }
}

size_t utf8_length_by_lead(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  if (byte < 0xC0)
    return 1;
  if (byte < 0xE0)
    return 2;
  return byte < 0xF0 ? 3 : 4;
}

void append_joined(qor::StringBuilder& out, const QorArray* array, std::string_view separator) {
  qor::NumberBuffer buffer;
  const auto slots = qor::slots_of(array);
  for (size_t i = 0; i < slots.size(); ++i) {
    if (i > 0)
      out.append(separator);
    switch (qor::reference_kind(array, static_cast<int64_t>(i))) {
    case QOR_TAG_STRING:
      out.append(qor::text_of(qor::reference_in<const char>(slots[i])));
      break;
    case QOR_TAG_ARRAY:
      append_joined(out, qor::reference_in<const QorArray>(slots[i]), separator);
      break;
    default:
      out.append(qor::write_general(buffer, slots[i]));
    }
  }
}

// Where both are equally long only a copy has to be written over.
char* new_overwritten(std::string_view text, std::string_view find, std::string_view with) {
  auto* result = qor::new_string(text);
  for_each_piece(text, find, [&](std::string_view piece) {
    if (piece.data() != text.data())
      std::copy_n(with.data(), with.size(), result + (piece.data() - text.data()) - with.size());
  });
  return result;
}

} // namespace

char* qor_replace(const char* s, const char* find, const char* with) {
  const auto text = qor::text_of(s);
  const auto separator = qor::text_of(find);
  if (separator.empty())
    return qor::new_string(text);
  const auto replacement = qor::text_of(with);
  if (replacement.size() == separator.size())
    return new_overwritten(text, separator, replacement);
  qor::StringBuilder result(text.size());
  bool is_first = true;
  for_each_piece(text, separator, [&](std::string_view piece) {
    if (!is_first)
      result.append(replacement);
    result.append(piece);
    is_first = false;
  });
  return result.release();
}

QorArray* qor_split(const char* s, const char* separator) {
  const auto text = qor::text_of(s);
  qor::StringList pieces;
  if (qor::text_of(separator).empty())
    pieces.add(text);
  else
    for_each_piece(text, separator, [&pieces](std::string_view piece) { pieces.add(piece); });
  return pieces.release();
}

QorArray* qor_str_to_chars(const char* s) {
  qor::StringList characters;
  for (auto rest = qor::text_of(s); !rest.empty();) {
    const auto length = std::min(utf8_length_by_lead(rest.front()), rest.size());
    characters.add(rest.substr(0, length));
    rest.remove_prefix(length);
  }
  return characters.release();
}

char* qor_join_arr(const QorArray* array, const char* separator) {
  constexpr size_t usual_length = 12; // a guess; the builder grows
  const auto between = qor::text_of(separator);
  qor::StringBuilder joined(qor::slots_of(array).size() * (usual_length + between.size()));
  qor::with_room_for(array, nullptr, [&] { append_joined(joined, array, between); });
  return joined.release();
}
