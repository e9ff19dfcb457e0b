#include "tests/soak/sound_card.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kavo::soak {

namespace {

constexpr int64_t block = 512;

} // namespace

void SoundCard::take_block() {
  std::array<float, 2 * block> samples = {};
  source_->render(samples.data(), block);
  for (const float sample : samples)
    taken_.peak = std::max(taken_.peak, std::abs(sample));
  taken_.frames += block;
}

void SoundCard::play_until(double milliseconds) {
  const auto due = static_cast<int64_t>(milliseconds * sound_rate / 1000);
  for (; frames_due_ + block <= due; frames_due_ += block)
    if (source_ != nullptr)
      take_block();
}

// The host waits with it until the engine has faded out.
void SoundCard::wait() {
  if (source_ != nullptr)
    take_block();
}

} // namespace kavo::soak
