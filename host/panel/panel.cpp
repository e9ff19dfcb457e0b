#include "host/panel/panel.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/panel/help.h"
#include "host/panel/texts.h"

namespace kavo::host {

namespace {

constexpr Box frame = {30, 60, 600, 680};
constexpr int title_y = frame.y + 24;
constexpr int first_row_y = frame.y + 90;
constexpr int row_height = 38;
constexpr int label_x = frame.x + 50;
constexpr int value_x = frame.x + 350;
constexpr int footer_y = frame.y + frame.height - 36;
constexpr Box footer = {frame.x, footer_y - 12, frame.width, 40};

Box row_box(size_t row) {
  return {frame.x + 30, first_row_y + static_cast<int>(row) * row_height - 10, frame.width - 60,
          36};
}

// With one digit after the point, where the number is not whole.
std::string in_times(double scale) {
  const auto tenths = std::lround(scale * 10);
  const std::string whole = std::to_string(tenths / 10);
  return (tenths % 10 == 0 ? whole : whole + "." + std::to_string(tenths % 10)) + " ×";
}

} // namespace

void Panel::open() {
  is_open_ = true;
  page_ = Page::menu;
  selected_ = 0;
}

void Panel::close() {
  is_open_ = false;
  bindings_.stop_listening();
}

void Panel::go_to(Page page) {
  page_ = page;
  selected_ = 0;
  help_page_ = 0;
}

// Row by row, as the pages list them.
void Panel::go_back() {
  if (page_ == Page::menu)
    return close();
  if (page_ == Page::bindings) {
    page_ = Page::settings;
    selected_ = setting_rows().size() - (bindings_.device() == Device::keyboard ? 3 : 2);
    return;
  }
  selected_ = page_ == Page::help ? 0 : 1;
  page_ = Page::menu;
}

void Panel::turn_help_page(int by) {
  help_page_ = (help_page_ + by + help_page_count) % help_page_count;
}

std::vector<Panel::Row> Panel::rows() {
  switch (page_) {
  case Page::menu:
    return menu_rows();
  case Page::settings:
    return setting_rows();
  case Page::help:
  case Page::bindings:
    break;
  }
  return {};
}

std::vector<Panel::Row> Panel::menu_rows() {
  const Language language = world_.language();
  return {{std::string(text(Text::help, language)), "", [this](int) { go_to(Page::help); }},
          {std::string(text(Text::settings, language)), "", [this](int) { go_to(Page::settings); }},
          {std::string(text(Text::back_to_the_game, language)), "", [this](int) { close(); }}};
}

template<typename Change>
void Panel::change(Change change) {
  Settings settings = world_.settings();
  change(settings);
  world_.change(settings);
}

Panel::Row Panel::number_row(Text label, int Settings::*number, const Bounds& bounds,
                             std::string_view unit) {
  return {std::string(text(label, world_.language())),
          std::to_string(world_.settings().*number) + " " + std::string(unit),
          [this, number, bounds](int by) {
            change([number, bounds, by](Settings& settings) {
              settings.*number =
                  std::clamp(settings.*number + by * bounds.step, bounds.least, bounds.most);
            });
          }};
}

Panel::Row Panel::switch_row(Text label, bool Settings::*setting) {
  const Language language = world_.language();
  return {std::string(text(label, language)),
          std::string(text(world_.settings().*setting ? Text::yes : Text::no, language)),
          [this, setting](int) {
            change([setting](Settings& settings) { settings.*setting = !(settings.*setting); });
          }};
}

Panel::Row Panel::page_of_bindings_row(Text label, Device device) {
  return {std::string(text(label, world_.language())), "", [this, device](int) {
            go_to(Page::bindings);
            bindings_.open(device);
          }};
}

Panel::Row Panel::language_row() {
  constexpr int languages = 3;
  const Language language = world_.language();
  const Language chosen = world_.settings().language;
  const std::string_view name = chosen == Language::english  ? "English"
                                : chosen == Language::german ? "Deutsch"
                                                             : text(Text::automatic, language);
  return {std::string(text(Text::language, language)), std::string(name), [this](int by) {
            change([by](Settings& settings) {
              const int next = (static_cast<int>(settings.language) + by + languages) % languages;
              settings.language = static_cast<Language>(next);
            });
          }};
}

Panel::Row Panel::full_screen_row() {
  const Language language = world_.language();
  return {std::string(text(Text::full_screen, language)),
          std::string(text(world_.is_full_screen() ? Text::yes : Text::no, language)),
          [this](int) { world_.switch_full_screen(); }};
}

// From whatever size it has to the next whole one.
Panel::Row Panel::window_size_row() {
  const std::optional<WindowScale> scale = world_.window_scale();
  std::string label(text(Text::window_size, world_.language()));
  if (!scale)
    return {std::move(label), "-", [](int) {}};
  return {std::move(label), in_times(scale->now), [this, scale](int by) {
            const double next = by > 0 ? std::floor(scale->now) + 1 : std::ceil(scale->now) - 1;
            world_.set_window_scale(std::clamp(static_cast<int>(next), 1, scale->largest));
          }};
}

std::vector<Panel::Row> Panel::setting_rows() {
  const Language language = world_.language();
  std::vector<Row> result = {number_row(Text::music, &Settings::music, volume_bounds, "%"),
                             number_row(Text::effects, &Settings::effects, volume_bounds, "%")};
  result.push_back(full_screen_row());
  result.push_back(window_size_row());
  result.push_back(switch_row(Text::calm, &Settings::is_calm));
  result.push_back(switch_row(Text::waits, &Settings::waits));
  result.push_back(switch_row(Text::records, &Settings::records));
  result.push_back(switch_row(Text::repeats, &Settings::repeats));
  result.push_back(
      number_row(Text::repeat_delay, &Settings::repeat_delay, repeat_delay_bounds, "ms"));
  result.push_back(number_row(Text::repeat_rate, &Settings::repeat_rate, repeat_rate_bounds, "ms"));
  result.push_back(language_row());
  result.push_back(page_of_bindings_row(Text::keys, Device::keyboard));
  result.push_back(page_of_bindings_row(Text::controller, Device::controller));
  result.push_back({std::string(text(Text::defaults, language)), "", [this](int by) {
                      if (by > 0)
                        world_.change(Settings());
                    }});
  return result;
}

void Panel::obey_in_bindings(Command command) {
  if (bindings_.is_listening())
    return command == Command::back ? bindings_.stop_listening() : void();
  switch (command) {
  case Command::up:
    return bindings_.move(-1, 0);
  case Command::down:
    return bindings_.move(1, 0);
  case Command::left:
    return bindings_.move(0, -1);
  case Command::right:
    return bindings_.move(0, 1);
  case Command::accept:
    return bindings_.accept();
  case Command::remove:
    return bindings_.remove();
  case Command::back:
    return go_back();
  }
}

void Panel::obey(Command command) {
  if (page_ == Page::bindings)
    return obey_in_bindings(command);
  if (command == Command::back)
    return go_back();
  if (command == Command::remove)
    return;
  if (page_ == Page::help) {
    if (command == Command::left || command == Command::up)
      turn_help_page(-1);
    else
      turn_help_page(1);
    return;
  }
  const std::vector<Row> all = rows();
  if (command == Command::up || command == Command::down) {
    selected_ = (selected_ + (command == Command::down ? 1 : all.size() - 1)) % all.size();
    return;
  }
  const Row& row = all[selected_];
  if (command == Command::accept)
    row.act(1);
  else if (!row.value.empty())
    row.act(command == Command::left ? -1 : 1);
}

// The left part of a value makes it less, the right part more; the foot leads back.
void Panel::click(int x, int y) {
  if (footer.contains(x, y))
    return obey(Command::back);
  if (page_ == Page::bindings)
    return bindings_.click(x, y);
  if (page_ == Page::help)
    return turn_help_page(x < frame.x + frame.width / 2 ? -1 : 1);
  const std::vector<Row> all = rows();
  for (size_t row = 0; row < all.size(); ++row)
    if (row_box(row).contains(x, y)) {
      selected_ = row;
      const bool is_less = !all[row].value.empty() && x >= value_x - 20 && x < value_x + 12;
      return all[row].act(is_less ? -1 : 1);
    }
}

void Panel::draw(Canvas& canvas) {
  dim(canvas);
  draw_box(canvas, frame);
  if (page_ == Page::help)
    draw_help(canvas);
  else if (page_ == Page::bindings)
    draw_bindings(canvas);
  else
    draw_rows(canvas);
}

void Panel::draw_rows(Canvas& canvas) {
  const Language language = world_.language();
  const bool is_menu = page_ == Page::menu;
  draw_centred(canvas, title_y, colour::heading,
               is_menu ? std::string_view("K A V O") : text(Text::settings, language));
  const std::vector<Row> all = rows();
  for (size_t row = 0; row < all.size(); ++row) {
    const Box box = row_box(row);
    const bool is_selected = row == selected_;
    const uint32_t colour = is_selected ? colour::chosen : colour::plain;
    if (is_selected) {
      canvas.set_colour(colour::chosen_ground);
      canvas.fill_rectangle(box.x, box.y, box.width, box.height);
    }
    draw_text(canvas, label_x, box.y + 10, colour, all[row].label);
    if (!all[row].value.empty())
      draw_text(canvas, value_x, box.y + 10, colour, "< " + all[row].value + " >");
  }
  draw_centred(canvas, footer_y, colour::faint,
               text(is_menu ? Text::keys_of_a_menu : Text::keys_of_settings, language));
}

void Panel::draw_bindings(Canvas& canvas) const {
  const Language language = world_.language();
  const bool is_of_keys = bindings_.device() == Device::keyboard;
  draw_centred(canvas, title_y, colour::heading,
               text(is_of_keys ? Text::keys : Text::controller, language));
  bindings_.draw(canvas);
  draw_centred(
      canvas, footer_y, colour::faint,
      text(bindings_.is_listening() ? Text::keys_of_listening : Text::keys_of_bindings, language));
}

void Panel::draw_help(Canvas& canvas) const {
  const Language language = world_.language();
  draw_help_page(canvas, help_page_, world_.settings(), language, frame.x + 20, title_y);
  draw_centred(canvas, footer_y - 28, colour::plain,
               "< " + std::to_string(help_page_ + 1) + " / " + std::to_string(help_page_count) +
                   " >");
  draw_centred(canvas, footer_y, colour::faint, text(Text::keys_of_help, language));
}

} // namespace kavo::host
