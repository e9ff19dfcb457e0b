#include "host/sound/memory_output.h"

#include <algorithm>

namespace kavo::sound {

void MemoryOutput::render(int64_t frames) {
  auto end = samples_.size();
  samples_.resize(end + 2 * static_cast<size_t>(frames));
  for (int64_t done = 0; source_ != nullptr && done < frames;) {
    const int64_t run = std::min(block_, frames - done);
    source_->render(samples_.data() + end, run);
    end += 2 * static_cast<size_t>(run);
    done += run;
  }
}

} // namespace kavo::sound
