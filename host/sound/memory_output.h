// An output that renders when it is told to, into memory: as fast as the machine can and the
// same to the bit on every run.
#pragma once

#include <cstdint>
#include <vector>

#include "host/sound/output.h"

namespace kavo::sound {

class MemoryOutput final : public Output {
public:
  explicit MemoryOutput(int rate = 48000, int64_t block = 512) : rate_(rate), block_(block) {}

  // Renders `frames` more frames in blocks, the last one shorter when it must be. Silence while
  // the output is closed.
  void render(int64_t frames);

  // All that was rendered, left and right in turn.
  const std::vector<float>& interleaved() const { return samples_; }
  int rate() const { return rate_; }

  int open() override { return rate_; }
  void start(AudioSource& source) override { source_ = &source; }
  bool is_lost() const override { return false; }
  void close() override { source_ = nullptr; }
  double fade_in_seconds() const override { return 0.0; }
  double fade_out_seconds() const override { return 0.008; }
  void wait() override { render(block_); }

private:
  int rate_;
  int64_t block_;
  AudioSource* source_ = nullptr;
  std::vector<float> samples_;
};

} // namespace kavo::sound
