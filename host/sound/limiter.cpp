#include "host/sound/limiter.h"

#include <algorithm>

namespace kavo::sound {

namespace {

// -1.5 dBFS: half a decibel for what four points to a sample do not see.
constexpr float ceiling = 0.84139514f;

constexpr double look_ahead_seconds = 0.0015;
constexpr double hold_seconds = 0.065; // a period of the lowest note, c0
constexpr double release_seconds = 0.1;
constexpr auto reach = static_cast<int64_t>(BetweenSamples::reach);

} // namespace

// A peak is known `reach` frames after it, the rest of the time is for turning down.
void Limiter::prepare(int rate) {
  latency_ = static_cast<int64_t>(look_ahead_seconds * rate);
  const int64_t window = std::max<int64_t>(1, latency_ - reach) / 2 * 2 + 1;
  latency_ = window - 1 + reach;
  smoother_.prepare(window, static_cast<int64_t>(hold_seconds * rate),
                    static_cast<int64_t>(release_seconds * rate));
  for (auto& line : lines_)
    line.assign(static_cast<size_t>(latency_ + longest_run), 0.0f);
}

void Limiter::process(float* left, float* right, int64_t frames) {
  std::copy_n(left, frames, lines_[0].begin() + latency_);
  std::copy_n(right, frames, lines_[1].begin() + latency_);
  find_peaks(frames);
  if (is_transparent(frames)) {
    std::copy_n(lines_[0].begin(), frames, left);
    std::copy_n(lines_[1].begin(), frames, right);
  } else {
    turn_down(left, right, frames);
  }
  for (auto& line : lines_)
    std::copy_n(line.begin() + frames, latency_, line.begin());
}

void Limiter::find_peaks(int64_t frames) {
  std::fill_n(peaks_.begin(), frames, 0.0f);
  for (const auto& line : lines_)
    between_samples_.raise_to_peaks(line.data() + latency_ - (2 * reach - 1), peaks_.data(), frames,
                                    ceiling);
}

// True when no peak is above the ceiling and the last one has been let go of.
bool Limiter::is_transparent(int64_t frames) const {
  return smoother_.is_at_rest() && std::all_of(peaks_.begin(), peaks_.begin() + frames,
                                               [](float peak) { return peak <= ceiling; });
}

void Limiter::turn_down(float* left, float* right, int64_t frames) {
  for (int64_t i = 0; i < frames; ++i) {
    const float peak = peaks_[static_cast<size_t>(i)];
    const float gain = smoother_.next(peak > ceiling ? 1.0f - ceiling / peak : 0.0f);
    left[i] = lines_[0][static_cast<size_t>(i)] * gain;
    right[i] = lines_[1][static_cast<size_t>(i)] * gain;
  }
}

} // namespace kavo::sound
