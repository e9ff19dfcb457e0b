#include "host/sound/voice.h"

#include <algorithm>

#include "host/sound/pitch.h"

namespace kavo::sound {

namespace {

constexpr double steal_seconds = 0.002;

} // namespace

Voice::Voice() : shape_(EnvelopeTimes{}, rate_), gain_(default_gain) {}

void Voice::prepare(const WavetableBank& bank, int rate) {
  bank_ = &bank;
  rate_ = rate;
  filter_.prepare(rate);
  dc_blocker_.prepare(rate);
  set_patch(Patch{});
}

void Voice::set_patch(const Patch& patch) {
  waveform_ = patch.waveform;
  shape_ = EnvelopeShape(patch.envelope, rate_);
}

void Voice::set_gain(float gain) {
  gain_.move(gain, rate_ / 100);
}
void Voice::set_send(float send) {
  send_.move(send, rate_ / 100);
}

void Voice::pluck(int note) {
  strike(note, shape_.attack + shape_.decay);
}

void Voice::strike(int note, int64_t gate) {
  const double frequency = frequency_of(note) / rate_;
  if (frequency >= 0.5)
    return;
  make_room();
  NoteSlot* slot = slot_for_new_note();
  if (slot == nullptr)
    return;
  slot->oscillator.start(*bank_, waveform_, frequency);
  slot->envelope.start(shape_, gate);
  slot->struck = ++strikes_;
  slot->is_leaving = false;
}

void Voice::make_room() {
  NoteSlot* oldest = nullptr;
  int staying = 0;
  for (auto& slot : slots_) {
    if (!slot.envelope.is_active() || slot.is_leaving)
      continue;
    ++staying;
    if (oldest == nullptr || slot.struck < oldest->struck)
      oldest = &slot;
  }
  if (staying < notes_at_a_time)
    return;
  oldest->is_leaving = true;
  oldest->envelope.fade(static_cast<int64_t>(steal_seconds * rate_));
}

NoteSlot* Voice::slot_for_new_note() {
  auto* const free = std::find_if(slots_.begin(), slots_.end(),
                                  [](const NoteSlot& slot) { return !slot.envelope.is_active(); });
  return free == slots_.end() ? nullptr : free;
}

void Voice::release_all() {
  for (auto& slot : slots_)
    slot.envelope.release();
}

// False when no slot sounds; `sum` is then left as it was.
bool Voice::sum_slots(float* sum, float* scratch, int64_t frames) {
  bool is_first = true;
  for (auto& slot : slots_) {
    if (!slot.envelope.is_active())
      continue;
    if (is_first)
      std::fill(sum, sum + frames, 0.0f);
    is_first = false;
    float* levels = scratch;
    float* wave = scratch + frames;
    slot.envelope.process(levels, frames);
    slot.oscillator.process(wave, frames);
    for (int64_t i = 0; i < frames; ++i)
      sum[i] += wave[i] * levels[i];
  }
  return !is_first;
}

void Voice::mix_into(float* dry, float* to_reverb, float* scratch, int64_t frames) {
  float* sum = scratch;
  if (!sum_slots(sum, scratch + frames, frames)) {
    if (is_settled())
      return;
    std::fill(sum, sum + frames, 0.0f);
  }
  filter_.process(sum, frames);
  dc_blocker_.process(sum, frames);
  gain_.scale(sum, frames);
  for (int64_t i = 0; i < frames; ++i)
    dry[i] += sum[i];
  if (!send_.is_shut())
    send_.add_scaled(to_reverb, sum, frames);
}

// True when silence in gives silence out and nothing is on its way to another value.
bool Voice::is_settled() const {
  return filter_.is_at_rest() && dc_blocker_.is_at_rest() && !gain_.is_moving() &&
         !send_.is_moving();
}

} // namespace kavo::sound
