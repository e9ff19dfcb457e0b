// An output that renders when it is told to, into memory: as fast as the machine can and the
// same to the bit on every run. What the source's latency puts before the first sound is left out,
// so that everything stands where it was asked for.
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

  // Renders as much more as was left out: the last that was asked for comes out.
  void finish();

  // How much has been rendered, in seconds: a clock for a player that must not depend on how
  // fast the machine is.
  double seconds() const { return static_cast<double>(rendered_) / rate_; }

  // All that has come out, left and right in turn.
  const std::vector<float>& interleaved() const { return samples_; }
  int rate() const { return rate_; }

  int open() override { return rate_; }
  void start(AudioSource& source) override {
    source_ = &source;
    early_ = source.latency();
  }
  bool is_lost() const override { return false; }
  void close() override { source_ = nullptr; }
  double fade_in_seconds() const override { return 0.0; }
  double fade_out_seconds() const override { return 0.008; }
  void wait() override { render(block_); }

private:
  int rate_;
  int64_t block_;
  AudioSource* source_ = nullptr;
  int64_t rendered_ = 0;
  int64_t early_ = 0;    // frames of nothing that are still to come and to be left out
  int64_t left_out_ = 0; // so many have been
  std::vector<float> samples_;
};

} // namespace kavo::sound
