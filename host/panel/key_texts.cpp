#include "host/panel/key_texts.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "host/keys/controls.h"
#include "host/panel/drawing.h"
#include "host/screen/font.h"

namespace kavo::host {

namespace {

struct Phrase {
  std::string_view english;
  std::string_view german;

  std::string_view in(Language language) const {
    return language == Language::german ? german : english;
  }
};

// In the order of the actions.
constexpr std::array<Phrase, action_count> labels = {{{"Left", "Links"},
                                                      {"Right", "Rechts"},
                                                      {"Turn, up", "Drehen, hoch"},
                                                      {"Faster, down", "Schneller"},
                                                      {"Drop, start", "Fallen, Start"},
                                                      {"Pause", "Pause"},
                                                      {"Accept", "Übernehmen"},
                                                      {"Options", "Optionen"},
                                                      {"Music", "Musik"},
                                                      {"Back, quit", "Zurück, Ende"}}};

constexpr std::array<Phrase, action_count> deeds = {{
    {"move left; the letter's place before", "nach links; eine Stelle zurück"},
    {"move right; the letter's place after", "nach rechts; eine Stelle weiter"},
    {"turn; the row or letter above", "drehen; Zeile, Buchstabe darüber"},
    {"fall faster while held; the one below", "schneller, solange gehalten; darunter"},
    {"start; drop; go on after a pause", "Start; fallen lassen; nach der Pause"},
    {"pause, and go on", "Pause und weiter"},
    {"switch an option; accept the name", "Option umschalten; Namen übernehmen"},
    {"the game's own options, on the title", "Optionen des Spiels, auf dem Titelbild"},
    {"music on or off", "Musik an oder aus"},
    {"pause; then the title; there: quit", "Pause; dann zum Titel; dort: beenden"},
}};

// Keys whose names are English words.
constexpr Phrase key_phrases[] = {{"Left", "Links"},
                                  {"Right", "Rechts"},
                                  {"Up", "Hoch"},
                                  {"Down", "Runter"},
                                  {"Space", "Leertaste"},
                                  {"Return", "Eingabe"},
                                  {"Backspace", "Rücktaste"},
                                  {"Delete", "Entf"},
                                  {"Insert", "Einfg"},
                                  {"Home", "Pos1"},
                                  {"End", "Ende"},
                                  {"PageUp", "Bild auf"},
                                  {"PageDown", "Bild ab"},
                                  {"CapsLock", "Feststelltaste"},
                                  {"Left Shift", "Umschalt links"},
                                  {"Right Shift", "Umschalt rechts"},
                                  {"Left Ctrl", "Strg links"},
                                  {"Right Ctrl", "Strg rechts"},
                                  {"Left Alt", "Alt links"},
                                  {"Right Alt", "Alt rechts"}};

// In the order of the controls.
constexpr std::array<std::string_view, control_count> controls_in_german = {"Kreuz links",
                                                                            "Kreuz rechts",
                                                                            "Kreuz hoch",
                                                                            "Kreuz runter",
                                                                            "Süd",
                                                                            "Ost",
                                                                            "West",
                                                                            "Nord",
                                                                            "Back",
                                                                            "Start",
                                                                            "Guide",
                                                                            "Stick links",
                                                                            "Stick rechts",
                                                                            "Schulter links",
                                                                            "Schulter rechts",
                                                                            "Trigger links",
                                                                            "Trigger rechts",
                                                                            "R-Stick links",
                                                                            "R-Stick rechts",
                                                                            "R-Stick hoch",
                                                                            "R-Stick runter",
                                                                            "Paddle 1",
                                                                            "Paddle 2",
                                                                            "Paddle 3",
                                                                            "Paddle 4",
                                                                            "Touchpad",
                                                                            "Sonstige"};

constexpr int longest_name = 16; // characters
constexpr int column = 24;       // of the keys, in help

// Not longer than that, the rest left out.
std::string shortened(std::string_view utf8, int most) {
  if (length_of(utf8) <= most)
    return std::string(utf8);
  std::string_view rest = utf8;
  for (int length = 1; length < most; ++length)
    next_code_point(rest);
  return std::string(utf8.substr(0, utf8.size() - rest.size())) + "…";
}

std::vector<std::string> names_for(const Bindings& bindings, Action action, Device device,
                                   Language language) {
  std::vector<std::string> names;
  if (device == Device::keyboard) {
    for (const std::string& key : bindings.keys_of(action))
      if (!key.empty())
        names.push_back(text_of_key(key, language));
  } else {
    for (const std::optional<Control>& control : bindings.controls_of(action))
      if (control)
        names.push_back(text_of_control(*control, language));
  }
  return names;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names)
    text += (text.empty() ? "" : ", ") + name;
  return text.empty() ? "-" : text;
}

} // namespace

std::string_view label_of(Action action, Language language) {
  return labels[static_cast<size_t>(action)].in(language);
}

std::string text_of_key(std::string_view key_name, Language language) {
  const auto* const found = std::ranges::find(key_phrases, key_name, &Phrase::english);
  return shortened(found == std::end(key_phrases) ? key_name : found->in(language), longest_name);
}

std::string text_of_control(Control control, Language language) {
  if (language == Language::german)
    return std::string(controls_in_german[static_cast<size_t>(control)]);
  std::string word(word_for(control));
  word[0] = static_cast<char>(word[0] - 'a' + 'A');
  return word;
}

std::vector<std::string> lines_of_help(const Bindings& bindings, Device device, Language language) {
  std::vector<std::string> lines;
  for (const Action action : all_actions) {
    const std::string keys =
        shortened(joined(names_for(bindings, action, device, language)), column - 1);
    const auto gap = static_cast<size_t>(column - length_of(keys));
    lines.push_back(keys + std::string(gap, ' ') +
                    std::string(deeds[static_cast<size_t>(action)].in(language)));
  }
  return lines;
}

} // namespace kavo::host
