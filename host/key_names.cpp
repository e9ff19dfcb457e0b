#include "host/key_names.h"

#include <optional>
#include <utility>

#include "host/command.h"
#include "host/platform.h"

namespace kavo::host {

int KeyNames::code_of(std::string_view name) {
  const auto known = known_.find(name);
  if (known != known_.end())
    return known->second;
  std::string key(name);
  const std::optional<int> code = platform_.code_of_key(key);
  if (!code)
    throw CommandError("argument 1: unknown key " + shown(name));
  return known_.emplace(std::move(key), *code).first->second;
}

} // namespace kavo::host
