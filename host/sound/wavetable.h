// Band-limited single cycles of the four waveforms, one per third of an octave, so that no
// harmonic of any note lies above half the sample rate and none below two fifths of it is lost.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace kavo::sound {

// Each runs from -1 to 1 before its harmonics are cut and begins at 0, rising.
enum class Waveform { square, saw, triangle, sine };
inline constexpr size_t waveform_count = 4;

// "SQUARE", "SAW", "TRIANGLE", "SINE"; nothing for any other name.
std::optional<Waveform> waveform_named(std::string_view name);

// 2^bits samples of one cycle, followed by the first one again.
struct Wavetable {
  const float* samples = nullptr;
  int bits = 0;
};

class WavetableBank {
public:
  // Made at the first call (not on the audio thread: it takes some milliseconds) and kept.
  static const WavetableBank& shared();

  WavetableBank();

  // For a frequency given as a fraction of the sample rate, below 0.5.
  Wavetable table(Waveform waveform, double frequency) const;

  size_t bytes() const;

private:
  // Bands are a third of an octave wide; the lowest ends at rate / 2048, the highest at rate / 2.
  static constexpr int bands_per_octave = 3;
  static constexpr int octaves = 10;
  static constexpr size_t band_count = bands_per_octave * octaves + 1;

  using Bands = std::array<std::vector<float>, band_count>;

  static size_t harmonics(size_t band);
  Bands& bands_of(Waveform waveform) { return tables_[static_cast<size_t>(waveform)]; }

  std::array<Bands, waveform_count> tables_; // the sine has but the highest band
};

} // namespace kavo::sound
