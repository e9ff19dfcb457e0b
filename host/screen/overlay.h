// What the host shows above a picture on its way to another display: the picture itself stays as it
// is, and so does what the program saves of it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "host/screen/presenter.h"

namespace kavo::host {

class Overlay final : public Presenter {
public:
  using Draw = std::function<void(Canvas&)>;

  explicit Overlay(std::unique_ptr<Presenter> display) : display_(std::move(display)) {}

  // From the next picture on; empty shows pictures as they are.
  void set_drawing(Draw draw) { draw_ = std::move(draw); }

  // Shows the last picture anew, with what is above it by now. Nothing before the first one.
  void present_again();

  void present(Canvas& canvas) override;
  void deliver_events(EventSink& sink) override { display_->deliver_events(sink); }
  void wait_for_events(EventSink& sink) override { display_->wait_for_events(sink); }
  bool is_full_screen() const override { return display_->is_full_screen(); }
  void switch_full_screen() override { display_->switch_full_screen(); }
  const std::string& unplayable_reason() const override { return display_->unplayable_reason(); }

private:
  Draw draw_;
  std::optional<Canvas> shown_; // outlives the display, in whose memory it may lie
  std::unique_ptr<Presenter> display_;
  Canvas* last_ = nullptr; // its owner's, who also owns this
};

} // namespace kavo::host
