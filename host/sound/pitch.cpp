#include "host/sound/pitch.h"

#include <array>
#include <numbers>

#include "host/sound/elementary.h"

namespace kavo::sound {

namespace {

// Semitones above C of the letters a to g.
constexpr std::array<int, 7> semitones = {9, 11, 0, 2, 4, 5, 7};

int read_accidentals(std::string_view text, size_t& position) {
  int shift = 0;
  for (; position < text.size(); ++position) {
    if (text[position] == '#' || text[position] == 's')
      ++shift;
    else if (text[position] == 'b')
      --shift;
    else
      break;
  }
  return shift;
}

int read_octave(std::string_view text, size_t& position) {
  const auto is_digit = [&] {
    return position < text.size() && text[position] >= '0' && text[position] <= '9';
  };
  if (!is_digit())
    throw unexpected(text, position, "an octave number, as in c4");
  int octave = 0;
  for (; is_digit(); ++position)
    octave = octave > 99 ? octave : octave * 10 + (text[position] - '0');
  return octave;
}

} // namespace

double frequency_of(double note) {
  return 440.0 * exponential((note - 69.0) / 12.0 * std::numbers::ln2);
}

int read_note(std::string_view text, size_t& position) {
  const size_t start = position;
  if (position >= text.size() || text[position] < 'a' || text[position] > 'g')
    throw unexpected(text, position, "a note, a letter from a to g");
  const int letter = semitones[static_cast<size_t>(text[position++] - 'a')];
  const int shift = read_accidentals(text, position);
  const int octave = read_octave(text, position);
  const int note = letter + shift + 12 * (octave + 1);
  if (note < lowest_note || note > highest_note)
    throw PatternError(start + 1, "expected a note from c0 to g9, got \"" +
                                      std::string(text.substr(start, position - start)) + '"');
  return note;
}

int note_named(std::string_view name) {
  size_t position = 0;
  const int note = read_note(name, position);
  if (position != name.size())
    throw unexpected(name, position, "nothing after the note");
  return note;
}

} // namespace kavo::sound
