// Makes single cycles of waves from their harmonics.
#pragma once

#include <complex>
#include <cstddef>
#include <map>
#include <span>
#include <vector>

#include "host/sound/fourier.h"

namespace kavo::sound {

class TableMaker {
public:
  // `size` samples (a power of two) of the sum of amplitudes[k - 1] * sin(2 pi k t), each harmonic
  // as much stronger as reading between samples in a straight line will weaken it.
  std::vector<double> single_cycle(std::span<const double> amplitudes, size_t size);

private:
  std::map<size_t, FourierTransform> transforms_; // set up once for all tables of one length
  std::vector<std::complex<double>> points_;
};

// The samples as they are read: followed by the first one again.
std::vector<float> closed(const std::vector<double>& cycle);

} // namespace kavo::sound
