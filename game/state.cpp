#include "game/state.h"

namespace kavo {

// NOLINTBEGIN(cppcoreguidelines-macro-usage): a row of the list becomes a statement
#define GEOMETRY(type, name, initial) type name;
#define VARIABLE(type, name, initial) type name;
#include "game/state_variables.inc"
#undef GEOMETRY
#undef VARIABLE

void set_geometry() {
#define GEOMETRY(type, name, initial) name = initial;
#define VARIABLE(type, name, initial)
#include "game/state_variables.inc"
#undef GEOMETRY
#undef VARIABLE
}

void set_initial_values() {
#define GEOMETRY(type, name, initial)
#define VARIABLE(type, name, initial) name = initial;
#include "game/state_variables.inc"
#undef GEOMETRY
#undef VARIABLE
}

namespace {

template<typename T>
void empty(T&) {}
void empty(Array& array) {
  array.reset();
}
void empty(Text& text) {
  text.reset();
}

} // namespace

void release_state() {
#define GEOMETRY(type, name, initial)
#define VARIABLE(type, name, initial) empty(name);
#include "game/state_variables.inc"
#undef GEOMETRY
#undef VARIABLE
}
// NOLINTEND(cppcoreguidelines-macro-usage)

bool state_is(const char* state) {
  return qor_str_eq(chars(GSTATE$), state) != 0;
}
void enter_state(const char* state) {
  GSTATE$ = copy(state);
}

} // namespace kavo
