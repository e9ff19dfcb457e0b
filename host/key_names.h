// Keys by the names that the platform gives them: "Left", "Space", "A", …
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace kavo::host {

class Platform;

class KeyNames {
public:
  explicit KeyNames(Platform& platform) : platform_(platform) {}

  // What the key stands for. Throws CommandError when no key is called exactly that.
  int code_of(std::string_view name);

private:
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };

  Platform& platform_;
  // Names that were asked for: a program asks for the same few sixty times a second.
  std::unordered_map<std::string, int, Hash, std::equal_to<>> known_;
};

} // namespace kavo::host
