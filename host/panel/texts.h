// What the host says to the player, in each of its languages.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/settings/settings.h"

namespace kavo::host {

enum class Text : uint8_t {
  waiting,
  how_to_go_on,
};

// In UTF-8. The language is English or German.
std::string_view text(Text text, Language language);

// English or German; for an automatic one as the player's locale ("de_DE.UTF-8") has it.
Language resolved(Language language, std::string_view locale);

} // namespace kavo::host
