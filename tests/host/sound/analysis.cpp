#include "tests/host/sound/analysis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdio>
#include <map>
#include <numbers>

#include "host/sound/fourier.h"
#include "tests/host/sound/biquad.h"

namespace kavo::sound::analysis {

namespace {

constexpr double pi = std::numbers::pi;

std::vector<double> make_blackman_harris(size_t size) {
  constexpr std::array<double, 7> terms = {0.27105140069342, 0.43329793923448, 0.21812299954311,
                                           0.06592544638803, 0.01081174209837, 0.00077658482522,
                                           0.00001388721735};
  std::vector<double> window(size);
  for (size_t n = 0; n < size; ++n) {
    const double turn = 2.0 * pi * static_cast<double>(n) / static_cast<double>(size);
    for (size_t k = 0; k < terms.size(); ++k)
      window[n] += (k % 2 == 0 ? 1 : -1) * terms[k] * std::cos(turn * static_cast<double>(k));
  }
  return window;
}

const std::vector<double>& blackman_harris(size_t size) {
  static std::map<size_t, std::vector<double>> windows;
  auto& window = windows[size];
  if (window.empty())
    window = make_blackman_harris(size);
  return window;
}

double sum_of_squares(const std::vector<double>& values) {
  double sum = 0.0;
  for (const double value : values)
    sum += value * value;
  return sum;
}

// Bins from `center` - main_lobe to `center` + main_lobe, as far as there are any.
double power_around(const std::vector<double>& spectrum, double frequency) {
  const double bins = 2.0 * static_cast<double>(spectrum.size() - 1);
  const auto center = static_cast<size_t>(std::lround(frequency * bins));
  const size_t from = center < main_lobe ? 0 : center - main_lobe;
  const size_t to = std::min(center + main_lobe, spectrum.size() - 1);
  double sum = 0.0;
  for (size_t i = from; i <= to; ++i)
    sum += spectrum[i];
  return sum;
}

std::complex<double> fundamental(Samples samples, size_t start, size_t length, double frequency) {
  std::complex<double> sum = 0.0;
  const double periods = static_cast<double>(length) * frequency;
  for (size_t i = 0; i < length; ++i) {
    const double turn = 2.0 * pi * frequency * static_cast<double>(i);
    const double hann = 0.5 - 0.5 * std::cos(turn / periods);
    sum += static_cast<double>(samples[start + i]) * hann * std::polar(1.0, -turn);
  }
  return sum;
}

} // namespace

double decibels(double ratio) {
  return 20.0 * std::log10(std::max(ratio, 1e-15));
}
double power_decibels(double ratio) {
  return 10.0 * std::log10(std::max(ratio, 1e-30));
}

void report(const char* what, double value) {
  (void)std::printf("measured: %s = %.6g\n", what, value);
}

double peak(Samples samples) {
  double loudest = 0.0;
  for (const float sample : samples)
    loudest = std::max(loudest, std::abs(static_cast<double>(sample)));
  return loudest;
}

double mean(Samples samples) {
  double sum = 0.0;
  for (const float sample : samples)
    sum += sample;
  return sum / static_cast<double>(samples.size());
}

double root_mean_square(Samples samples) {
  double sum = 0.0;
  for (const float sample : samples)
    sum += static_cast<double>(sample) * sample;
  return std::sqrt(sum / static_cast<double>(samples.size()));
}

std::vector<double> power_spectrum(Samples samples) {
  const std::vector<double>& window = blackman_harris(samples.size());
  std::vector<std::complex<double>> points(samples.size());
  for (size_t i = 0; i < samples.size(); ++i)
    points[i] = static_cast<double>(samples[i]) * window[i];
  FourierTransform(samples.size()).transform(points);
  const double scale = 2.0 / (static_cast<double>(samples.size()) * sum_of_squares(window));
  std::vector<double> spectrum(samples.size() / 2 + 1);
  for (size_t i = 0; i < spectrum.size(); ++i)
    spectrum[i] = std::norm(points[i]) * scale;
  return spectrum;
}

double amplitude_at(const std::vector<double>& spectrum, double frequency) {
  return std::sqrt(2.0 * power_around(spectrum, frequency));
}

double off_harmonics(const std::vector<double>& spectrum, double frequency, double limit) {
  const double bins = 2.0 * static_cast<double>(spectrum.size() - 1);
  double all = 0.0, off = 0.0;
  for (size_t i = 0; static_cast<double>(i) < limit * bins; ++i) {
    const double harmonic = static_cast<double>(i) / (frequency * bins);
    const double distance = std::abs(harmonic - std::round(harmonic)) * frequency * bins;
    all += spectrum[i];
    if (distance > main_lobe)
      off += spectrum[i];
  }
  return power_decibels(off / all);
}

double cents_off(Samples samples, double frequency) {
  const double half = static_cast<double>(samples.size()) / 2.0;
  const double periods = std::floor(half * frequency);
  const auto length = static_cast<size_t>(std::lround(periods / frequency));
  const auto hop = samples.size() - length;
  const auto turned = fundamental(samples, hop, length, frequency) /
                      fundamental(samples, 0, length, frequency) *
                      std::polar(1.0, -2.0 * pi * frequency * static_cast<double>(hop));
  const double off = std::arg(turned) / (2.0 * pi * static_cast<double>(hop));
  return 1200.0 * std::log2(1.0 + off / frequency);
}

double spectral_centroid(Samples samples) {
  constexpr size_t window = 4096;
  double weighted = 0.0, all = 0.0;
  for (size_t start = 0; start + window <= samples.size(); start += window / 2) {
    const auto spectrum = power_spectrum(samples.subspan(start, window));
    for (size_t i = 1; i < spectrum.size(); ++i) {
      weighted += spectrum[i] * static_cast<double>(i) / window;
      all += spectrum[i];
    }
  }
  return all == 0.0 ? 0.0 : weighted / all;
}

double correlation(Samples one, Samples other) {
  double product = 0.0;
  for (size_t i = 0; i < one.size(); ++i)
    product += static_cast<double>(one[i]) * other[i];
  const double size = static_cast<double>(one.size());
  return product / size / (root_mean_square(one) * root_mean_square(other));
}

double distortion(Samples in, Samples out) {
  double product = 0.0, in_power = 0.0, out_power = 0.0;
  for (size_t i = 0; i < in.size(); ++i) {
    product += static_cast<double>(in[i]) * out[i];
    in_power += static_cast<double>(in[i]) * in[i];
    out_power += static_cast<double>(out[i]) * out[i];
  }
  return power_decibels(1.0 - product * product / (in_power * out_power));
}

double loudest_above(Samples samples, double frequency, size_t window, size_t settling) {
  std::vector<Biquad> sections;
  for (int k = 1; k <= 7; k += 2)
    sections.push_back(high_pass(frequency, 0.5 / std::cos(k * pi / 16.0)));
  std::vector<double> squares;
  for (const float sample : samples) {
    double value = sample;
    for (auto& section : sections)
      value = section.process(value);
    squares.push_back(value * value);
  }
  double sum = 0.0, loudest = 0.0;
  for (size_t i = settling; i < squares.size(); ++i) {
    sum += squares[i];
    if (i >= settling + window)
      sum -= squares[i - window];
    loudest = std::max(loudest, sum);
  }
  return power_decibels(loudest / static_cast<double>(window));
}

double reverberation_time(Samples samples, double frequency) {
  // Backwards through the filter, so that its own ringing lies before the decay, not on it.
  Biquad first = band_pass(frequency, std::numbers::sqrt2);
  Biquad second = first;
  std::vector<double> energy(samples.size());
  double sum = 0.0;
  for (size_t i = samples.size(); i-- > 0;) {
    const double value = second.process(first.process(samples[i]));
    energy[i] = sum += value * value;
  }
  const auto reaches = [&](double level) {
    const double wanted = energy[0] * std::pow(10.0, level / 10.0);
    return std::find_if(energy.begin(), energy.end(), [=](double e) { return e <= wanted; }) -
           energy.begin();
  };
  const auto end = reaches(-35.0);
  double sx = 0, sy = 0, sxx = 0, sxy = 0, n = 0;
  for (auto i = reaches(-5.0); i < end; i += 16) {
    const auto x = static_cast<double>(i);
    const double y = 10.0 * std::log10(energy[static_cast<size_t>(i)]);
    sx += x, sy += y, sxx += x * x, sxy += x * y, n += 1;
  }
  return -60.0 / ((n * sxy - sx * sy) / (n * sxx - sx * sx));
}

} // namespace kavo::sound::analysis
