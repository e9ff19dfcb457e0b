// Recursing into rows, however deep they are nested.
#pragma once

#include "runtime/internal/deep_stack.h"
#include "runtime/internal/memory.h"
#include "runtime/value.h"

namespace qor {

// The stack that recursing into the rows of these arrays takes, 0 when any stack does; none when
// one of them holds itself, in whatever depth. Null arrays are empty.
struct Room {
  bool is_endless;
  size_t bytes;
};
Room room_for(const QorArray* a, const QorArray* b);

// Runs `work`, which recurses into the rows of the arrays. False, and nothing run, when one of them
// holds itself: such an array counts as an empty one.
template<typename Work>
bool with_room_for(const QorArray* a, const QorArray* b, Work work) {
  const Room room = room_for(a, b);
  if (room.is_endless)
    return false;
  if (!run_with_stack(room.bytes, work))
    end_for_want_of_memory();
  return true;
}

} // namespace qor
