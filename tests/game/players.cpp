#include "tests/game/players.h"

#include "game/board/collision.h"
#include "game/playfield/movement.h"
#include "game/state.h"

namespace kavo::test {

namespace {

constexpr int patience = 24; // more presses than any placement needs

// The value of a routine, after the poll that its caller owes.
template<typename T>
T value_of(Out<T> out) {
  error_is_pending();
  return Opener::open(out);
}

bool is_free(int64_t column) {
  return value_of(CHECKCOLLISION(CURRENTPIECE, static_cast<double>(column),
                                 static_cast<double>(PIECEY))) == 0.0;
}

void ignore(Out<>) {
  error_is_pending();
}

} // namespace

void drop_at(const Placement& placement) {
  for (int turn = 0; turn < placement.turns; ++turn)
    ignore(TRYROTATE());
  while (PIECEX != placement.column) {
    const int64_t next = PIECEX + (PIECEX < placement.column ? 1 : -1);
    if (!is_free(next))
      break;
    PIECEX = next;
  }
  ignore(HARDDROP());
}

Keys ClumsyPlayer::keys() {
  constexpr const char* names[] = {"Left", "Right", "Up", "Down", "A", "D", "W", "S"};
  Keys held;
  for (const char* name : names)
    if (random_() % 6 == 0)
      held.insert(name);
  if (random_() % 25 == 0)
    held.insert("Space");
  return held;
}

void GreedyPlayer::plan() {
  wanted_ = best_placement();
  patience_ = patience;
}

Keys GreedyPlayer::keys() {
  if (PIECEY < last_row_ || last_row_ < 0)
    plan(); // a piece that stands higher than the last one did is a new one
  last_row_ = PIECEY;
  if (patience_-- <= 0)
    return {"Space"};
  if (wanted_.turns > 0) {
    --wanted_.turns;
    return {"Up"};
  }
  if (PIECEX != wanted_.column)
    return {PIECEX < wanted_.column ? "Right" : "Left"};
  last_row_ = ROWS; // whatever comes next is a new piece
  return {"Space"};
}

Visitor::Visitor(uint64_t seed, int64_t frames) : random_(seed), last_frame_(frames) {}

Keys Visitor::keys() {
  ++frame_;
  note_screen(chars(GSTATE$));
  return frame_ % 2 == 0 ? press() : Keys{};
}

void Visitor::note_screen(const std::string& screen) {
  if (screen_ == "title" && screen == "play")
    begin_game();
  if (screen_ == "enter" && screen != "enter")
    ++names_;
  screen_ = screen;
  screens_.insert(screen);
}

void Visitor::begin_game() {
  if (++games_ % 2 == 1)
    player_ = std::make_unique<ClumsyPlayer>(random_());
  else
    player_ = std::make_unique<GreedyPlayer>();
}

Keys Visitor::press() {
  if (state_is("title"))
    return press_on_title();
  if (state_is("enter"))
    return press_in_entry();
  if (frame_ >= last_frame_)
    return {"Escape"};
  if (state_is("options"))
    return random_() % 4 == 0 ? Keys{"Escape"} : Keys{random_() % 2 == 0 ? "Down" : "Return"};
  if (state_is("pause"))
    return {random_() % 8 == 0 ? "Escape" : "P"};
  return press_in_play();
}

Keys Visitor::press_on_title() {
  if (frame_ >= last_frame_)
    return {"Escape"};
  return {random_() % 4 == 0 ? "O" : "Space"};
}

Keys Visitor::press_in_play() {
  if (random_() % 400 == 0)
    return {"P"};
  if (random_() % 500 == 0)
    return {"M"};
  return player_->keys();
}

Keys Visitor::press_in_entry() {
  if (random_() % 6 == 0)
    return {"Return"};
  constexpr const char* names[] = {"Up", "Down", "Left", "Right"};
  return {names[random_() % 4]};
}

} // namespace kavo::test
