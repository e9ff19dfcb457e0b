/* The runtime's side of the host bridge: the process arguments, the host's handle, and the tables
   of event handlers. Not synchronised; the host delivers events on the thread that runs the
   program. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Keeps the process arguments, which must outlive the program's use of them. */
void qor_set_args(int argc, char** argv);

/* The process arguments, program name first, as a new string array for the caller. */
QorArray* qor_os_args(void);

/* The handle that qorrt_init returned; 0 until it is set. */
void qor_runtime_set_handle(int64_t handle);
int64_t qor_runtime_handle(void);

/* Takes an event's argument list. The list and what it holds belong to the runtime and end with
   the call: a handler copies what it wants to keep. */
typedef void (*qor_event_handler)(QorArray* arguments);

/* Makes `handler` the one that receives the input event `name`: "KEYDOWN", "KEYUP", "QUIT",
   "MOUSEDOWN", "MOUSEUP" or "MOUSEMOVE", to the letter. Any other name, a null name and a null
   handler are ignored. */
void qorrt_register_event_handler(const char* name, qor_event_handler handler);

/* Delivers an input event to its handler; without one nothing is built. "QUIT" passes an empty
   array. The others pass one reference to a QorMap, filled as far as `count` allows:
     KEYDOWN, KEYUP      scancode, keycode, key (text; its value is the pointer), repeat
     MOUSEDOWN, MOUSEUP  button, x, y
     MOUSEMOVE           x, y
   Numbers are doubles. Read the map with qor_array_get_ptr(arguments, 0). `tags` is not read. */
void qorrt_dispatch_event(const char* name, const int64_t* values, const uint32_t* tags,
                          int64_t count);

/* Makes `handler` the one for the program's own event `name`, replacing an earlier one. A null
   name or handler is ignored. */
void qor_event_on(const char* name, qor_event_handler handler);

/* Calls the handler of `name`, if there is one, with a string array that holds a copy of `text`
   ("" for null). An event without a handler is no error. */
void qor_event_raise_str(const char* name, const char* text);

#ifdef __cplusplus
}
#endif
