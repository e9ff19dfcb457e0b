#include "game/commands.h"

#include "game/wiring.h"

namespace kavo::command {

namespace {

// An argument list as the bridge takes it: slots and tags side by side.
template<size_t N>
struct Arguments {
  qor_slot slots[N];
  uint32_t tags[N];
};

struct Argument {
  Argument(const Number& number) : slot(number.slot), tag(number.tag) {}
  Argument(int64_t value) : Argument(Number(value)) {}
  Argument(double value) : Argument(Number(value)) {}
  Argument(const char* text) : slot(qor_slot_of(text)), tag(QOR_TAG_STRING) {}
  Argument(const QorArray* array) : slot(qor_slot_of(array)), tag(QOR_TAG_ARRAY) {}

  qor_slot slot;
  uint32_t tag;
};

template<typename... Ts>
Arguments<sizeof...(Ts)> pack(const Ts&... arguments) {
  return {{Argument(arguments).slot...}, {Argument(arguments).tag...}};
}

template<typename... Ts>
double send(const char* name, const Ts&... arguments) {
  if constexpr (sizeof...(Ts) == 0) {
    return wiring.number(qor_runtime_handle(), name, nullptr, nullptr, 0);
  } else {
    const auto list = pack(arguments...);
    return wiring.number(qor_runtime_handle(), name, list.slots, list.tags,
                         static_cast<int64_t>(sizeof...(Ts)));
  }
}

template<typename... Ts>
Out<Array> ask(const char* name, const Ts&... arguments) {
  const auto list = pack(arguments...);
  return Array(wiring.array(qor_runtime_handle(), name, list.slots, list.tags,
                            static_cast<int64_t>(sizeof...(Ts))));
}

template<typename... Ts>
Out<> tell(const char* name, const Ts&... arguments) {
  send(name, arguments...);
  return {};
}

} // namespace

Out<> screen(int64_t width, int64_t height, const char* title, int64_t scale) {
  return tell("SCREEN", width, height, title, scale);
}
Out<> cls() {
  return tell("CLS");
}
Out<> draw_color(Number red, Number green, Number blue) {
  return tell("DRAWCOLOR", red, green, blue);
}
Out<> rect(Number x, Number y, Number width, Number height, int64_t fill) {
  return tell("RECT", x, y, width, height, fill);
}
Out<> line(double x1, double y1, double x2, double y2) {
  return tell("LINE", x1, y1, x2, y2);
}
Out<> text(Number x, Number y, const char* text) {
  return tell("TEXT", x, y, text);
}
Out<> screen_flip() {
  return tell("SCREENFLIP");
}
Out<> save_screenshot(const char* path) {
  return tell("GFX.SAVE_SCREENSHOT", path);
}
Out<> gfx_close() {
  return tell("GFX.CLOSE");
}

Out<double> key_state(const char* key) {
  return send("GFX.KEYSTATE", key);
}

Out<double> replay(int64_t standing, double milliseconds, double length, int64_t frame) {
  return send("REPLAY", standing, milliseconds, length, frame);
}

Out<> sound_init() {
  return tell("SOUND.INIT");
}
Out<> sound_bpm(int64_t tempo) {
  return tell("SOUND.BPM", tempo);
}
Out<> sound_voice(int64_t voice, const char* waveform, double attack, double decay, double sustain,
                  double release) {
  return tell("SOUND.VOICE", voice, waveform, attack, decay, sustain, release);
}
Out<> sound_filter(int64_t voice, int64_t cutoff) {
  return tell("SOUND.FILTER", voice, cutoff);
}
Out<> sound_gain(int64_t voice, double gain) {
  return tell("SOUND.GAIN", voice, gain);
}
Out<> sound_reverb(double room_size, double damping, double width, double wet) {
  return tell("SOUND.REVERB", room_size, damping, width, wet);
}
Out<> sound_reverb_send(int64_t voice, double level) {
  return tell("SOUND.REVERBSEND", voice, level);
}
Out<> sound_play(int64_t voice, const char* note) {
  return tell("SOUND.PLAY", voice, note);
}
Out<> sound_note(const char* pattern, int64_t loop) {
  return tell("SOUND.NOTE", pattern, loop);
}
Out<> sound_shutdown() {
  return tell("SOUND.SHUTDOWN");
}

Out<double> rnd(Number argument) {
  return send("RND", argument);
}

Out<> binwriter(const char* path, const char* content) {
  return tell("BINWRITER", path, content);
}

Out<Array> transpose(const QorArray* matrix) {
  return ask("TRANSPOSE", matrix);
}
Out<Array> reshape(const QorArray* values, const QorArray* shape) {
  return ask("RESHAPE", values, shape);
}
Out<Array> mvins(const QorArray* rows, int64_t position, int64_t second, const QorArray* row) {
  return ask("MVINS", rows, position, second, row);
}
Out<Array> split(const char* text, const char* separator) {
  return ask("SPLIT", text, separator);
}
Out<Array> dir(const char* path) {
  return ask("DIR$", path);
}

} // namespace kavo::command
