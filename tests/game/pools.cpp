#include "tests/game/pools.h"

#include <algorithm>

#include "game/state.h"

namespace kavo::test {

namespace {

double in(const Array& pool, int64_t slot) {
  return qor_array_get(pool.get(), slot);
}

// What `read` makes of each slot whose entry in `lives` is positive.
template<typename Read>
auto live_entries(const Array& lives, int64_t slots, Read read) {
  std::vector<decltype(read(0))> entries;
  for (int64_t slot = 0; slot < slots; ++slot)
    if (in(lives, slot) > 0)
      entries.push_back(read(slot));
  return entries;
}

} // namespace

std::vector<Popup> popups() {
  return live_entries(POP_LIFE, NPOP, [](int64_t slot) {
    return Popup{in(POP_X, slot), in(POP_Y, slot), in(POP_VAL, slot)};
  });
}

std::vector<Streak> streaks() {
  return live_entries(STR_LIFE, NSTREAK, [](int64_t slot) {
    return Streak{in(STR_X, slot), in(STR_Y0, slot), in(STR_Y1, slot)};
  });
}

std::vector<Particle> particles() {
  return live_entries(PAR_LIFE, NPART, [](int64_t slot) {
    return Particle{in(PAR_X, slot),    in(PAR_Y, slot),
                    in(PAR_VX, slot),   in(PAR_VY, slot),
                    in(PAR_LIFE, slot), {in(PAR_R, slot), in(PAR_G, slot), in(PAR_B, slot)}};
  });
}

std::vector<Star> stars() {
  return live_entries(STAR_ON, NSTAR, [](int64_t slot) {
    return Star{in(STAR_R, slot), in(STAR_C, slot)};
  });
}

std::vector<Particle> particles_of(const std::array<double, 3>& color) {
  auto found = particles();
  std::erase_if(found, [&color](const Particle& particle) { return particle.color != color; });
  return found;
}

void put_star(int64_t slot, int64_t row, int64_t column) {
  qor_array_set(STAR_R.get(), slot, static_cast<double>(row));
  qor_array_set(STAR_C.get(), slot, static_cast<double>(column));
  qor_array_set(STAR_ON.get(), slot, 1.0);
}

void fill_particle_pool() {
  for (int64_t slot = 0; slot < NPART; ++slot)
    qor_array_set(PAR_LIFE.get(), slot, 1e9);
}

} // namespace kavo::test
