#include "host/sound/engine.h"

#include <algorithm>

#include "host/sound/flush_to_zero.h"
#include "host/sound/wavetable.h"

namespace kavo::sound {

static_assert(std::atomic<double>::is_always_lock_free);

Engine::Engine(int rate) : rate_(rate) {
  sequencer_.prepare(rate);
  music_.prepare(WavetableBank::shared(), nullptr, rate);
  effects_.prepare(WavetableBank::shared(), &Drive::shared(), rate);
  ducker_.prepare(rate);
  limiter_.prepare(rate);
}

const Score* Engine::retired_score() {
  const Score* score = nullptr;
  retired_.pop(score);
  return score;
}

void Engine::render(float* interleaved, int64_t frames) noexcept {
  const FlushToZero flush_to_zero;
  obey_commands();
  const bool is_behind_curtain = curtain_.is_shut();
  for (int64_t done = 0; done < frames;) {
    const int64_t run = play_due_notes(std::min(frames - done, longest_run));
    render_run(interleaved + 2 * done, run);
    done += run;
  }
  is_silenced_.store(is_behind_curtain, std::memory_order_release);
  frames_rendered_.fetch_add(frames, std::memory_order_release);
}

void Engine::obey_commands() {
  Command command;
  while (commands_.pop(command))
    obey(command);
  if (frames_rendered_.load(std::memory_order_relaxed) > 0)
    return;
  music_.settle();
  effects_.settle();
  master_level_.settle();
}

namespace {

void set_up(Voice& voice, const Command& command) {
  switch (command.kind) {
  case Command::Kind::patch:
    return voice.set_patch(command.patch);
  case Command::Kind::cutoff:
    return voice.set_cutoff(command.number);
  case Command::Kind::gain:
    return voice.set_gain(static_cast<float>(command.number));
  case Command::Kind::send:
    return voice.set_send(static_cast<float>(command.number));
  default:
    return;
  }
}

} // namespace

void Engine::obey(const Command& command) {
  switch (command.kind) {
  case Command::Kind::tempo:
    return sequencer_.set_tempo(command.whole);
  case Command::Kind::score:
    return change_score(command.score, command.whole != 0);
  case Command::Kind::pluck:
    return pluck(command);
  case Command::Kind::levels:
    return set_levels(command.levels);
  case Command::Kind::curtain:
    return curtain_.move(static_cast<float>(command.number), command.whole);
  case Command::Kind::reverb:
    music_.set_room(command.reverb);
    return effects_.set_room(command.reverb);
  default:
    set_up(music_.voice(command.voice), command);
    return set_up(effects_.voice(command.voice), command);
  }
}

void Engine::pluck(const Command& command) {
  const double age = now_.load(std::memory_order_relaxed) - command.number;
  if (age <= longest_delay_of_effects)
    effects_.voice(command.voice).pluck(static_cast<int>(command.whole));
}

void Engine::set_levels(const Levels& levels) {
  music_.set_level(static_cast<float>(levels.music));
  effects_.set_level(static_cast<float>(levels.effects));
  master_level_.move(static_cast<float>(levels.master), rate_ / 100);
}

// A score that is told again begins again; only one that is replaced goes back.
void Engine::change_score(const Score* score, bool loops) {
  if (sequencer_.score() != nullptr && sequencer_.score() != score)
    retired_.push(sequencer_.score());
  sequencer_.play(score, loops);
  music_.release_all();
}

// Gives the frames before the next note after those, at most `frames`.
int64_t Engine::play_due_notes(int64_t frames) {
  int64_t gate = 0;
  while (const ScoreNote* note = sequencer_.next_due(gate))
    music_.voice(note->voice).strike(note->note, gate);
  return sequencer_.frames_before_next(frames);
}

namespace {

void scale_both(Fader& fader, float* left, float* right, int64_t frames) {
  Fader same = fader;
  same.scale(left, frames);
  fader.scale(right, frames);
}

} // namespace

void Engine::render_run(float* interleaved, int64_t frames) {
  mix_buses(frames);
  limiter_.process(left_.data(), right_.data(), frames);
  scale_both(curtain_, left_.data(), right_.data(), frames);
  for (int64_t i = 0; i < frames; ++i) {
    interleaved[2 * i] = left_[static_cast<size_t>(i)];
    interleaved[2 * i + 1] = right_[static_cast<size_t>(i)];
  }
  sequencer_.advance(frames);
}

void Engine::mix_buses(int64_t frames) {
  music_.render(left_.data(), right_.data(), presence_.data(), frames);
  effects_.render(effects_left_.data(), effects_right_.data(), effects_presence_.data(), frames);
  ducker_.process(effects_presence_.data(), left_.data(), right_.data(), frames);
  for (size_t i = 0; i < static_cast<size_t>(frames); ++i) {
    left_[i] = (left_[i] + effects_left_[i]) * master_gain;
    right_[i] = (right_[i] + effects_right_[i]) * master_gain;
  }
  scale_both(master_level_, left_.data(), right_.data(), frames);
}

} // namespace kavo::sound
