// Help and settings above the game's picture.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/panel/drawing.h"
#include "host/panel/texts.h"
#include "host/settings/settings.h"

namespace kavo::host {

// The part of the world that the panel shows and changes.
struct PanelWorld {
  std::function<const Settings&()> settings;
  std::function<void(const Settings&)> change; // effective at once
  std::function<bool()> is_full_screen;
  std::function<void()> switch_full_screen;
  std::function<Language()> language; // English or German
};

class Panel {
public:
  enum class Command : uint8_t { up, down, left, right, accept, back };

  explicit Panel(PanelWorld world) : world_(std::move(world)) {}

  bool is_open() const { return is_open_; }
  // With its first page.
  void open();
  void close() { is_open_ = false; }

  void obey(Command command);
  // A click at this place of the picture. A pointer that only passes chooses nothing: it would,
  // too, when the window changes under it.
  void click(int x, int y);

  // Above the dimmed picture.
  void draw(Canvas& canvas);

private:
  enum class Page : uint8_t { menu, help, settings };
  struct Row {
    std::string label;
    std::string value = {};            // empty: none
    std::function<void(int)> act = {}; // by +1 or -1
  };

  std::vector<Row> rows();
  std::vector<Row> menu_rows();
  std::vector<Row> setting_rows();
  Row volume_row(Text label, int Settings::*volume);
  Row switch_row(Text label, bool Settings::*setting);
  Row language_row();
  void go_to(Page page);
  void go_back();
  void turn_help_page(int by);
  template<typename Change>
  void change(Change change);
  void draw_rows(Canvas& canvas);
  void draw_help(Canvas& canvas) const;

  PanelWorld world_;
  bool is_open_ = false;
  Page page_ = Page::menu;
  size_t selected_ = 0;
  int help_page_ = 0;
};

} // namespace kavo::host
