#include "host/settings/entries.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <utility>
#include <vector>

#include "host/keys/controls.h"

namespace kavo::host {

namespace {

class NumberEntry final : public Entry {
public:
  NumberEntry(std::string_view section, std::string_view key, std::string comment,
              int Settings::*member, Bounds bounds)
      : Entry(section, key, std::move(comment)), member_(member), bounds_(bounds) {}

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
  SwitchEntry(std::string_view section, std::string_view key, std::string comment,
              bool Settings::*member)
      : Entry(section, key, std::move(comment)), member_(member) {}

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

// Names with commas between them; none has a comma or a semicolon of its own in it, for those two
// keys, and theirs of the keypad, have words. A slot without one is "none", but for the last ones.
constexpr std::string_view nothing = "none";

std::vector<std::string_view> listed(std::string_view text) {
  std::vector<std::string_view> result;
  const auto trimmed = [](std::string_view word) {
    const size_t start = std::min(word.find_first_not_of(" \t"), word.size());
    return word.substr(start, word.find_last_not_of(" \t") + 1 - start);
  };
  while (!text.empty()) {
    const size_t end = std::min(text.find(','), text.size());
    result.push_back(trimmed(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return result;
}

std::string list_of(std::vector<std::string_view> words) {
  while (words.size() > 1 && words.back() == nothing)
    words.pop_back();
  std::string list;
  for (const std::string_view word : words)
    list += (list.empty() ? "" : ", ") + std::string(word);
  return list;
}

class KeysEntry final : public Entry {
public:
  KeysEntry(Action action, std::string comment)
      : Entry("keys", word_for(action), std::move(comment)), action_(action) {}

  std::string text_in(const Settings& settings) const override {
    std::vector<std::string_view> words;
    for (const std::string& key : settings.bindings.keys_of(action_))
      words.push_back(key.empty() ? nothing : word_for_key(key));
    return list_of(words);
  }
  void read(std::string_view text, Settings& settings) const override {
    const std::vector<std::string_view> words = listed(text);
    if (words.size() > Bindings::keys_each || std::ranges::find(words, "") != words.end())
      throw BadValue{"up to two names of keys, such as \"Left, A\", or none"};
    Bindings::Keys keys;
    std::ranges::transform(words, keys.begin(), [](std::string_view word) {
      return word == nothing ? std::string() : key_called(word);
    });
    settings.bindings.keys_of(action_) = keys;
  }

private:
  Action action_;
};

class ControlsEntry final : public Entry {
public:
  ControlsEntry(Action action, std::string comment)
      : Entry("controller", word_for(action), std::move(comment)), action_(action) {}

  std::string text_in(const Settings& settings) const override {
    std::vector<std::string_view> words;
    for (const std::optional<Control>& control : settings.bindings.controls_of(action_))
      words.push_back(control ? word_for(*control) : nothing);
    return list_of(words);
  }
  void read(std::string_view text, Settings& settings) const override {
    const std::vector<std::string_view> words = listed(text);
    Bindings::Controls controls;
    const auto is_known = [](std::string_view word) {
      const auto control = control_called(word);
      return word == nothing || (control && !is_reserved(*control));
    };
    if (words.size() > controls.size() || !std::ranges::all_of(words, is_known))
      throw BadValue{"up to three parts of a controller, such as \"cross up, west\", or none"};
    std::ranges::transform(words, controls.begin(), control_called);
    settings.bindings.controls_of(action_) = controls;
  }

private:
  Action action_;
};

using Entries = std::vector<std::unique_ptr<const Entry>>;

void add_repeat(Entries& entries) {
  entries.push_back(std::make_unique<SwitchEntry>(
      "repeat", "on", "Left and Right move again and again while they are held: yes or no.",
      &Settings::repeats));
  entries.push_back(std::make_unique<NumberEntry>(
      "repeat", "delay", "Milliseconds before the second move: 100 to 400.",
      &Settings::repeat_delay, repeat_delay_bounds));
  entries.push_back(std::make_unique<NumberEntry>(
      "repeat", "rate", "Milliseconds from one move to the next then: 30 to 120.",
      &Settings::repeat_rate, repeat_rate_bounds));
}

void add_bindings(Entries& entries) {
  const char* comment = "Up to two keys for each, or none. Escape keeps its own.";
  for (const Action action : all_actions)
    entries.push_back(std::make_unique<KeysEntry>(action, std::exchange(comment, "")));
  comment = "Up to three parts of a controller for each. The left stick counts as the cross.";
  for (const Action action : all_actions)
    entries.push_back(std::make_unique<ControlsEntry>(action, std::exchange(comment, "")));
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
      "player", "records", "The last games are kept, to be seen again: yes or no.",
      &Settings::records));
  add_repeat(entries);
  add_bindings(entries);
  return entries;
}

} // namespace

Entry::Entry(std::string_view section, std::string_view key, std::string comment)
    : section_(section), key_(key), comment_(std::move(comment)) {}

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

} // namespace kavo::host
