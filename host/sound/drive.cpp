#include "host/sound/drive.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

#include "host/sound/pitch.h"
#include "host/sound/table_maker.h"

namespace kavo::sound {

namespace {

constexpr size_t samples_per_harmonic = 128;
constexpr size_t shortest_table = 2048;

constexpr double lowest_heard = 150.0; // Hz: what a small loudspeaker gives begins about here
constexpr double softening = 1200.0;   // from here on the partials fall faster: warm, not shrill
constexpr double highest_added = 2500.0;

// A saw's partial above the fundamental, as far as it lies where it is wanted.
double partial(size_t k, double fundamental) {
  if (k == 1)
    return 0.0;
  const double frequency = static_cast<double>(k) * fundamental;
  const double below = lowest_heard / frequency;
  const double above = frequency / softening;
  const double wanted = 1.0 / ((1.0 + below * below) * (1.0 + above * above));
  return (k % 2 == 1 ? 2.0 : -2.0) / (std::numbers::pi * static_cast<double>(k)) * wanted;
}

} // namespace

const Drive& Drive::shared() {
  static const auto& drive = *new Drive; // read by the device's thread until the very end
  return drive;
}

Drive::Drive() {
  TableMaker maker;
  for (size_t i = 0; i < table_count; ++i) {
    const double middle = lowest_note + notes_a_table * (static_cast<double>(i) + 0.375);
    const double fundamental = frequency_of(middle);
    std::vector<double> partials(static_cast<size_t>(highest_added / fundamental));
    for (size_t k = 1; k <= partials.size(); ++k)
      partials[k - 1] = partial(k, fundamental);
    const size_t size =
        std::max(shortest_table, std::bit_ceil(partials.size() * samples_per_harmonic));
    tables_[i] = closed(maker.single_cycle(partials, size));
  }
}

Overtones Drive::overtones(int note) const {
  if (note >= first_pure_note)
    return {};
  constexpr float full_level = 3.2f;
  constexpr float fading_notes = first_pure_note - highest_full_note;
  const float way = std::max(0.0f, static_cast<float>(note - highest_full_note) / fading_notes);
  const float level = full_level * (1.0f - way * way * (3.0f - 2.0f * way));
  const auto& samples =
      tables_[static_cast<size_t>(std::max(0, note - lowest_note) / notes_a_table)];
  return {{samples.data(), std::countr_zero(samples.size() - 1)}, level};
}

size_t Drive::bytes() const {
  size_t sum = 0;
  for (const auto& samples : tables_)
    sum += samples.size() * sizeof(float);
  return sum;
}

} // namespace kavo::sound
