#include "host/panel/texts.h"

#include <array>

namespace kavo::host {

namespace {

struct Row {
  Text text;
  std::string_view english;
  std::string_view german;
};

constexpr std::array rows = {
    Row{Text::waiting, "The game waits", "Das Spiel wartet"},
    Row{Text::how_to_go_on, "A key or a click goes on.",
        "Eine Taste oder ein Klick setzt es fort."},
};

constexpr bool are_in_order() {
  for (size_t index = 0; index < rows.size(); ++index)
    if (rows[index].text != static_cast<Text>(index))
      return false;
  return true;
}
static_assert(are_in_order(), "a text is found by its number");

} // namespace

std::string_view text(Text text, Language language) {
  const Row& row = rows[static_cast<size_t>(text)];
  return language == Language::german ? row.german : row.english;
}

Language resolved(Language language, std::string_view locale) {
  if (language != Language::automatic)
    return language;
  const bool is_german = locale == "de" || locale.starts_with("de_") || locale.starts_with("de.") ||
                         locale.starts_with("de-") || locale.starts_with("de@");
  return is_german ? Language::german : Language::english;
}

} // namespace kavo::host
