// The sound device, through SDL.
#pragma once

#include <cstdint>

#include "host/sound/output.h"

namespace kavo::sound {

class SdlOutput final : public Output {
public:
  ~SdlOutput() override { close(); }

  int open() override;
  void start(AudioSource& source) override;
  bool is_lost() const override;
  void close() override;
  // A player who starts the game with headphones on is not startled.
  double fade_in_seconds() const override { return 0.1; }
  double fade_out_seconds() const override { return 0.008; }
  void wait() override;

private:
  static void fill(void* self, uint8_t* bytes, int byte_count);

  AudioSource* source_ = nullptr;
  uint32_t device_ = 0; // 0 while closed
  bool has_subsystem_ = false;
};

} // namespace kavo::sound
