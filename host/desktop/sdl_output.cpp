#include "host/desktop/sdl_output.h"

#include <SDL.h>

#include <string>

#include "host/desktop/alsa_messages.h"
#include "host/desktop/sound_client.h"

namespace kavo::sound {

namespace {

constexpr int wanted_rate = 48000;

// 10.7 ms. Left to itself SDL takes 4096, and an effect would come 85 ms late.
constexpr int wanted_block = 512;

constexpr int channels = 2;

std::string reason() {
  const std::string text = SDL_GetError();
  return text.empty() ? "no reason given" : text;
}

} // namespace

// The sample rate and the block may be what the device prefers; samples arrive as floats in
// stereo whatever it is.
int SdlOutput::open() {
  keep_sound_client_out_of_home();
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
    throw OutputError(reason());
  has_subsystem_ = true;
  silence_alsa();
  SDL_AudioSpec wanted = {};
  wanted.freq = wanted_rate;
  wanted.format = AUDIO_F32SYS;
  wanted.channels = channels;
  wanted.samples = wanted_block;
  wanted.callback = fill;
  wanted.userdata = this;
  SDL_AudioSpec obtained = {};
  device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, &obtained,
                                SDL_AUDIO_ALLOW_FREQUENCY_CHANGE | SDL_AUDIO_ALLOW_SAMPLES_CHANGE);
  if (device_ == 0) {
    const std::string why = reason();
    close();
    throw OutputError(why);
  }
  return obtained.freq;
}

void SdlOutput::start(AudioSource& source) {
  source_ = &source;
  SDL_PauseAudioDevice(device_, 0);
}

// SDL stops a device that has been unplugged, and nothing else does.
bool SdlOutput::is_lost() const {
  return device_ != 0 && SDL_GetAudioDeviceStatus(device_) == SDL_AUDIO_STOPPED;
}

void SdlOutput::close() {
  if (device_ != 0)
    SDL_CloseAudioDevice(device_);
  device_ = 0;
  source_ = nullptr;
  if (has_subsystem_)
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
  has_subsystem_ = false;
}

void SdlOutput::wait() {
  SDL_Delay(1);
}

void SdlOutput::fill(void* self, uint8_t* bytes, int byte_count) {
  constexpr int bytes_per_frame = channels * static_cast<int>(sizeof(float));
  // SDL hands out its stream of floats as bytes, aligned for any sample.
  auto* samples = reinterpret_cast<float*>(bytes); // NOLINT(*-reinterpret-cast)
  static_cast<SdlOutput*>(self)->source_->render(samples, byte_count / bytes_per_frame);
}

} // namespace kavo::sound
