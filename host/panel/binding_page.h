// The pages of the panel on which keys and the parts of a controller get their actions: a row for
// each action, in it a slot for each key.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "host/panel/drawing.h"
#include "host/panel/key_texts.h"
#include "host/panel/world.h"

namespace kavo::host {

class BindingPage {
public:
  explicit BindingPage(const PanelWorld& world) : world_(world) {}

  void open(Device device);
  Device device() const { return device_; }

  // Whether the next key, or part of a controller, is for the chosen slot.
  bool is_listening() const { return is_listening_; }
  void stop_listening() { is_listening_ = false; }

  void move(int rows, int slots);
  // Listens for the chosen slot, or acts as the last row says.
  void accept();
  // Empties the chosen slot.
  void remove();

  // While it listens. What cannot be bound is told, and it goes on listening.
  void take_key(std::string_view name);
  void take_control(Control control);

  // Chooses what is there and accepts it.
  void click(int x, int y);

  void draw(Canvas& canvas) const;

private:
  size_t slot_count() const;
  bool is_last_row() const { return row_ == action_count; }
  Action action() const { return all_actions[row_]; }
  Box slot_box(size_t row, size_t slot) const;
  std::string slot_text(size_t row, size_t slot) const;
  void draw_slot(Canvas& canvas, size_t row, size_t slot) const;
  void change(const std::function<void(Bindings&)>& change);
  void tell_loser(const std::string& name, std::optional<Action> loser);
  void set_all_back();

  const PanelWorld& world_;
  Device device_ = Device::keyboard;
  size_t row_ = 0;
  size_t slot_ = 0;
  bool is_listening_ = false;
  std::string note_; // what came of the last deed
};

} // namespace kavo::host
