// What stands before another display: it shows there what it makes of the pictures, and leaves all
// the rest to it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "host/screen/presenter.h"

namespace kavo::host {

class DisplayInFront : public Presenter {
public:
  explicit DisplayInFront(std::unique_ptr<Presenter> display) : display_(std::move(display)) {}

  void deliver_events(EventSink& sink) override { display_->deliver_events(sink); }
  void wait_for_events(EventSink& sink) override { display_->wait_for_events(sink); }
  bool is_full_screen() const override { return display_->is_full_screen(); }
  void switch_full_screen() override { display_->switch_full_screen(); }
  std::optional<WindowPlace> place() const override { return display_->place(); }
  std::optional<WindowScale> scale() const override { return display_->scale(); }
  void set_scale(int scale) override { display_->set_scale(scale); }
  const std::string& unplayable_reason() const override { return display_->unplayable_reason(); }

protected:
  Presenter& display() { return *display_; }

  // A picture to be shown instead of one of that size; black at first.
  Canvas& own_picture(const Canvas& canvas) {
    if (!own_picture_)
      own_picture_.emplace(canvas.width(), canvas.height());
    return *own_picture_;
  }

private:
  std::optional<Canvas> own_picture_; // outlives the display, in whose memory it may lie
  std::unique_ptr<Presenter> display_;
};

} // namespace kavo::host
