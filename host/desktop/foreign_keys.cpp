#include "host/desktop/foreign_keys.h"

#include <SDL_syswm.h>
#include <X11/Xlib.h>

namespace kavo::host {

namespace {

// The other modes come with a grab of the keyboard, over which SDL keeps what it knows.
bool is_arrival(const XEvent& event) {
  return event.type == FocusIn &&
         (event.xfocus.mode == NotifyNormal || event.xfocus.mode == NotifyWhileGrabbed);
}

bool is_bit_set(const char* bits, unsigned index) {
  return (static_cast<unsigned char>(bits[index / 8]) >> index % 8U & 1U) != 0;
}

// SDL's queue has an end, and X tells of much more than keys.
int is_wanted(void*, SDL_Event* event) {
  if (event->type != SDL_SYSWMEVENT || event->syswm.msg->subsystem != SDL_SYSWM_X11)
    return 1;
  const int type = event->syswm.msg->msg.x11.event.type; // NOLINT(*-union-access)
  return static_cast<int>(type == KeyPress || type == KeyRelease || type == FocusIn ||
                          type == KeymapNotify);
}

} // namespace

void ForeignKeys::listen() {
  SDL_SetEventFilter(is_wanted, nullptr);
  SDL_EventState(SDL_SYSWMEVENT, SDL_ENABLE);
}

void ForeignKeys::note(const SDL_SysWMmsg& message) {
  if (message.subsystem != SDL_SYSWM_X11)
    return;
  const XEvent& event = message.msg.x11.event; // NOLINT(*-union-access): the subsystem says so
  if (event.type == KeymapNotify && has_just_come_)
    for (unsigned code = 0; code < key_codes; ++code)
      held_[code] = is_bit_set(event.xkeymap.key_vector, code);
  has_just_come_ = is_arrival(event);
  if (event.type == KeyPress)
    last_pressed_ = event.xkey.keycode % key_codes;
  else if (event.type == KeyRelease)
    held_[event.xkey.keycode % key_codes] = false;
}

} // namespace kavo::host
