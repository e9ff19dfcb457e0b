#include "host/events.h"

#include <array>

namespace kavo::host {

namespace {

// Sets a flag for as long as it lives.
class Raised {
public:
  explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
  ~Raised() { flag_ = false; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

private:
  bool& flag_;
};

} // namespace

void Events::take_from(Presenter& presenter, EventSink& sink) {
  if (is_taking_)
    return;
  const Raised taking(is_taking_);
  presenter.deliver_events(sink);
}

void Events::wait_for(Presenter& presenter, EventSink& sink) {
  if (is_taking_)
    return;
  const Raised taking(is_taking_);
  presenter.wait_for_events(sink);
}

void Events::ask_to_quit() {
  if (is_quitting_)
    return;
  is_quitting_ = true;
  raise("QUIT", {});
}

void Events::key_went_down(const Key& key, bool is_repeat) {
  if (!is_repeat)
    keyboard_.key_down(key.scancode, key.code);
  raise("KEYDOWN", {number(key.scancode), number(key.code), text(key.name), number(is_repeat)});
}

void Events::key_went_up(const Key& key) {
  keyboard_.key_up(key.scancode);
  raise("KEYUP", {number(key.scancode), number(key.code), text(key.name), number(0)});
}

void Events::keyboard_was_taken() {
  keyboard_.release_all();
}

void Events::button_went_down(int button, int x, int y) {
  raise("MOUSEDOWN", {number(button), number(x), number(y)});
}

void Events::button_went_up(int button, int x, int y) {
  raise("MOUSEUP", {number(button), number(x), number(y)});
}

void Events::pointer_moved(int x, int y) {
  raise("MOUSEMOVE", {number(x), number(y)});
}

void Events::close_was_asked() {
  ask_to_quit();
}

Events::Value Events::number(int value) {
  return {value, QOR_TAG_INT64};
}

Events::Value Events::text(const char* value) {
  return {qor_slot_of(value).i64, QOR_TAG_STRING};
}

void Events::raise(const char* name, std::initializer_list<Value> values) {
  if (dispatch_ == nullptr)
    return;
  std::array<int64_t, 4> bits = {};
  std::array<uint32_t, 4> tags = {};
  size_t count = 0;
  for (const Value& value : values) {
    bits[count] = value.bits;
    tags[count] = value.tag;
    ++count;
  }
  dispatch_(name, bits.data(), tags.data(), static_cast<int64_t>(count));
}

} // namespace kavo::host
