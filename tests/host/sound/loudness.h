// How loud a stereo signal is: ITU-R BS.1770-4, at 48 kHz. Samples are left and right in turn.
#pragma once

#include <vector>

#include "tests/host/sound/analysis.h"

namespace kavo::sound::analysis {

// Integrated loudness in LUFS: K-weighting and two gates.
double loudness(Samples interleaved);

// The same without gates, of all that is given: for passages shorter than the gates' blocks.
double ungated_loudness(Samples interleaved);

// What a loudspeaker gives that ends at `frequency` (Hz): a Butterworth high-pass of second order.
std::vector<float> high_passed(Samples interleaved, double frequency);

// The peak between the samples in dBTP: sixteen times oversampled through a windowed sinc, which
// reads higher than the four times of the recommendation, never lower.
double true_peak(Samples interleaved);

} // namespace kavo::sound::analysis
