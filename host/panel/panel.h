// Help and settings above the game's picture.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/panel/binding_page.h"
#include "host/panel/drawing.h"
#include "host/panel/texts.h"
#include "host/panel/world.h"

namespace kavo::host {

class Panel {
public:
  // `remove` empties what is chosen, where that can be.
  enum class Command : uint8_t { up, down, left, right, accept, back, remove };

  explicit Panel(PanelWorld world) : world_(std::move(world)) {}
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  bool is_open() const { return is_open_; }
  // With its first page.
  void open();
  void close();

  void obey(Command command);

  // Whether the next key, or the next part of a controller, is to be bound and no command.
  bool is_listening() const { return bindings_.is_listening(); }
  bool is_listening_to_controls() const {
    return is_listening() && bindings_.device() == Device::controller;
  }
  void take_key(std::string_view name) { bindings_.take_key(name); }
  void take_control(Control control) { bindings_.take_control(control); }

  // A click at this place of the picture. A pointer that only passes chooses nothing: it would,
  // too, when the window changes under it.
  void click(int x, int y);

  // Above the dimmed picture.
  void draw(Canvas& canvas);

private:
  enum class Page : uint8_t { menu, help, settings, bindings };
  struct Row {
    std::string label;
    std::string value = {};            // empty: none
    std::function<void(int)> act = {}; // by +1 or -1
  };

  std::vector<Row> rows();
  std::vector<Row> menu_rows();
  std::vector<Row> setting_rows();
  Row number_row(Text label, int Settings::*number, const Bounds& bounds, std::string_view unit);
  Row switch_row(Text label, bool Settings::*setting);
  Row page_of_bindings_row(Text label, Device device);
  Row language_row();
  Row full_screen_row();
  Row window_size_row();
  void go_to(Page page);
  void go_back();
  void obey_in_bindings(Command command);
  void turn_help_page(int by);
  template<typename Change>
  void change(Change change);
  void draw_rows(Canvas& canvas);
  void draw_bindings(Canvas& canvas) const;
  void draw_help(Canvas& canvas) const;

  PanelWorld world_;
  bool is_open_ = false;
  Page page_ = Page::menu;
  size_t selected_ = 0;
  int help_page_ = 0;
  BindingPage bindings_{world_};
};

} // namespace kavo::host
