/* The host library's thirteen operations, the only way from a program to screen, keyboard,
   sound and chance. All are called from one thread. Whatever library offers these symbols is a
   host: the real one, a recording one, one that fails on command. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Receives each input event: its name and `count` values with their tags. The string values stay
   the host's and live as long as the call. */
typedef void (*qorrt_dispatch_fn)(const char* name, const int64_t* values, const uint32_t* tags,
                                  int64_t count);

/* Starts the host; called once, before any other operation. Returns the handle that every other
   operation takes, never 0. */
int64_t qorrt_init(int argc, char** argv);

/* Ends the host: silences the sound, closes the screen, forgets everything. Twice is harmless. */
void qorrt_shutdown(int64_t handle);

void qorrt_set_event_dispatcher(int64_t handle, qorrt_dispatch_fn dispatch);

/* Runs the command `name` with `n` arguments (`slots` points at n qor_slot, `tags` at n tags; both
   may be null when n is 0) and returns its number, 0 when it has none. A command that fails does
   nothing, returns 0 and leaves a message for qorrt_last_error. */
double qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                            const uint32_t* tags, int64_t n);

/* The same for a command whose result is an array. The array is new and belongs to the caller,
   rows and strings included (qor_array_free_deep); null when the command failed. */
QorArray* qorrt_call_typed_arr(int64_t handle, const char* name, const void* slots,
                               const uint32_t* tags, int64_t n);

/* The message of the last command that failed, null when none has since the last clearing. The
   text stays the host's and is valid until the next operation. */
const char* qorrt_last_error(int64_t handle);
void qorrt_clear_last_error(int64_t handle);

/* Bracket one pass of a loop; scopes nest. The token goes back to qorrt_frame_end. */
int64_t qorrt_frame_begin(int64_t handle);
void qorrt_frame_end(int64_t handle, int64_t token);

/* Read a value that the host handed out under QOR_TAG_HOST: as a number, or as new text that the
   caller frees. */
double qorrt_val_to_f64(int64_t handle, int64_t value);
char* qorrt_val_to_str(int64_t handle, int64_t value);

/* Says that the string at `s` is exactly `length` bytes long and may hold NUL bytes; a negative
   length forgets it, which its owner does before freeing it. */
void qorrt_register_binary(const char* s, int64_t length);

/* The registered length of the string at `s`, negative when it is not registered. */
int64_t qorrt_strlen(const char* s);

#ifdef __cplusplus
}
#endif
