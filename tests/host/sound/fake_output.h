// An output that fails, vanishes and comes back on command, and renders when it is told to.
#pragma once

#include <string>
#include <vector>

#include "host/sound/output.h"

namespace kavo::sound {

// What is common to a fake and the test that steers it: the player owns the fake.
struct FakeDevice {
  std::string failure; // why opening fails; empty when it succeeds
  int rate = 48000;
  bool is_lost = false;
  bool is_stuck = false; // never asks for sound
  int opened = 0;
  int closed = 0;
  AudioSource* source = nullptr;
  std::vector<float> samples;

  void render(int64_t frames) {
    samples.assign(2 * static_cast<size_t>(frames), 0.0f);
    if (source != nullptr && !is_stuck)
      source->render(samples.data(), frames);
  }
};

class FakeOutput final : public Output {
public:
  explicit FakeOutput(FakeDevice& device) : device_(device) {}

  int open() override {
    if (!device_.failure.empty())
      throw OutputError(device_.failure);
    ++device_.opened;
    device_.is_lost = false;
    return device_.rate;
  }
  void start(AudioSource& source) override { device_.source = &source; }
  bool is_lost() const override { return device_.is_lost; }
  void close() override {
    device_.closed += device_.source != nullptr;
    device_.source = nullptr;
  }
  double fade_in_seconds() const override { return 0.1; }
  double fade_out_seconds() const override { return 0.008; }
  void wait() override { device_.render(64); }

private:
  FakeDevice& device_;
};

} // namespace kavo::sound
