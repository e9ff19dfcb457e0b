#include "host/sound/engine.h"

#include <algorithm>

#include "host/sound/flush_to_zero.h"
#include "host/sound/limiter.h"
#include "host/sound/wavetable.h"

namespace kavo::sound {

Engine::Engine(int rate) : rate_(rate) {
  for (auto& voice : voices_)
    voice.prepare(WavetableBank::shared(), rate);
  sequencer_.prepare(rate);
  reverb_.prepare(rate);
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
}

void Engine::obey(const Command& command) {
  Voice& voice = voices_[static_cast<size_t>(command.voice)];
  switch (command.kind) {
  case Command::Kind::tempo:
    return sequencer_.set_tempo(command.whole);
  case Command::Kind::patch:
    return voice.set_patch(command.patch);
  case Command::Kind::cutoff:
    return voice.set_cutoff(command.number);
  case Command::Kind::gain:
    return voice.set_gain(static_cast<float>(command.number));
  case Command::Kind::send:
    return voice.set_send(static_cast<float>(command.number));
  case Command::Kind::reverb:
    return reverb_.set(command.reverb);
  case Command::Kind::score:
    return change_score(command.score, command.whole != 0);
  case Command::Kind::pluck:
    return voice.pluck(static_cast<int>(command.whole));
  case Command::Kind::curtain:
    return curtain_.move(static_cast<float>(command.number), command.whole);
  }
}

// A score that is told again begins again; only one that is replaced goes back.
void Engine::change_score(const Score* score, bool loops) {
  if (sequencer_.score() != nullptr && sequencer_.score() != score)
    retired_.push(sequencer_.score());
  sequencer_.play(score, loops);
  for (auto& voice : voices_)
    voice.release_all();
}

// Gives the frames before the next note after those, at most `frames`.
int64_t Engine::play_due_notes(int64_t frames) {
  int64_t gate = 0;
  while (const ScoreNote* note = sequencer_.next_due(gate))
    voices_[static_cast<size_t>(note->voice)].strike(note->note, gate);
  return sequencer_.frames_before_next(frames);
}

void Engine::render_run(float* interleaved, int64_t frames) {
  std::fill_n(left_.begin(), frames, 0.0f);
  std::fill_n(send_.begin(), frames, 0.0f);
  for (auto& voice : voices_)
    voice.mix_into(left_.data(), send_.data(), scratch_.data(), frames);
  std::copy_n(left_.begin(), frames, right_.begin());
  reverb_.process(send_.data(), left_.data(), right_.data(), frames);
  for (int64_t i = 0; i < frames; ++i) {
    const float level = curtain_.next();
    const auto at = static_cast<size_t>(i);
    interleaved[2 * i] = limited(left_[at] * master_gain) * level;
    interleaved[2 * i + 1] = limited(right_[at] * master_gain) * level;
  }
  sequencer_.advance(frames);
}

} // namespace kavo::sound
