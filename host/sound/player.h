// The game thread's side of the sound: one function per SOUND command. It checks what it is
// given, remembers what it has told the engine, and looks after the output, whose absence is not
// an error: everything is then remembered and nothing is heard.
//
// Numbers come as doubles, as the game sends them. Every function but init, tend and shutdown
// throws host::CommandError ("argument 2 (gain) must be 0 to 4, got -1") when an argument is out of
// its range and has then changed nothing: what was playing plays on.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/sound/command.h"
#include "host/sound/engine.h"
#include "host/sound/levels.h"
#include "host/sound/output.h"
#include "host/sound/score.h"

namespace kavo::sound {

class Player {
public:
  // Gives seconds from any fixed moment on.
  using Clock = std::function<double()>;
  // Takes one line without its end.
  using Complain = std::function<void(const std::string&)>;

  // The clock is the machine's and a complaint goes to standard error, unless said otherwise.
  explicit Player(std::unique_ptr<Output> output);
  Player(std::unique_ptr<Output> output, Clock clock);
  Player(std::unique_ptr<Output> output, Clock clock, Complain complain);
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;
  Player(Player&&) = delete;
  Player& operator=(Player&&) = delete;
  ~Player();

  // Starts the output. One line of complaint, and silence, when there is none. Twice is harmless.
  void init();

  // Beats per minute, 1 to 1000; a cycle of the pattern is four beats.
  void bpm(double beats);
  // A voice is 0 to 15. Times in seconds, 0 to 60; the sustain level is 0 to 1.
  void voice(double voice, std::string_view waveform, double attack, double decay, double sustain,
             double release);
  // In Hz; 0 and below switch the filter off.
  void filter(double voice, double cutoff);
  // 0 to 4.
  void gain(double voice, double gain);
  // Each 0 to 1.
  void reverb(double size, double damping, double width, double wet);
  // 0 to 1.
  void reverb_send(double voice, double send);
  // Starts a pattern from its beginning in place of the one that plays; `loop` is 1 or 0.
  void note(std::string_view pattern, double loop);
  // Plays one note, an effect.
  void play(double voice, std::string_view note);

  // The listener's own volumes, each 0 to 1; reached within 10 ms, at any time while it plays. They
  // are not what a game sets up: shutdown() leaves them as they are.
  void levels(const Levels& levels);

  // Fades what sounds within a few milliseconds, closes the output and forgets everything it was
  // told. Twice is harmless.
  void shutdown();

  // Falls silent within a tenth of a second and lets the output go, which then takes nobody's time.
  // Where the music is it goes on after wake(), unless the device has changed meanwhile; what is
  // asked for in between is remembered. Twice is harmless, each.
  void rest();
  void wake();

  // Called now and then: reopens an output that was lost or never there, and tells the engine what
  // it missed. Every other function does so too.
  void tend();

  // Null while there is no output.
  const Engine* engine() const { return engine_.get(); }

private:
  // What the engine has been told, so that another one can be told again.
  struct VoiceState {
    Patch patch;
    double cutoff = 0.0;
    double gain = default_gain;
    double send = 0.0;
  };
  struct State {
    int64_t millibeats = 120'000;
    std::array<VoiceState, voice_count> voices;
    ReverbSettings reverb;
    const Score* score = nullptr;
    bool loops = false;
  };

  void open();
  void close();
  void lose(const std::string& why);
  void reopen();
  void send(const Command& command);
  void tell_everything();
  bool tell_voice(int index);
  bool send_score();
  void adopt(std::unique_ptr<const Score> score);
  void collect_retired_scores();
  void fall_silent(double seconds);
  VoiceState& voice_state(int voice) { return state_.voices[static_cast<size_t>(voice)]; }

  std::unique_ptr<Output> output_;
  Clock clock_;
  Complain complain_;
  State state_;
  Levels levels_;
  std::unique_ptr<Engine> engine_;
  std::vector<std::unique_ptr<const Score>> scores_; // the newest last; the engine may read any
  bool is_score_sent_ = false; // whether the engine was sent the newest of them and may hold it
  bool is_started_ = false;
  bool is_resting_ = false;
  bool has_missed_commands_ = false; // the engine's queue was full: tell it everything again
  double next_attempt_ = 0.0;
};

} // namespace kavo::sound
