#include "host/sound/sound_commands.h"

#include "host/sound/player.h"

namespace kavo::sound {

namespace {

using host::Arguments;
using host::sound_command;

void start(Player& player, const Arguments&) {
  player.init();
}

void set_tempo(Player& player, const Arguments& arguments) {
  player.bpm(arguments.number(0));
}

void set_voice(Player& player, const Arguments& arguments) {
  player.voice(arguments.number(0), arguments.text(1), arguments.number(2), arguments.number(3),
               arguments.number(4), arguments.number(5));
}

void set_filter(Player& player, const Arguments& arguments) {
  player.filter(arguments.number(0), arguments.number(1));
}

void set_gain(Player& player, const Arguments& arguments) {
  player.gain(arguments.number(0), arguments.number(1));
}

void set_reverb(Player& player, const Arguments& arguments) {
  player.reverb(arguments.number(0), arguments.number(1), arguments.number(2), arguments.number(3));
}

void set_reverb_send(Player& player, const Arguments& arguments) {
  player.reverb_send(arguments.number(0), arguments.number(1));
}

void play_note(Player& player, const Arguments& arguments) {
  player.play(arguments.number(0), arguments.text(1));
}

void play_pattern(Player& player, const Arguments& arguments) {
  player.note(arguments.text(0), arguments.number(1));
}

void stop(Player& player, const Arguments&) {
  player.shutdown();
}

constexpr host::Kind number = host::Kind::number;
constexpr host::Kind text = host::Kind::text;

constexpr host::Command commands[] = {
    sound_command("SOUND.INIT", start),
    sound_command("SOUND.BPM", set_tempo, number),
    // voice, waveform, attack, decay, sustain, release
    sound_command("SOUND.VOICE", set_voice, number, text, number, number, number, number),
    // voice, cutoff in hertz
    sound_command("SOUND.FILTER", set_filter, number, number),
    // voice, gain
    sound_command("SOUND.GAIN", set_gain, number, number),
    // room size, damping, width, wet level
    sound_command("SOUND.REVERB", set_reverb, number, number, number, number),
    // voice, level
    sound_command("SOUND.REVERBSEND", set_reverb_send, number, number),
    // voice, note
    sound_command("SOUND.PLAY", play_note, number, text),
    // pattern, loop flag
    sound_command("SOUND.NOTE", play_pattern, text, number),
    sound_command("SOUND.SHUTDOWN", stop),
};

} // namespace

std::span<const host::Command> sound_commands() {
  return commands;
}

} // namespace kavo::sound
