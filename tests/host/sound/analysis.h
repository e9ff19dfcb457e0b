// Measuring sound: spectra, pitch, level, likeness, reverberation. None of it shares code with
// what it measures but the Fourier transform, which has a test of its own.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace kavo::sound::analysis {

using Samples = std::span<const float>;

double decibels(double ratio);       // of amplitudes
double power_decibels(double ratio); // of powers

// Prints "measured: <what> = <value>", for whoever wants the figures and not only the verdict.
void report(const char* what, double value);

double peak(Samples samples);
double mean(Samples samples);
double root_mean_square(Samples samples);

// Powers of the bins 0 .. size / 2 under a seven-term Blackman-Harris window (side lobes below
// -180 dB, main lobe 7 bins to each side). The number of samples is a power of two. A sine of
// amplitude a adds up to a * a / 2 over its bins.
std::vector<double> power_spectrum(Samples samples);
inline constexpr size_t main_lobe = 8; // bins to each side

// The amplitude of the partial at `frequency` (as a fraction of the sample rate).
double amplitude_at(const std::vector<double>& spectrum, double frequency);

// What is not a harmonic of `frequency`, below `limit`, against all that is there (both as
// fractions of the sample rate), in dB.
double off_harmonics(const std::vector<double>& spectrum, double frequency, double limit);

// How far the pitch is from `frequency` (a fraction of the sample rate), in cents: from the
// phase of the fundamental in two neighbouring windows of whole periods within `samples`.
double cents_off(Samples samples, double frequency);

// RMS level above `frequency` in dBFS of the loudest window of `window` samples: an eighth-order
// Butterworth high-pass, whose first `settling` samples are left out.
double loudest_above(Samples samples, double frequency, size_t window, size_t settling);

// The mean frequency, each weighted by its power, as a fraction of the sample rate; 0 for silence
// and for less than 4096 samples.
double spectral_centroid(Samples samples);

// 1 for the same signal, -1 for its opposite, 0 for signals that have nothing in common.
double correlation(Samples one, Samples other);

// What of `out` is not `in` times a constant, against all of it, in dB.
double distortion(Samples in, Samples out);

// The time in which the energy decays by 60 dB, in samples, of the octave around `frequency`:
// backward integration (Schroeder 1965), fitted from -5 dB to -35 dB.
double reverberation_time(Samples samples, double frequency);

} // namespace kavo::sound::analysis
