#include "game/shell/input.h"

#include "game/commands.h"
#include "game/state.h"

namespace kavo {

namespace {

// The second name is asked for only when the first reads zero.
Out<bool> either_is_held(const char* first, const char* second) {
  if (is_set(TRY(command::key_state(first))))
    return true;
  return is_set(TRY(command::key_state(second)));
}

Out<> read_directions() {
  DO(KL = TRY(either_is_held("Left", "A")));
  DO(KR = TRY(either_is_held("Right", "D")));
  DO(KU = TRY(either_is_held("Up", "W")));
  DO(KDN = TRY(either_is_held("Down", "S")));
  return {};
}

Out<> read_other_keys() {
  DO(KSPACE = TRY(command::key_state("Space")));
  DO(KENTER = TRY(command::key_state("Return")));
  DO(KP = TRY(command::key_state("P")));
  DO(KO = TRY(command::key_state("O")));
  DO(KMK = TRY(command::key_state("M")));
  DO(KESC = TRY(command::key_state("Escape")));
  return {};
}

bool is_edge(double current, double previous) {
  return is_set(current) && !is_set(previous);
}

void find_edges() {
  EL = is_edge(KL, PL);
  ER = is_edge(KR, PR);
  EU = is_edge(KU, PU);
  EDN = is_edge(KDN, PDN);
  ESPACE = is_edge(KSPACE, PSPACE);
  EENTER = is_edge(KENTER, PENTER);
  EP = is_edge(KP, PP);
  EO = is_edge(KO, PO);
  EMK = is_edge(KMK, PMK);
  EESC = is_edge(KESC, PESC);
}

} // namespace

Out<> poll_keys() {
  DO(read_directions());
  DO(read_other_keys());
  DO(find_edges());
  return {};
}

void remember_keys() {
  PL = KL;
  PR = KR;
  PU = KU;
  PDN = KDN;
  PSPACE = KSPACE;
  PENTER = KENTER;
  PP = KP;
  PO = KO;
  PMK = KMK;
  PESC = KESC;
}

} // namespace kavo
