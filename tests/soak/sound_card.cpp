#include "tests/soak/sound_card.h"

#include <SDL_audio.h>
#include <SDL_timer.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace kavo::soak {

namespace {

constexpr int block = 512;
constexpr int channels = 2;
constexpr SDL_AudioDeviceID the_device = 2; // SDL's own ids begin there

struct Card {
  SDL_AudioSpec spec = {};
  bool is_open = false;
  bool is_paused = true;
  int64_t frames_due = 0; // since the start, taken or passed in silence
  SoundTaken taken = {};
};

Card& card() {
  static Card card;
  return card;
}

void take_block() {
  alignas(float) static std::array<float, size_t{block} * channels> samples;
  Card& now = card();
  now.spec.callback(now.spec.userdata, reinterpret_cast<Uint8*>(samples.data()), sizeof samples);
  for (const float sample : samples)
    now.taken.peak = std::max(now.taken.peak, std::abs(sample));
  now.taken.frames += block;
}

} // namespace

void play_sound_until(double milliseconds) {
  Card& now = card();
  const auto due = static_cast<int64_t>(milliseconds * sound_rate / 1000);
  for (; now.frames_due + block <= due; now.frames_due += block)
    if (now.is_open && !now.is_paused)
      take_block();
}

SoundTaken sound_taken() {
  return card().taken;
}

} // namespace kavo::soak

// These stand before SDL's own.
extern "C" {

using kavo::soak::card;

SDL_AudioDeviceID SDL_OpenAudioDevice(const char*, int, const SDL_AudioSpec* desired,
                                      SDL_AudioSpec* obtained, int) {
  card().spec = *desired;
  card().spec.freq = kavo::soak::sound_rate;
  card().spec.samples = kavo::soak::block;
  card().is_open = true;
  card().is_paused = true;
  *obtained = card().spec;
  return kavo::soak::the_device;
}

void SDL_PauseAudioDevice(SDL_AudioDeviceID, int pause_on) {
  card().is_paused = pause_on != 0;
}

SDL_AudioStatus SDL_GetAudioDeviceStatus(SDL_AudioDeviceID) {
  return card().is_paused ? SDL_AUDIO_PAUSED : SDL_AUDIO_PLAYING;
}

void SDL_CloseAudioDevice(SDL_AudioDeviceID) {
  card().is_open = false;
}

// The host waits with it until the engine has faded out.
void SDL_Delay(Uint32) {
  if (card().is_open && !card().is_paused)
    kavo::soak::take_block();
}
}
