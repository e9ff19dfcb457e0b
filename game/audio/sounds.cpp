#include "game/audio/sounds.h"

#include "game/commands.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr int64_t melody_voice = 0;
constexpr int64_t bass_voice = 1;
constexpr int64_t lock_voice = 3;
constexpr int64_t clear_voice = 4;
constexpr int64_t low_voice = 5; // the tip and the end of the game share it

constexpr double melody_gain = 0.55;
constexpr double bass_gain = 0.6;

// One bar per top-level bracket.
constexpr const char* melody =
    "[c5 e5 g5 e5] [a4 c5 e5 c5] [f4 a4 c5 [d5 c5]] [g4 b4 d5 ~] [e5 g5 [a5 g5] e5] "
    "[d5 f5 [e5 d5] c5] [c5 [b4 c5] d5 e5] [c5 ~ ~ ~]";
constexpr const char* bass =
    "[[c2 c3]*4] [[a1 a2]*4] [[f1 f2]*4] [[g1 g2]*4] [[c2 c3]*4] [[d2 d3]*2 [f1 f2]*2] "
    "[[g1 g2]*2 [g1 b1]*2] [[c2 c3]*4]";

Out<> set_up_music_voices() {
  DO(command::sound_voice(melody_voice, "SQUARE", 0.01, 0.15, 0.3, 0.25));
  DO(command::sound_filter(melody_voice, 2000));
  DO(command::sound_gain(melody_voice, melody_gain));
  DO(command::sound_voice(bass_voice, "SAW", 0.005, 0.08, 0.5, 0.08));
  DO(command::sound_filter(bass_voice, 500));
  DO(command::sound_gain(bass_voice, bass_gain));
  DO(command::sound_reverb(0.7, 0.3, 0.8, 0.25));
  DO(command::sound_reverb_send(melody_voice, 0.4));
  return {};
}

// Sustain 0: every effect is a short pluck.
Out<> set_up_effect_voices() {
  DO(command::sound_voice(lock_voice, "TRIANGLE", 0.004, 0.1, 0, 0.08));
  DO(command::sound_gain(lock_voice, 0.5));
  DO(command::sound_voice(clear_voice, "SQUARE", 0.004, 0.09, 0, 0.07));
  DO(command::sound_gain(clear_voice, 0.45));
  DO(command::sound_voice(low_voice, "SAW", 0.02, 0.28, 0, 0.3));
  DO(command::sound_gain(low_voice, 0.5));
  return {};
}

Out<> play_effect(int64_t voice, const char* note) {
  if (SFXON != 0)
    DO(command::sound_play(voice, note));
  return {};
}

} // namespace

Out<> set_up_sound() {
  DO(command::sound_init());
  DO(command::sound_bpm(125));
  DO(set_up_music_voices());
  DO(set_up_effect_voices());
  DO(STARTMUSIC());
  return {};
}

Out<> STARTMUSIC() {
  ENTER();
  const Text opened = concat("< ", melody);
  const Text separated = concat(chars(opened), " , ");
  const Text layered = concat(chars(separated), bass);
  const Text pattern = concat(chars(layered), " >");
  DO(command::sound_note(chars(pattern), 1));
  return {};
}

Out<> apply_music_switch() {
  DO(command::sound_gain(melody_voice, MUSICON != 0 ? melody_gain : 0.0));
  DO(command::sound_gain(bass_voice, MUSICON != 0 ? bass_gain : 0.0));
  return {};
}

Out<> toggle_music() {
  DO(MUSICON = MUSICON == 0 ? 1 : 0);
  DO(apply_music_switch());
  return {};
}

Out<> SFXKAVO() {
  ENTER();
  return play_effect(low_voice, "c2");
}

Out<> SFXCLEAR() {
  ENTER();
  return play_effect(clear_voice, "g4");
}

Out<> SFXLOCK() {
  ENTER();
  return play_effect(lock_voice, "c3");
}

Out<> SFXOVER() {
  ENTER();
  return play_effect(low_voice, "c1");
}

} // namespace kavo
