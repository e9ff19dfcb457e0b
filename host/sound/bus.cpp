#include "host/sound/bus.h"

#include <algorithm>

namespace kavo::sound {

void Bus::prepare(const WavetableBank& bank, const Drive* drive, int rate) {
  rate_ = rate;
  for (auto& voice : voices_)
    voice.prepare(bank, drive, rate);
  room_.prepare(rate);
  level_ = Fader(1.0f);
}

void Bus::release_all() {
  for (auto& voice : voices_)
    voice.release_all();
}

void Bus::settle() {
  for (auto& voice : voices_)
    voice.settle();
  room_.settle();
  level_.settle();
}

void Bus::render(float* left, float* right, float* presence, int64_t frames) {
  std::fill_n(left, frames, 0.0f);
  std::fill_n(presence, frames, 0.0f);
  std::fill_n(send_.begin(), frames, 0.0f);
  for (auto& voice : voices_)
    voice.mix_into({left, send_.data(), presence, scratch_.data()}, frames);
  std::copy_n(left, frames, right);
  room_.process(send_.data(), left, right, frames);
  for (float* samples : {left, right, presence}) {
    Fader same_for_all = level_;
    same_for_all.scale(samples, frames);
  }
  level_.skip(frames);
}

} // namespace kavo::sound
