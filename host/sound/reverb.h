// The room: four allpasses that smear the input, then a feedback delay network of eight lines
// under a Hadamard matrix (J.-M. Jot and A. Chaigne, "Digital delay networks for designing
// artificial reverberators", 1991), mono in and stereo out.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/sound/early_reflections.h"

namespace kavo::sound {

// Each from 0 to 1.
struct ReverbSettings {
  double size = 0.5;    // how long it rings: 0.58 s to 10.3 s, see reverberation_seconds
  double damping = 0.5; // how much faster the treble dies
  double width = 1.0;   // 0 is mono
  double wet = 0.0;     // level in the mix
};

// The time in which the reverberation falls by 60 dB.
double reverberation_seconds(double size);

class Reverb {
public:
  void prepare(int rate);

  // Reached within 10 ms.
  void set(const ReverbSettings& settings);
  void settle(); // at once

  // Adds the reverberation of `in` to `left` and `right`. Costs nothing while the input and the
  // tail are silent.
  void process(const float* in, float* left, float* right, int64_t frames);

  // True when the tail has died away.
  bool is_asleep() const { return quiet_frames_ >= longest_line_; }

private:
  static constexpr size_t line_count = 8;
  static constexpr size_t allpass_count = 4;

  struct DelayLine {
    std::vector<float> samples;
    size_t position = 0;

    float& now() { return samples[position]; }
    void advance() { position = position + 1 == samples.size() ? 0 : position + 1; }
  };

  struct Parameters {
    std::array<float, line_count> feedback{}; // gain of one pass
    float damping = 0.0f;
    float direct = 0.0f; // of a side itself
    float cross = 0.0f;  // of the other side
  };

  Parameters parameters_for(const ReverbSettings& settings) const;
  void glide();
  float smear(float in);
  void process_run(const float* in, float* left, float* right, int64_t frames);
  float process_frame(float in, float& one, float& other);

  int rate_ = 48000;
  std::array<DelayLine, allpass_count> allpasses_;
  EarlyReflections early_;
  std::array<DelayLine, line_count> lines_;
  std::array<float, line_count> damped_{};
  Parameters now_;
  Parameters step_;
  Parameters target_;

  // A run, before it is mixed: what is smeared, what either side hears, and how it is mixed.
  static constexpr int64_t longest_run = EarlyReflections::longest_run;
  using Run = std::array<float, longest_run>;
  Run smeared_{};
  Run one_{};
  Run other_{};
  Run direct_{};
  Run cross_{};
  int64_t glide_left_ = 0;
  int64_t quiet_frames_ = 0;
  int64_t longest_line_ = 0;
};

} // namespace kavo::sound
