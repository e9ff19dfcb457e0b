#include "host/settings/entries.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <utility>
#include <vector>

namespace kavo::host {

namespace {

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

using Entries = std::vector<std::unique_ptr<const Entry>>;

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

} // namespace kavo::host
