#include "host/sound_commands.h"

#include "host/host.h"

namespace kavo::host {

double start_sound(Host& host, const Arguments&) {
  host.sound->init();
  return 0;
}

double set_tempo(Host& host, const Arguments& arguments) {
  host.sound->bpm(arguments.number(0));
  return 0;
}

double set_voice(Host& host, const Arguments& arguments) {
  host.sound->voice(arguments.number(0), arguments.text(1), arguments.number(2),
                    arguments.number(3), arguments.number(4), arguments.number(5));
  return 0;
}

double set_filter(Host& host, const Arguments& arguments) {
  host.sound->filter(arguments.number(0), arguments.number(1));
  return 0;
}

double set_gain(Host& host, const Arguments& arguments) {
  host.sound->gain(arguments.number(0), arguments.number(1));
  return 0;
}

double set_reverb(Host& host, const Arguments& arguments) {
  host.sound->reverb(arguments.number(0), arguments.number(1), arguments.number(2),
                     arguments.number(3));
  return 0;
}

double set_reverb_send(Host& host, const Arguments& arguments) {
  host.sound->reverb_send(arguments.number(0), arguments.number(1));
  return 0;
}

double play_note(Host& host, const Arguments& arguments) {
  host.sound->play(arguments.number(0), arguments.text(1));
  return 0;
}

double play_pattern(Host& host, const Arguments& arguments) {
  host.sound->note(arguments.text(0), arguments.number(1));
  return 0;
}

double stop_sound(Host& host, const Arguments&) {
  host.sound->shutdown();
  return 0;
}

} // namespace kavo::host
