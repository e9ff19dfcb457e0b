#include "host/sound_commands.h"

#include "host/host.h"

namespace kavo::host {

namespace {

constexpr int last_voice = 15;
constexpr double longest_time = 60; // seconds
constexpr double highest_gain = 4;
constexpr double highest_cutoff = 1e6; // hertz; above half the sample rate nothing is cut
constexpr double lowest_tempo = 1;     // beats per minute
constexpr double highest_tempo = 1000;

class Silence final : public Sound {
public:
  void start() override {}
  void stop() override {}
  void set_tempo(double) override {}
  void set_voice(int, Waveform, const Envelope&) override {}
  void set_filter(int, double) override {}
  void set_gain(int, double) override {}
  void set_reverb(const Reverb&) override {}
  void set_reverb_send(int, double) override {}
  void play_note(int, std::string_view) override {}
  void play_pattern(std::string_view, bool) override {}
};

int voice_in(const Arguments& arguments) {
  return static_cast<int>(arguments.whole_number(0, "voice", 0, last_voice));
}

Waveform waveform_in(const Arguments& arguments, int index) {
  const std::string_view name = arguments.text(index);
  if (name == "SQUARE")
    return Waveform::square;
  if (name == "SAW")
    return Waveform::saw;
  if (name == "TRIANGLE")
    return Waveform::triangle;
  if (name == "SINE")
    return Waveform::sine;
  reject_argument(index, "waveform", "SQUARE, SAW, TRIANGLE or SINE", shown(name));
}

// A letter, sharps or flats, an octave.
bool is_note(std::string_view text) {
  if (text.empty() || text.front() < 'a' || text.front() > 'g')
    return false;
  const size_t octave = text.find_first_not_of("#sb", 1);
  return octave != std::string_view::npos && octave + 1 == text.size() && text[octave] >= '0' &&
         text[octave] <= '9';
}

std::string_view note_in(const Arguments& arguments, int index) {
  const std::string_view note = arguments.text(index);
  if (!is_note(note))
    reject_argument(index, "note", "a letter from a to g and an octave such as c5", shown(note));
  return note;
}

double time_in(const Arguments& arguments, int index, std::string_view meaning) {
  return arguments.number_within(index, meaning, 0, longest_time);
}

double level_in(const Arguments& arguments, int index, std::string_view meaning) {
  return arguments.number_within(index, meaning, 0, 1);
}

} // namespace

std::unique_ptr<Sound> make_sound() {
  return std::make_unique<Silence>();
}

double start_sound(Host& host, const Arguments&) {
  host.sound->start();
  return 0;
}

double set_tempo(Host& host, const Arguments& arguments) {
  host.sound->set_tempo(arguments.number_within(0, "tempo", lowest_tempo, highest_tempo));
  return 0;
}

double set_voice(Host& host, const Arguments& arguments) {
  const int voice = voice_in(arguments);
  const Waveform waveform = waveform_in(arguments, 1);
  const Envelope envelope = {time_in(arguments, 2, "attack"), time_in(arguments, 3, "decay"),
                             level_in(arguments, 4, "sustain"), time_in(arguments, 5, "release")};
  host.sound->set_voice(voice, waveform, envelope);
  return 0;
}

double set_filter(Host& host, const Arguments& arguments) {
  const int voice = voice_in(arguments);
  host.sound->set_filter(voice, arguments.number_within(1, "cutoff", 0, highest_cutoff));
  return 0;
}

double set_gain(Host& host, const Arguments& arguments) {
  const int voice = voice_in(arguments);
  host.sound->set_gain(voice, arguments.number_within(1, "gain", 0, highest_gain));
  return 0;
}

double set_reverb(Host& host, const Arguments& arguments) {
  const Reverb reverb = {level_in(arguments, 0, "room size"), level_in(arguments, 1, "damping"),
                         level_in(arguments, 2, "width"), level_in(arguments, 3, "wet level")};
  host.sound->set_reverb(reverb);
  return 0;
}

double set_reverb_send(Host& host, const Arguments& arguments) {
  const int voice = voice_in(arguments);
  host.sound->set_reverb_send(voice, level_in(arguments, 1, "level"));
  return 0;
}

double play_note(Host& host, const Arguments& arguments) {
  const int voice = voice_in(arguments);
  host.sound->play_note(voice, note_in(arguments, 1));
  return 0;
}

double play_pattern(Host& host, const Arguments& arguments) {
  const std::string_view pattern = arguments.text(0);
  if (pattern.empty())
    reject_argument(0, "pattern", "at least one note", "\"\"");
  host.sound->play_pattern(pattern, arguments.whole_number(1, "loop", 0, 1) != 0);
  return 0;
}

double stop_sound(Host& host, const Arguments&) {
  host.sound->stop();
  return 0;
}

} // namespace kavo::host
