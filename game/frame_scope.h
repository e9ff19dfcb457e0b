// Bracket one pass of a loop for the host.
#pragma once

#include "runtime/qor.h"

namespace kavo {

class FrameScope {
public:
  FrameScope() : token_(qorrt_frame_begin(qor_runtime_handle())) {}
  // Left open while an error is pending: at a frame's end the host may end the program in order,
  // and the error would go untold.
  ~FrameScope() {
    if (qor_err_code() == 0)
      qorrt_frame_end(qor_runtime_handle(), token_);
  }
  FrameScope(const FrameScope&) = delete;
  FrameScope& operator=(const FrameScope&) = delete;

  // Closes this pass and opens the next, so that the host may drop what the pass left behind.
  void next_pass() {
    qorrt_frame_end(qor_runtime_handle(), token_);
    token_ = qorrt_frame_begin(qor_runtime_handle());
  }

private:
  int64_t token_;
};

} // namespace kavo
