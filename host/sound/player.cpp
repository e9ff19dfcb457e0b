#include "host/sound/player.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <utility>

#include "host/sound/arguments.h"
#include "host/sound/pitch.h"
#include "host/sound/wavetable.h"

namespace kavo::sound {

namespace {

using Kind = Command::Kind;

constexpr double seconds_between_attempts = 2.0;
constexpr double longest_time = 60.0; // seconds
constexpr double loudest_gain = 4.0;  // 12 dB

// How often a closing output is asked whether it has fallen silent: with a wait of a millisecond
// each, a device that plays no more delays the end of the program by a tenth of a second.
constexpr int most_waits = 100;

// What is rendered ahead and the waiting for it take the rest of the tenth of a second.
constexpr double seconds_to_rest = 0.05;

double seconds_of_steady_clock() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

void print_to_standard_error(const std::string& line) {
  (void)std::fprintf(stderr, "%s\n", line.c_str());
}

int voice_in(double voice) {
  return whole_number_in({0, "voice"}, voice, 0, voice_count - 1);
}

EnvelopeTimes envelope_in(double attack, double decay, double sustain, double release) {
  return {.attack = number_in({2, "attack"}, attack, 0.0, longest_time),
          .decay = number_in({3, "decay"}, decay, 0.0, longest_time),
          .sustain = number_in({4, "sustain"}, sustain, 0.0, 1.0),
          .release = number_in({5, "release"}, release, 0.0, longest_time)};
}

} // namespace

Player::Player(std::unique_ptr<Output> output)
    : Player(std::move(output), seconds_of_steady_clock) {}

Player::Player(std::unique_ptr<Output> output, Clock clock)
    : Player(std::move(output), std::move(clock), print_to_standard_error) {}

Player::Player(std::unique_ptr<Output> output, Clock clock, Complain complain)
    : output_(std::move(output)), clock_(std::move(clock)), complain_(std::move(complain)) {}

Player::~Player() {
  shutdown();
}

// The output

void Player::init() {
  if (is_started_)
    return;
  is_started_ = true;
  WavetableBank::shared(); // before the device waits for them
  Drive::shared();
  try {
    open();
  } catch (const OutputError& error) {
    lose(std::string("no sound: ") + error.what());
  }
}

void Player::open() {
  const int rate = output_->open();
  engine_ = std::make_unique<Engine>(rate);
  tell_everything();
  output_->start(*engine_);
}

void Player::lose(const std::string& why) {
  complain_(why);
  next_attempt_ = clock_() + seconds_between_attempts;
}

void Player::close() {
  output_->close();
  engine_.reset();
  if (scores_.size() > 1)
    scores_.erase(scores_.begin(), scores_.end() - 1);
  is_score_sent_ = false;
}

void Player::tend() {
  if (is_resting_)
    return;
  if (engine_ && output_->is_lost()) {
    close();
    lose("no sound: the audio device is gone");
  }
  if (!engine_)
    return reopen();
  engine_->tell_time(clock_());
  if (has_missed_commands_)
    tell_everything();
}

void Player::reopen() {
  if (!is_started_ || clock_() < next_attempt_)
    return;
  try {
    open();
  } catch (const OutputError&) {
    next_attempt_ = clock_() + seconds_between_attempts;
  }
}

void Player::shutdown() {
  if (!is_started_)
    return;
  if (engine_ && !is_resting_ && !output_->is_lost())
    fall_silent(output_->fade_out_seconds());
  close();
  scores_.clear();
  state_ = State{};
  is_started_ = false;
  is_resting_ = false;
}

void Player::rest() {
  if (!is_started_ || is_resting_)
    return;
  is_resting_ = true;
  if (!engine_)
    return;
  if (!output_->is_lost())
    fall_silent(seconds_to_rest);
  output_->close();
}

void Player::wake() {
  if (!std::exchange(is_resting_, false) || !engine_)
    return;
  try {
    if (output_->open() != engine_->rate()) {
      close();
      return open();
    }
    const auto frames = static_cast<int64_t>(seconds_to_rest * engine_->rate());
    engine_->send({.kind = Kind::curtain, .whole = frames, .number = 1.0});
    output_->start(*engine_);
  } catch (const OutputError& error) {
    close();
    lose(std::string("no sound: ") + error.what());
  }
}

void Player::fall_silent(double seconds) {
  const auto frames = static_cast<int64_t>(seconds * engine_->rate());
  engine_->send({.kind = Kind::curtain, .whole = frames, .number = 0.0});
  for (int i = 0; i < most_waits && !engine_->is_silenced(); ++i)
    output_->wait();
}

// What the engine is told

// What finds no room in the queue is remembered and told later, when somebody renders again.
void Player::send(const Command& command) {
  if (engine_ && !has_missed_commands_)
    has_missed_commands_ = !engine_->send(command);
}

// The order is the game's own: a score comes last, when its voices are set up.
void Player::tell_everything() {
  bool is_told = engine_->send({.kind = Kind::levels, .levels = levels_});
  is_told &= engine_->send({.kind = Kind::tempo, .whole = state_.millibeats});
  is_told &= engine_->send({.kind = Kind::reverb, .reverb = state_.reverb});
  for (int i = 0; i < voice_count; ++i)
    is_told &= tell_voice(i);
  is_told &= send_score();
  const auto fade = static_cast<int64_t>(output_->fade_in_seconds() * engine_->rate());
  is_told &= engine_->send({.kind = Kind::curtain, .whole = fade, .number = 1.0});
  has_missed_commands_ = !is_told;
}

bool Player::tell_voice(int index) {
  const VoiceState& voice = voice_state(index);
  return engine_->send({.kind = Kind::patch, .voice = index, .patch = voice.patch}) &&
         engine_->send({.kind = Kind::cutoff, .voice = index, .number = voice.cutoff}) &&
         engine_->send({.kind = Kind::gain, .voice = index, .number = voice.gain}) &&
         engine_->send({.kind = Kind::send, .voice = index, .number = voice.send});
}

// Once only: a score that is told again would begin again. True when the engine has it.
bool Player::send_score() {
  if (state_.score != nullptr && !is_score_sent_)
    is_score_sent_ =
        engine_->send({.kind = Kind::score, .whole = state_.loops, .score = state_.score});
  return state_.score == nullptr || is_score_sent_;
}

void Player::collect_retired_scores() {
  if (!engine_)
    return;
  while (const Score* retired = engine_->retired_score())
    std::erase_if(scores_, [retired](const auto& score) { return score.get() == retired; });
}

// The commands

void Player::bpm(double beats) {
  tend();
  number_in({0, "tempo"}, beats, 1.0, 1000.0);
  state_.millibeats = std::llround(beats * 1000.0);
  send({.kind = Kind::tempo, .whole = state_.millibeats});
}

void Player::voice(double voice, std::string_view waveform, double attack, double decay,
                   double sustain, double release) {
  tend();
  const int index = voice_in(voice);
  const Patch patch = {waveform_in({1, "waveform"}, waveform),
                       envelope_in(attack, decay, sustain, release)};
  voice_state(index).patch = patch;
  send({.kind = Kind::patch, .voice = index, .patch = patch});
}

void Player::filter(double voice, double cutoff) {
  tend();
  const int index = voice_in(voice);
  voice_state(index).cutoff = finite_number({1, "cutoff"}, cutoff);
  send({.kind = Kind::cutoff, .voice = index, .number = cutoff});
}

void Player::gain(double voice, double gain) {
  tend();
  const int index = voice_in(voice);
  voice_state(index).gain = number_in({1, "gain"}, gain, 0.0, loudest_gain);
  send({.kind = Kind::gain, .voice = index, .number = gain});
}

void Player::reverb(double size, double damping, double width, double wet) {
  tend();
  state_.reverb = {.size = number_in({0, "size"}, size, 0.0, 1.0),
                   .damping = number_in({1, "damping"}, damping, 0.0, 1.0),
                   .width = number_in({2, "width"}, width, 0.0, 1.0),
                   .wet = number_in({3, "wet"}, wet, 0.0, 1.0)};
  send({.kind = Kind::reverb, .reverb = state_.reverb});
}

void Player::reverb_send(double voice, double send_level) {
  tend();
  const int index = voice_in(voice);
  voice_state(index).send = number_in({1, "send"}, send_level, 0.0, 1.0);
  send({.kind = Kind::send, .voice = index, .number = send_level});
}

void Player::note(std::string_view pattern, double loop) {
  tend();
  const bool loops = whole_number_in({1, "loop"}, loop, 0, 1) == 1;
  std::unique_ptr<const Score> score;
  try {
    score = std::make_unique<const Score>(read_score(pattern));
  } catch (const PatternError& error) {
    reject_at_column({0, "pattern"}, error);
  }
  adopt(std::move(score));
  state_.loops = loops;
  if (engine_ && !has_missed_commands_)
    has_missed_commands_ = !send_score();
}

// A score that the engine never heard of can go at once; the others come back from it.
void Player::adopt(std::unique_ptr<const Score> score) {
  collect_retired_scores();
  if (!scores_.empty() && !is_score_sent_)
    scores_.pop_back();
  state_.score = score.get();
  scores_.push_back(std::move(score));
  is_score_sent_ = false;
}

void Player::play(double voice, std::string_view note) {
  tend();
  const int index = voice_in(voice);
  try {
    const int64_t number = note_named(note);
    send({.kind = Kind::pluck, .voice = index, .whole = number, .number = clock_()});
  } catch (const PatternError& error) {
    reject_at_column({1, "note"}, error);
  }
}

void Player::levels(const Levels& levels) {
  tend();
  levels_ = {.music = number_in({0, "music"}, levels.music, 0.0, 1.0),
             .effects = number_in({1, "effects"}, levels.effects, 0.0, 1.0),
             .master = number_in({2, "master"}, levels.master, 0.0, 1.0)};
  send({.kind = Kind::levels, .levels = levels_});
}

} // namespace kavo::sound
