// What the host says to the player, in each of its languages.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "host/settings/settings.h"

namespace kavo::host {

enum class Text : uint8_t {
  waiting,
  how_to_go_on,
  first_start,
  help,
  settings,
  back_to_the_game,
  music,
  effects,
  calm,
  full_screen,
  waits,
  language,
  automatic,
  defaults,
  yes,
  no,
  keys_of_a_menu,
  keys_of_settings,
  keys_of_help,
};

// In UTF-8. The language is English or German, here and below.
std::string_view text(Text text, Language language);

// A line in the colour of a heading begins with an exclamation mark.
struct HelpPage {
  std::string_view title;
  std::span<const std::string_view> lines;
};
inline constexpr int help_page_count = 5;
// Which of them show more than lines.
inline constexpr int page_of_the_lean = 1;
inline constexpr int page_of_the_blocks = 2;
HelpPage help_page(int page, Language language);

// English or German; for an automatic one as the player's locale ("de_DE.UTF-8") has it.
Language resolved(Language language, std::string_view locale);

} // namespace kavo::host
