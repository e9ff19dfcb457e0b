#include "host/settings/settings_store.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <optional>
#include <system_error>
#include <utility>

#include "host/bounded_file.h"
#include "host/command_error.h"
#include "host/files.h"
#include "host/settings/entries.h"
#include "host/settings/own_folder.h"
#include "host/settings/settings_file.h"
#include "host/temporary_file.h"

namespace kavo::host {

namespace {

namespace fs = std::filesystem;

// Twenty times what the game writes.
constexpr size_t largest_file = 65'536; // bytes

// Throws CommandError with what is in the way.
std::string content_of(const fs::path& path) {
  BoundedFile file = read_bounded(path.string(), largest_file);
  if (file.is_whole())
    return std::move(file.content);
  throw CommandError("cannot read " + shown(path.string()) + ": " +
                     (file.error != 0 ? std::strerror(file.error)
                      : !file.is_file ? "it is no file"
                                      : "it is larger than settings can be"));
}

// Those entries of `after` that are not as in `before`, on top of what is usual.
Settings usual_with_changes(const Settings& before, const Settings& after) {
  Settings settings;
  for (const Entry* entry : all_entries()) {
    const std::string text = entry->text_in(after);
    if (text != entry->text_in(before))
      entry->read(text, settings);
  }
  return settings;
}

std::string_view value_of(const char* variable) {
  const char* value = std::getenv(variable);
  return value == nullptr ? "" : value;
}

// Nothing when the variable says nothing.
std::optional<bool> is_wanted(const char* variable) {
  const std::string_view value = value_of(variable);
  return value.empty() ? std::nullopt : std::optional(value != "0");
}

constexpr int largest_scale = 16;

struct Variable {
  const char* name;
  const char* section;
  const char* key;
};

constexpr Variable variables[] = {{"QORRT_MUSIC", "sound", "music"},
                                  {"QORRT_EFFECTS", "sound", "effects"},
                                  {"QORRT_LANG", "player", "language"}};

} // namespace

void SettingsStore::open(const fs::path& folder) {
  current_ = Settings();
  file_ = folder.empty() ? fs::path() : folder / "settings.ini";
  if (!file_.empty())
    read_file();
  read_environment();
  read_window_wish();
}

void SettingsStore::read_file() {
  is_first_start_ = is_missing(file_);
  if (is_first_start_)
    return keep(current_, current_);
  try {
    remove_leftovers(link_end(file_).parent_path());
    std::vector<std::string> complaints = read_settings(content_of(file_), current_);
    std::ranges::move(repair(current_.bindings, is_key_), std::back_inserter(complaints));
    for (const std::string& complaint : complaints)
      news_.push_back(file_.string() + ": " + complaint);
  } catch (const CommandError& error) {
    give_up(error.what());
  }
}

void SettingsStore::read_environment() {
  current_.is_calm = is_wanted("QORRT_CALM").value_or(current_.is_calm);
  current_.records = is_wanted("QORRT_RECORD").value_or(current_.records);
  for (const auto& [name, section, key] : variables) {
    const std::string_view value = value_of(name);
    if (value.empty())
      continue;
    try {
      find_entry(section, key)->read(value, current_);
    } catch (const BadValue& bad) {
      news_.push_back(std::string(name) + " must be " + bad.expectation + ", got " + shown(value));
    }
  }
}

void SettingsStore::read_window_wish() {
  window_ = {};
  window_.is_full_screen = is_wanted("QORRT_FULLSCREEN");
  const std::string_view text = value_of("QORRT_SCALE");
  if (text.empty())
    return;
  int scale = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), scale);
  if (error == std::errc() && end == text.data() + text.size() && scale >= 1 &&
      scale <= largest_scale)
    window_.scale = scale;
  else
    news_.push_back("QORRT_SCALE must be a whole number from 1 to " +
                    std::to_string(largest_scale) + ", got " + shown(text));
}

void SettingsStore::change(const Settings& wanted) {
  const Settings before = std::exchange(current_, wanted);
  if (!file_.empty() && before != wanted)
    keep(before, wanted);
}

void SettingsStore::keep(const Settings& before, const Settings& after) {
  try {
    if (is_missing(file_)) {
      make_own_folder(file_.parent_path());
      return write_whole_file(file_.string(), new_settings_text(usual_with_changes(before, after)));
    }
    write_whole_file(file_.string(), with_changes(content_of(file_), before, after));
  } catch (const CommandError& error) {
    give_up(error.what());
  }
}

void SettingsStore::give_up(const std::string& reason) {
  if (!std::exchange(has_given_up_, true))
    news_.push_back("settings are not kept: " + reason);
}

std::vector<std::string> SettingsStore::take_news() {
  return std::exchange(news_, {});
}

} // namespace kavo::host
