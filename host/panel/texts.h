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
  window_size,
  waits,
  records,
  language,
  automatic,
  defaults,
  yes,
  no,
  repeats,
  repeat_delay,
  repeat_rate,
  keys,
  controller,
  usual_keys,
  usual_controls,
  press_it,
  taken_from,
  escape_stays,
  no_key_for_this,
  keys_of_bindings,
  keys_of_listening,
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
inline constexpr int help_page_count = 6;
// Which of them show more than these lines.
inline constexpr int page_of_the_keys = 0; // its first lines are those of what is bound
inline constexpr int page_of_the_controller = 1;
inline constexpr int page_of_the_lean = 2;
inline constexpr int page_of_the_blocks = 3;
HelpPage help_page(int page, Language language);

// English or German; for an automatic one as the player's locale ("de_DE.UTF-8") has it.
Language resolved(Language language, std::string_view locale);

} // namespace kavo::host
