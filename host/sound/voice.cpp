#include "host/sound/voice.h"

#include <algorithm>

#include "host/sound/pitch.h"

namespace kavo::sound {

namespace {

constexpr double steal_seconds = 0.002;

} // namespace

Voice::Voice() : shape_(EnvelopeTimes{}, rate_), gain_(default_gain) {}

void Voice::prepare(const WavetableBank& bank, const Drive* drive, int rate) {
  bank_ = &bank;
  drive_ = drive;
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

void Voice::settle() {
  filter_.settle();
  gain_.settle();
  send_.settle();
}

void Voice::pluck(int note) {
  strike(note, shape_.attack + shape_.decay);
}

void Voice::strike(int note, int64_t gate) {
  const double frequency = frequency_of(note) / rate_;
  if (frequency >= 0.5)
    return;
  make_room();
  NoteSlot& slot = slot_for_new_note();
  slot.oscillator.start(*bank_, waveform_, frequency);
  const Overtones overtones = drive_ != nullptr ? drive_->overtones(note) : Overtones{};
  slot.overtone_level = overtones.level;
  if (overtones.level > 0.0f)
    slot.overtones.start(overtones.table, frequency);
  slot.envelope.start(shape_, gate);
  slot.struck = ++strikes_;
  slot.is_leaving = false;
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

// A free one, or else the one that has the least left to fade: of notes struck all at once those
// that never sounded.
NoteSlot& Voice::slot_for_new_note() {
  NoteSlot* best = &slots_.front();
  for (auto& slot : slots_) {
    if (!slot.envelope.is_active())
      return slot;
    const bool is_softer = slot.envelope.level() < best->envelope.level();
    if (slot.is_leaving && (!best->is_leaving || is_softer))
      best = &slot;
  }
  return *best;
}

void Voice::release_all() {
  for (auto& slot : slots_)
    slot.envelope.release();
}

namespace {

void add_product(float* sum, const float* wave, const float* levels, float factor, int64_t frames) {
  for (int64_t i = 0; i < frames; ++i)
    sum[i] += wave[i] * levels[i] * factor;
}

void add_note(NoteSlot& slot, float* sum, float* all_levels, float* scratch, int64_t frames) {
  float* levels = scratch;
  float* wave = scratch + frames;
  slot.envelope.process(levels, frames);
  slot.oscillator.process(wave, frames);
  add_product(sum, wave, levels, 1.0f, frames);
  for (int64_t i = 0; i < frames; ++i)
    all_levels[i] += levels[i];
  if (slot.overtone_level == 0.0f)
    return;
  slot.overtones.process(wave, frames);
  add_product(sum, wave, levels, slot.overtone_level, frames);
}

} // namespace

// False when no slot sounds. `scratch` is of two runs.
bool Voice::sum_slots(float* sum, float* levels, float* scratch, int64_t frames) {
  std::fill(sum, sum + frames, 0.0f);
  std::fill(levels, levels + frames, 0.0f);
  bool is_any = false;
  for (auto& slot : slots_) {
    if (!slot.envelope.is_active())
      continue;
    add_note(slot, sum, levels, scratch, frames);
    is_any = true;
  }
  return is_any;
}

void Voice::mix_into(const Mix& mix, int64_t frames) {
  float* sum = mix.scratch;
  float* levels = mix.scratch + frames;
  if (is_idle())
    return;
  if (sum_slots(sum, levels, mix.scratch + 2 * frames, frames)) {
    Fader same = gain_;
    same.add_scaled(mix.presence, levels, frames);
  }
  filter_.process(sum, frames);
  dc_blocker_.process(sum, frames);
  gain_.scale(sum, frames);
  for (int64_t i = 0; i < frames; ++i)
    mix.dry[i] += sum[i];
  if (!send_.is_shut())
    send_.add_scaled(mix.to_reverb, sum, frames);
}

bool Voice::is_idle() const {
  return is_settled() && std::none_of(slots_.begin(), slots_.end(), [](const NoteSlot& slot) {
           return slot.envelope.is_active();
         });
}

// True when silence in gives silence out and nothing is on its way to another value.
bool Voice::is_settled() const {
  return filter_.is_at_rest() && dc_blocker_.is_at_rest() && !gain_.is_moving() &&
         !send_.is_moving();
}

} // namespace kavo::sound
