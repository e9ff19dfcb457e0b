#include "host/binary_strings.h"

#include <unordered_map>

namespace kavo::host {

namespace {

using Lengths = std::unordered_map<const char*, int64_t>;

// Made with the first string and never destroyed: a program's own static strings may still be
// forgotten while it exits.
Lengths* lengths = nullptr;

} // namespace

void register_binary_string(const char* string, int64_t length) {
  if (string == nullptr)
    return;
  if (lengths == nullptr)
    lengths = new Lengths;
  if (length < 0)
    lengths->erase(string);
  else
    lengths->insert_or_assign(string, length);
}

int64_t binary_string_length(const char* string) {
  if (lengths == nullptr)
    return -1;
  const auto found = lengths->find(string);
  return found == lengths->end() ? -1 : found->second;
}

} // namespace kavo::host
