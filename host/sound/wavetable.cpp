#include "host/sound/wavetable.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

#include "host/sound/table_maker.h"

namespace kavo::sound {

namespace {

constexpr double pi = std::numbers::pi;

// Reading between samples in a straight line mirrors harmonic k of a table of N samples at
// N - k and N + k, weaker by (k / N)^2. At 128 samples a harmonic all mirrors together stay 95 dB
// below the wave; the longest tables get by with 32, for their upper harmonics are weak.
constexpr size_t samples_per_harmonic = 128;
constexpr size_t shortest_table = 2048;
constexpr size_t longest_table = 32768;
constexpr size_t longest_triangle = 4096; // its harmonics fall with the square

// The Fourier series of the ideal waves, the amplitude of sin(2 pi k t); the square has none of
// its own, it is made from the saw.
double harmonic(Waveform waveform, size_t k) {
  const auto order = static_cast<double>(k);
  const bool is_odd = k % 2 == 1;
  switch (waveform) {
  case Waveform::saw:
    return (is_odd ? 2.0 : -2.0) / (pi * order);
  case Waveform::triangle:
    return is_odd ? (k % 4 == 1 ? 8.0 : -8.0) / (pi * pi * order * order) : 0.0;
  default:
    return k == 1 ? 1.0 : 0.0;
  }
}

size_t table_size(Waveform waveform, size_t harmonics) {
  const size_t longest = waveform == Waveform::triangle ? longest_triangle : longest_table;
  return std::clamp(std::bit_ceil(harmonics * samples_per_harmonic), shortest_table, longest);
}

std::vector<double> single_cycle(TableMaker& maker, Waveform waveform, size_t harmonics) {
  std::vector<double> amplitudes(harmonics);
  for (size_t k = 1; k <= harmonics; ++k)
    amplitudes[k - 1] = harmonic(waveform, k);
  return maker.single_cycle(amplitudes, table_size(waveform, harmonics));
}

// A saw less itself half a cycle on: the even harmonics cancel out, the odd ones double.
std::vector<double> square_from(const std::vector<double>& saw) {
  const size_t half = saw.size() / 2;
  std::vector<double> cycle(saw.size());
  for (size_t i = 0; i < half; ++i) {
    cycle[i] = saw[i] - saw[i + half];
    cycle[i + half] = -cycle[i];
  }
  return cycle;
}

} // namespace

std::optional<Waveform> waveform_named(std::string_view name) {
  if (name == "SQUARE")
    return Waveform::square;
  if (name == "SAW")
    return Waveform::saw;
  if (name == "TRIANGLE")
    return Waveform::triangle;
  if (name == "SINE")
    return Waveform::sine;
  return std::nullopt;
}

const WavetableBank& WavetableBank::shared() {
  static const auto& bank = *new WavetableBank; // read by the device's thread until the very end
  return bank;
}

WavetableBank::WavetableBank() {
  TableMaker maker;
  for (size_t band = 0; band < band_count; ++band) {
    const auto saw = single_cycle(maker, Waveform::saw, harmonics(band));
    bands_of(Waveform::saw)[band] = closed(saw);
    bands_of(Waveform::square)[band] = closed(square_from(saw));
    bands_of(Waveform::triangle)[band] =
        closed(single_cycle(maker, Waveform::triangle, harmonics(band)));
  }
  bands_of(Waveform::sine).back() = closed(single_cycle(maker, Waveform::sine, 1));
}

// As many as stay below half the sample rate at the upper end of the band.
size_t WavetableBank::harmonics(size_t band) {
  const double octaves_below = octaves + 1 - static_cast<double>(band) / bands_per_octave;
  const double upper_end = std::exp2(-octaves_below);
  return std::max<size_t>(1, static_cast<size_t>(std::ceil(0.5 / upper_end)) - 1);
}

Wavetable WavetableBank::table(Waveform waveform, double frequency) const {
  const double position = bands_per_octave * (std::log2(frequency) + octaves + 1);
  const double last = band_count - 1;
  auto band = static_cast<size_t>(std::clamp(std::ceil(position), 0.0, last));
  if (waveform == Waveform::sine)
    band = band_count - 1;
  const auto& samples = tables_[static_cast<size_t>(waveform)][band];
  return {samples.data(), std::countr_zero(samples.size() - 1)};
}

size_t WavetableBank::bytes() const {
  size_t sum = 0;
  for (const auto& bands : tables_)
    for (const auto& samples : bands)
      sum += samples.size() * sizeof(float);
  return sum;
}

} // namespace kavo::sound
