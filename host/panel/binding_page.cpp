#include "host/panel/binding_page.h"

#include <utility>

#include "host/panel/texts.h"

namespace kavo::host {

namespace {

constexpr int first_row_y = 140;
constexpr int row_height = 40;
constexpr int box_height = 36;
constexpr int label_x = 60;
constexpr int note_y = 668;

// Where the slots of a device begin, and how wide one is: no name is longer.
struct Columns {
  int x;
  int width;
  int distance;
};

Columns columns_of(Device device) {
  return device == Device::keyboard ? Columns{240, 160, 190} : Columns{196, 138, 142};
}

} // namespace

void BindingPage::open(Device device) {
  device_ = device;
  row_ = 0;
  slot_ = 0;
  is_listening_ = false;
  note_.clear();
}

size_t BindingPage::slot_count() const {
  return device_ == Device::keyboard ? Bindings::keys_each : Bindings::controls_each;
}

void BindingPage::move(int rows, int slots) {
  const auto moved = [](size_t value, int by, size_t count) {
    return (value + static_cast<size_t>(static_cast<int>(count) + by)) % count;
  };
  row_ = moved(row_, rows, action_count + 1);
  slot_ = moved(slot_, slots, slot_count());
  note_.clear();
}

void BindingPage::accept() {
  note_.clear();
  if (is_last_row())
    set_all_back();
  else if (device_ == Device::keyboard && is_fixed(action(), slot_))
    note_ = text(Text::escape_stays, world_.language());
  else
    is_listening_ = true;
}

void BindingPage::remove() {
  note_.clear();
  if (is_last_row())
    return;
  if (device_ == Device::controller)
    return change([this](Bindings& bindings) { bindings.controls_of(action())[slot_].reset(); });
  if (is_fixed(action(), slot_))
    note_ = text(Text::escape_stays, world_.language());
  else
    change([this](Bindings& bindings) { bindings.keys_of(action())[slot_].clear(); });
}

void BindingPage::set_all_back() {
  change([this](Bindings& bindings) {
    if (device_ == Device::keyboard)
      bindings.keys = Bindings().keys;
    else
      bindings.controls = Bindings().controls;
  });
}

void BindingPage::change(const std::function<void(Bindings&)>& change) {
  Settings settings = world_.settings();
  change(settings.bindings);
  world_.change(settings);
}

void BindingPage::take_key(std::string_view name) {
  if (device_ != Device::keyboard)
    return;
  if (is_reserved(name) || !world_.is_key(std::string(name))) {
    note_ = text(Text::no_key_for_this, world_.language());
    return;
  }
  is_listening_ = false;
  change([&](Bindings& bindings) {
    tell_loser(text_of_key(name, world_.language()), bind_key(bindings, action(), slot_, name));
  });
}

void BindingPage::take_control(Control control) {
  if (device_ != Device::controller || is_reserved(control))
    return;
  is_listening_ = false;
  change([&](Bindings& bindings) {
    tell_loser(text_of_control(control, world_.language()),
               bind_control(bindings, action(), slot_, control));
  });
}

void BindingPage::tell_loser(const std::string& name, std::optional<Action> loser) {
  const Language language = world_.language();
  note_.clear();
  if (loser)
    note_ = name + ": " + std::string(text(Text::taken_from, language)) + " \"" +
            std::string(label_of(*loser, language)) + "\"";
}

Box BindingPage::slot_box(size_t row, size_t slot) const {
  const Columns columns = columns_of(device_);
  const int y = first_row_y + static_cast<int>(row) * row_height;
  if (row == action_count)
    return {label_x - 10, y, 540, box_height};
  return {columns.x + static_cast<int>(slot) * columns.distance, y, columns.width, box_height};
}

void BindingPage::click(int x, int y) {
  is_listening_ = false;
  for (size_t row = 0; row <= action_count; ++row)
    for (size_t slot = 0; slot < slot_count(); ++slot)
      if (slot_box(row, slot).contains(x, y)) {
        row_ = row;
        slot_ = slot;
        return accept();
      }
}

std::string BindingPage::slot_text(size_t row, size_t slot) const {
  const Language language = world_.language();
  const Bindings& bindings = world_.settings().bindings;
  if (is_listening_ && row == row_ && slot == slot_)
    return std::string(text(Text::press_it, language));
  if (device_ == Device::keyboard) {
    const std::string& key = bindings.keys_of(all_actions[row])[slot];
    return key.empty() ? "-" : text_of_key(key, language);
  }
  const std::optional<Control> control = bindings.controls_of(all_actions[row])[slot];
  return control ? text_of_control(*control, language) : "-";
}

void BindingPage::draw_slot(Canvas& canvas, size_t row, size_t slot) const {
  const Box box = slot_box(row, slot);
  const bool is_chosen = row == row_ && slot == slot_;
  if (is_chosen) {
    canvas.set_colour(colour::chosen_ground);
    canvas.fill_rectangle(box.x, box.y, box.width, box.height);
  }
  draw_text(canvas, box.x + 5, box.y + 10, is_chosen ? colour::chosen : colour::plain,
            slot_text(row, slot));
}

void BindingPage::draw(Canvas& canvas) const {
  const Language language = world_.language();
  for (size_t row = 0; row < action_count; ++row) {
    draw_text(canvas, label_x, slot_box(row, 0).y + 10,
              row == row_ ? colour::chosen : colour::plain, label_of(all_actions[row], language));
    for (size_t slot = 0; slot < slot_count(); ++slot)
      draw_slot(canvas, row, slot);
  }
  const Box last = slot_box(action_count, 0);
  if (is_last_row()) {
    canvas.set_colour(colour::chosen_ground);
    canvas.fill_rectangle(last.x, last.y, last.width, last.height);
  }
  draw_text(canvas, label_x, last.y + 10, is_last_row() ? colour::chosen : colour::plain,
            text(device_ == Device::keyboard ? Text::usual_keys : Text::usual_controls, language));
  draw_centred(canvas, note_y, colour::heading, note_);
}

} // namespace kavo::host
