#include "host/settings/window_state.h"

#include <ini.h>

#include <charconv>
#include <map>
#include <string>
#include <string_view>

#include "host/bounded_file.h"
#include "host/command_error.h"
#include "host/files.h"
#include "host/settings/own_folder.h"
#include "host/temporary_file.h"

namespace kavo::host {

namespace {

namespace fs = std::filesystem;

constexpr size_t largest_file = 4096;  // bytes
constexpr int largest_number = 32'767; // of pixels, as window systems have them

using Values = std::map<std::string, std::string, std::less<>>;

fs::path file_in(const fs::path& folder) {
  return folder / "window.ini";
}

int take(void* values, const char*, const char* key, const char* value) {
  (*static_cast<Values*>(values))[key] = value;
  return 1;
}

std::optional<int> number(const Values& values, std::string_view key, int least) {
  const auto found = values.find(key);
  if (found == values.end())
    return std::nullopt;
  int value = 0;
  const std::string& text = found->second;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool is_number = error == std::errc() && end == text.data() + text.size();
  return is_number && value >= least && value <= largest_number ? std::optional(value)
                                                                : std::nullopt;
}

std::string text_of(const WindowPlace& place) {
  std::string text = "; Where the window of KAVO was. The game writes this when it is left.\n"
                     "[window]\n";
  const auto add = [&text](const char* key, const std::string& value) {
    text += std::string(key) + " = " + value + "\n";
  };
  if (place.corner) {
    add("x", std::to_string(place.corner->x));
    add("y", std::to_string(place.corner->y));
  }
  add("width", std::to_string(place.width));
  add("height", std::to_string(place.height));
  add("full_screen", place.is_full_screen ? "yes" : "no");
  return text;
}

} // namespace

std::optional<WindowPlace> read_window_state(const fs::path& folder) {
  const BoundedFile file = read_bounded(file_in(folder), largest_file);
  Values values;
  if (!file.is_whole() || ini_parse_string(file.content.c_str(), take, &values) != 0)
    return std::nullopt;
  const auto width = number(values, "width", 1);
  const auto height = number(values, "height", 1);
  if (!width || !height)
    return std::nullopt;
  WindowPlace place = {.width = *width, .height = *height};
  const auto x = number(values, "x", -largest_number);
  const auto y = number(values, "y", -largest_number);
  if (x && y)
    place.corner = {*x, *y};
  place.is_full_screen = values.contains("full_screen") && values["full_screen"] == "yes";
  return place;
}

void write_window_state(const fs::path& folder, const WindowPlace& place) {
  if (read_window_state(folder) == place)
    return;
  try {
    make_own_folder(folder);
    remove_leftovers(folder);
    write_whole_file(file_in(folder).string(), text_of(place));
  } catch (const CommandError&) {
    // The next start opens it elsewhere.
  }
}

} // namespace kavo::host
