#include "game/highscores/entry.h"

#include <cmath>

#include "game/highscores/table.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr double letters = 27.0; // A..Z and the blank
constexpr int64_t positions = 3;

void turn_letter(double steps) {
  const double letter = qor_array_get(ENTERNAME.get(), ENTERPOS) + steps;
  qor_array_set(ENTERNAME.get(), ENTERPOS, std::fmod(letter, letters));
}

Out<Text> letter_at(int64_t position) {
  return ENTER_CHAR$(qor_array_get(ENTERNAME.get(), position));
}

Out<> confirm() {
  const Text first = TRY(letter_at(0));
  const Text second = TRY(letter_at(1));
  const Text third = TRY(letter_at(2));
  const Text two = concat(chars(first), chars(second));
  const Text name = concat(chars(two), chars(third));
  DO(HS_INSERT(chars(name), static_cast<double>(ENTERRANK), static_cast<double>(SCORE)));
  DO(enter_state("title"));
  return {};
}

} // namespace

Out<Text> ENTER_CHAR$(double index) {
  ENTER();
  if (TRY(index >= letters - 1))
    return copy(" ");
  return Text(qor_chr(65 + qor_int(index)));
}

Out<> UPDATEENTER(double up, double down, double left, double right, double enter) {
  ENTER();
  if (is_set(up))
    DO(turn_letter(1));
  if (is_set(down))
    DO(turn_letter(letters - 1));
  if (is_set(left) && ENTERPOS > 0)
    DO(ENTERPOS -= 1);
  if (is_set(right) && ENTERPOS < positions - 1)
    DO(ENTERPOS += 1);
  if (is_set(enter))
    DO(confirm());
  return {};
}

} // namespace kavo
