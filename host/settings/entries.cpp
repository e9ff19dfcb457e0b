#include "host/settings/entries.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <utility>
#include <vector>

#include "host/buttons.h"

namespace kavo::host {

namespace {

constexpr size_t longest_name = 64; // bytes

class NumberEntry final : public Entry {
public:
  NumberEntry(std::string section, std::string key, std::string comment, int Settings::*member,
              Bounds bounds)
      : Entry(std::move(section), std::move(key), std::move(comment)), member_(member),
        bounds_(bounds) {}

  std::string text_in(const Settings& settings) const override {
    return std::to_string(settings.*member_);
  }
  void read(std::string_view text, Settings& settings) const override {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < bounds_.least ||
        value > bounds_.most)
      throw BadValue{"a whole number from " + std::to_string(bounds_.least) + " to " +
                     std::to_string(bounds_.most)};
    settings.*member_ = value;
  }

private:
  int Settings::*member_;
  Bounds bounds_;
};

class SwitchEntry final : public Entry {
public:
  SwitchEntry(std::string section, std::string key, std::string comment, bool Settings::*member)
      : Entry(std::move(section), std::move(key), std::move(comment)), member_(member) {}

  std::string text_in(const Settings& settings) const override {
    return settings.*member_ ? "yes" : "no";
  }
  void read(std::string_view text, Settings& settings) const override {
    if (text != "yes" && text != "no")
      throw BadValue{"yes or no"};
    settings.*member_ = text == "yes";
  }

private:
  bool Settings::*member_;
};

class LanguageEntry final : public Entry {
public:
  LanguageEntry()
      : Entry("player", "language", "The panel's language: auto (the session's), en or de.") {}

  std::string text_in(const Settings& settings) const override {
    return std::string(words[static_cast<size_t>(settings.language)]);
  }
  void read(std::string_view text, Settings& settings) const override {
    const auto* const found = std::ranges::find(words, text);
    if (found == words.end())
      throw BadValue{"auto, en or de"};
    settings.language = static_cast<Language>(found - words.begin());
  }

private:
  static constexpr std::array<std::string_view, 3> words = {"auto", "en", "de"};
};

// Whether there is a key of that name only the platform knows.
class KeyEntry final : public Entry {
public:
  KeyEntry(Action action, size_t slot, std::string comment)
      : Entry("keys", key_of(action, slot), std::move(comment)), action_(action), slot_(slot) {}

  static std::string key_of(Action action, size_t slot) {
    return std::string(name_of(action)) + (slot == 0 ? "" : ".2");
  }
  std::string text_in(const Settings& settings) const override {
    return quoted(settings.choices[static_cast<size_t>(action_)].keys[slot_]);
  }
  void read(std::string_view text, Settings& settings) const override {
    const std::string_view name = unquoted(text);
    if (name.size() > longest_name)
      throw BadValue{"the name of a key"};
    settings.choices[static_cast<size_t>(action_)].keys[slot_] = name;
  }

private:
  Action action_;
  size_t slot_;
};

class ButtonEntry final : public Entry {
public:
  ButtonEntry(Action action, size_t slot, std::string comment)
      : Entry("controller", KeyEntry::key_of(action, slot), std::move(comment)), action_(action),
        slot_(slot) {}

  std::string text_in(const Settings& settings) const override {
    return quoted(settings.choices[static_cast<size_t>(action_)].buttons[slot_]);
  }
  void read(std::string_view text, Settings& settings) const override {
    const std::string_view name = unquoted(text);
    if (!name.empty() && !button_named(name))
      throw BadValue{"a button of a controller, such as \"south\""};
    settings.choices[static_cast<size_t>(action_)].buttons[slot_] = name;
  }

private:
  Action action_;
  size_t slot_;
};

using Entries = std::vector<std::unique_ptr<const Entry>>;

template<typename Kind>
void add_choices(Entries& entries, const std::string& comment) {
  for (size_t action = 0; action < action_count; ++action)
    for (size_t slot = 0; slot < 2; ++slot)
      entries.push_back(std::make_unique<Kind>(static_cast<Action>(action), slot,
                                               action + slot == 0 ? comment : ""));
}

Entries make_entries() {
  Entries entries;
  entries.push_back(std::make_unique<NumberEntry>("sound", "music",
                                                  "How loud the music is, in percent: 0 to 100.",
                                                  &Settings::music, volume_bounds));
  entries.push_back(std::make_unique<NumberEntry>("sound", "effects", "How loud the effects are.",
                                                  &Settings::effects, volume_bounds));
  entries.push_back(std::make_unique<SwitchEntry>(
      "picture", "calm", "Fades whatever flashes: yes or no.", &Settings::is_calm));
  entries.push_back(std::make_unique<LanguageEntry>());
  entries.push_back(std::make_unique<SwitchEntry>(
      "player", "waits", "The game stands still while another window has the keyboard: yes or no.",
      &Settings::waits));
  entries.push_back(std::make_unique<SwitchEntry>(
      "player", "repeats", "Left and Right go on moving while they are held: yes or no.",
      &Settings::repeats));
  entries.push_back(std::make_unique<NumberEntry>("player", "repeat_delay",
                                                  "After so many milliseconds, 100 to 400.",
                                                  &Settings::repeat_delay_ms, repeat_delay_bounds));
  entries.push_back(std::make_unique<NumberEntry>(
      "player", "repeat_interval", "And then every so many milliseconds, 30 to 120.",
      &Settings::repeat_interval_ms, repeat_interval_bounds));
  add_choices<KeyEntry>(entries, "Two keys for each action; \"\" is none.");
  add_choices<ButtonEntry>(
      entries, "Two buttons for each action: south, east, west, north, back, start,\n"
               "; left shoulder, right shoulder, left trigger, right trigger,\n"
               "; left stick, right stick, cross up, cross down, cross left, cross right.");
  return entries;
}

} // namespace

Entry::Entry(std::string section, std::string key, std::string comment)
    : section_(std::move(section)), key_(std::move(key)), comment_(std::move(comment)) {}

std::span<const Entry* const> all_entries() {
  static const Entries entries = make_entries();
  static const std::vector<const Entry*> pointers = [] {
    std::vector<const Entry*> result;
    result.reserve(entries.size());
    for (const auto& entry : entries)
      result.push_back(entry.get());
    return result;
  }();
  return pointers;
}

const Entry* find_entry(std::string_view section, std::string_view key) {
  const auto entries = all_entries();
  const auto found = std::ranges::find_if(entries, [&](const Entry* entry) {
    return entry->section() == section && entry->key() == key;
  });
  return found == entries.end() ? nullptr : *found;
}

std::string quoted(std::string_view name) {
  return '"' + std::string(name) + '"';
}

std::string_view unquoted(std::string_view text) {
  const bool is_quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
  return is_quoted ? text.substr(1, text.size() - 2) : text;
}

} // namespace kavo::host
