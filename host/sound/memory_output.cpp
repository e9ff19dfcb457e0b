#include "host/sound/memory_output.h"

#include <algorithm>

namespace kavo::sound {

void MemoryOutput::render(int64_t frames) {
  const auto before = std::ssize(samples_);
  samples_.resize(samples_.size() + 2 * static_cast<size_t>(frames));
  for (int64_t done = 0; source_ != nullptr && done < frames;) {
    const int64_t run = std::min(block_, frames - done);
    source_->render(samples_.data() + before + 2 * done, run);
    done += run;
  }
  rendered_ += frames;
  const int64_t left_out = std::min(early_, frames);
  samples_.erase(samples_.begin() + before, samples_.begin() + before + 2 * left_out);
  early_ -= left_out;
  left_out_ += left_out;
}

void MemoryOutput::finish() {
  render(left_out_);
  left_out_ = 0;
}

} // namespace kavo::sound
