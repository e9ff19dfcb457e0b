// The twin of the window: pictures go nowhere and nothing ever happens.
#pragma once

#include <utility>

#include "host/screen/presenter.h"

namespace kavo::host {

class Offscreen final : public Presenter {
public:
  explicit Offscreen(std::string unplayable_reason)
      : unplayable_reason_(std::move(unplayable_reason)) {}

  void present(Canvas&) override {}
  void deliver_events(EventSink&) override {}
  const std::string& unplayable_reason() const override { return unplayable_reason_; }

private:
  std::string unplayable_reason_;
};

} // namespace kavo::host
