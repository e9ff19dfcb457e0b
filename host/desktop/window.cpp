#include "host/desktop/window.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "host/command.h"
#include "host/desktop/display_loss.h"
#include "host/desktop/display_wait.h"
#include "host/desktop/icon.h"
#include "host/desktop/key_meaning.h"
#include "host/desktop/window_place.h"

namespace kavo::host {

namespace {

[[noreturn]] void fail() {
  throw CommandError(SDL_GetError());
}

bool is_set(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

// The desktops that the environment names. Left to itself SDL goes on to drivers without a
// screen, where a game would play invisibly.
std::string desktop_drivers() {
  if (!is_set("DISPLAY"))
    return "wayland";
  return is_set("WAYLAND_DISPLAY") ? "x11,wayland" : "x11";
}

bool is_full_screen_key(const SDL_Keysym& key) {
  return key.sym == SDLK_F11 || (key.sym == SDLK_RETURN && (key.mod & KMOD_ALT) != 0);
}

bool fills_display(SDL_Window* window) {
  return (SDL_GetWindowFlags(window) & SDL_WINDOW_FULLSCREEN_DESKTOP) != 0;
}

bool has_layout_of(const Canvas& canvas, const SDL_Surface& surface) {
  return surface.format->format == SDL_PIXELFORMAT_RGB888 && surface.w == canvas.width() &&
         surface.h == canvas.height() &&
         surface.pitch == canvas.width() * static_cast<int>(sizeof(uint32_t));
}

PixelBuffer buffer_of(const SDL_Surface& surface) {
  return {static_cast<uint32_t*>(surface.pixels),
          {surface.w, surface.h},
          surface.pitch / static_cast<int>(sizeof(uint32_t))};
}

// Since the first call. SDL's own clock of so many bits is younger than the oldest SDL to play
// with.
uint64_t now_ms() {
  using Clock = std::chrono::steady_clock;
  static const Clock::time_point start = Clock::now();
  const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
  return static_cast<uint64_t>(passed.count());
}

// Each without its panels, as far as the desktop tells of them.
std::vector<Area> rooms_on_displays() {
  std::vector<Area> rooms;
  for (int display = 0; display < SDL_GetNumVideoDisplays(); ++display) {
    SDL_Rect bounds = {};
    if (SDL_GetDisplayUsableBounds(display, &bounds) == 0)
      rooms.push_back({bounds.x, bounds.y, bounds.w, bounds.h});
  }
  if (rooms.empty())
    fail();
  return rooms;
}

Area start_place(const ScreenRequest& request) {
  const std::vector<Area> rooms = rooms_on_displays();
  const Size picture = {request.width, request.height};
  if (request.place)
    return placed_again(*request.place, picture, rooms);
  const Size room = {rooms[0].width, rooms[0].height};
  const int times =
      request.may_grow ? largest_comfortable_multiple(picture, request.scale, room) : 1;
  return middle_of(rooms[0], start_size(picture, times * request.scale, room));
}

} // namespace

Window::Video::Video() {
  if (!is_set("SDL_VIDEODRIVER"))
    SDL_SetHint(SDL_HINT_VIDEODRIVER, desktop_drivers().c_str());
  SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1"); // SDL would switch it off
  SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0)
    fail();
  if (std::string_view(SDL_GetCurrentVideoDriver()) != "x11")
    return;
  // X11 takes pixels directly, which spares the graphics driver; Wayland needs SDL's renderer.
  SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  end_in_order_when_the_display_is_lost();
  play_on_after_errors_of_the_display();
  ForeignKeys::listen();
}

Window::Window(const ScreenRequest& request) : picture_{request.width, request.height} {
  const Area place = start_place(request);
  window_.reset(SDL_CreateWindow(request.title.c_str(), place.x, place.y, place.width, place.height,
                                 SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI |
                                     (request.is_full_screen ? SDL_WINDOW_FULLSCREEN_DESKTOP : 0)));
  if (!window_)
    fail();
  place_ = {.width = place.width, .height = place.height};
  if (request.place)
    place_.corner = request.place->corner;
  note_place();
  set_icon(window_.get());
  // Keys are keys here; an input method would keep some of them for itself.
  SDL_StopTextInput();
  note_pointer_motion();
  SDL_AddEventWatch(watch_changes, this);
}

Window::~Window() {
  SDL_DelEventWatch(watch_changes, this);
  send_home();
}

void Window::present(Canvas& canvas) {
  SDL_Surface* target = surface();
  if (target == nullptr)
    present_without_surface(canvas);
  else if (const std::vector<Area> areas = present_on(*target, canvas); !areas.empty())
    update(areas);
  if (!controllers_)
    controllers_.emplace();
}

// The window's memory; null when SDL has none for its kind of pixels, or the window is larger than
// any display and its memory would be, too.
SDL_Surface* Window::surface() {
  constexpr int64_t most_pixels = 64'000'000;
  Size size = {};
  SDL_GL_GetDrawableSize(window_.get(), &size.width, &size.height);
  if (int64_t{size.width} * size.height > most_pixels)
    return nullptr;
  return SDL_GetWindowSurface(window_.get());
}

// A game whose picture cannot be shown is still a game: its scenes, its sound, its end.
void Window::present_without_surface(const Canvas& canvas) {
  if (!x_picture_)
    x_picture_ = XPicture::in(window_.get());
  if (x_picture_) {
    if (shown_.take_changes(canvas).empty())
      return;
    Size size = {};
    SDL_GL_GetDrawableSize(window_.get(), &size.width, &size.height);
    x_picture_->show(canvas, size);
  } else if (!has_complained_) {
    has_complained_ = true;
    static_cast<void>(std::fprintf(stderr, "the picture cannot be shown: %s\n", SDL_GetError()));
  }
}

// SDL replaces the window's memory the next time that it is asked for it after the window has
// changed. Watchers hear of a change at once; in the queue its event may lie behind that call.
// They also hear when the desktop has lost what the window showed.
int Window::watch_changes(void* data, SDL_Event* event) {
  if (event->type != SDL_WINDOWEVENT)
    return 0;
  auto* window = static_cast<Window*>(data);
  window->send_home();
  window->shown_.forget();
  return 0;
}

void Window::send_home() {
  if (lodger_ != nullptr)
    lodger_->move_home();
  lodger_ = nullptr;
}

// The window's memory and the desktop keep what is as it was, which most of a picture is. Gives
// where the window's memory has to be shown.
std::vector<Area> Window::present_on(const SDL_Surface& surface, Canvas& canvas) {
  const bool is_anything_shown = shown_.is_known();
  std::vector<Area> changed = shown_.take_changes(canvas);
  std::vector<Area> everything = {{0, 0, surface.w, surface.h}};
  if (changed.empty() && is_a_sign_of_life_due())
    return {{0, 0, surface.w, 1}};
  if (changed.empty())
    return {};
  if (has_layout_of(canvas, surface)) {
    lodge(canvas, surface);
    return changed;
  }
  if (surface.format->format != SDL_PIXELFORMAT_RGB888) {
    draw_converted(canvas, surface);
    return everything;
  }
  if (is_anything_shown)
    return draw_scaled(canvas, changed, surface);
  scaler_.draw(canvas, buffer_of(surface));
  return everything;
}

// Those who record the desktop wait for a picture now and then.
bool Window::is_a_sign_of_life_due() const {
  constexpr uint64_t interval_ms = 1000;
  return now_ms() - last_shown_at_ms_ >= interval_ms;
}

// A picture that needs no scaling is drawn in the window's memory itself.
void Window::lodge(Canvas& canvas, const SDL_Surface& surface) {
  if (lodger_ != &canvas)
    send_home();
  canvas.move_to(static_cast<uint32_t*>(surface.pixels));
  lodger_ = &canvas;
}

std::vector<Area> Window::draw_scaled(const Canvas& canvas, const std::vector<Area>& parts,
                                      const SDL_Surface& surface) {
  std::vector<Area> areas;
  areas.reserve(parts.size());
  for (const Area& part : parts)
    areas.push_back(scaler_.draw_part(canvas, part, buffer_of(surface)));
  return areas;
}

void Window::draw_converted(const Canvas& canvas, const SDL_Surface& surface) {
  converted_.resize(static_cast<size_t>(surface.w) * static_cast<size_t>(surface.h));
  scaler_.draw(canvas, {converted_.data(), {surface.w, surface.h}, surface.w});
  SDL_ConvertPixels(surface.w, surface.h, SDL_PIXELFORMAT_RGB888, converted_.data(),
                    surface.w * static_cast<int>(sizeof(uint32_t)), surface.format->format,
                    surface.pixels, surface.pitch);
}

void Window::update(const std::vector<Area>& areas) {
  std::vector<SDL_Rect> rectangles;
  rectangles.reserve(areas.size());
  for (const Area& area : areas)
    rectangles.push_back({area.x, area.y, area.width, area.height});
  if (SDL_UpdateWindowSurfaceRects(window_.get(), rectangles.data(),
                                   static_cast<int>(rectangles.size())) != 0)
    fail();
  last_shown_at_ms_ = now_ms();
}

void Window::deliver_events(EventSink& sink) {
  SDL_Event event = {};
  while (SDL_PollEvent(&event) != 0)
    deliver(event, sink);
  switch_full_screen_if_due();
  hide_idle_pointer();
  screen_saver_.allow_when_idle(now_ms());
}

void Window::wait_for_events(EventSink& sink) {
  screen_saver_.allow();
  SDL_PumpEvents();
  if (SDL_HasEvents(SDL_FIRSTEVENT, SDL_LASTEVENT) == SDL_FALSE)
    wait_for_display(window_.get(), longest_wait_ms());
  deliver_events(sink);
}

// Controllers make themselves heard only when SDL asks them, and SDL tells of a focus that it was
// not sure of a little later. A controller that is plugged in is found after a while.
int Window::longest_wait_ms() const {
  constexpr int of_a_controller = 20;
  constexpr int after_something_happened = 250;
  constexpr int in_quiet = 3000;
  if (controllers_ && controllers_->are_there())
    return of_a_controller;
  const bool has_just_happened = now_ms() - last_event_at_ms_ < 2 * IdlePointer::patience_ms;
  return has_just_happened ? after_something_happened : in_quiet;
}

void Window::deliver(const SDL_Event& event, EventSink& sink) {
  last_event_at_ms_ = now_ms();
  screen_saver_.note(event, last_event_at_ms_);
  switch (event.type) {
  case SDL_KEYDOWN:
  case SDL_KEYUP:
    return deliver_key(event.key, sink);
  case SDL_WINDOWEVENT:
    return deliver_window_event(event.window, sink);
  case SDL_SYSWMEVENT:
    return foreign_keys_.note(*event.syswm.msg);
  case SDL_MOUSEMOTION: {
    note_pointer_motion();
    const SDL_Point point = picture_point(event.motion.x, event.motion.y);
    return sink.pointer_moved(point.x, point.y);
  }
  case SDL_MOUSEBUTTONDOWN: {
    const SDL_Point point = picture_point(event.button.x, event.button.y);
    return sink.button_went_down(event.button.button, point.x, point.y);
  }
  case SDL_MOUSEBUTTONUP: {
    const SDL_Point point = picture_point(event.button.x, event.button.y);
    return sink.button_went_up(event.button.button, point.x, point.y);
  }
  case SDL_QUIT:
    end_if_the_compositor_is_lost(window_.get());
    return sink.close_was_asked();
  default:
    if (controllers_)
      controllers_->deliver(event, sink);
    return;
  }
}

void Window::deliver_key(const SDL_KeyboardEvent& event, EventSink& sink) {
  const bool is_down = event.type == SDL_KEYDOWN;
  if (is_down && foreign_keys_.is_last_press_foreign())
    return;
  if (is_down && is_full_screen_key(event.keysym)) {
    if (event.repeat == 0)
      is_switch_due_ = !is_switch_due_;
    return;
  }
  const SDL_Keycode code = meaning_of(event.keysym);
  const Key key = {event.keysym.scancode, code, SDL_GetKeyName(code)};
  if (is_down)
    sink.key_went_down(key, event.repeat != 0);
  else
    sink.key_went_up(key);
}

void Window::deliver_window_event(const SDL_WindowEvent& event, EventSink& sink) {
  switch (event.event) {
  case SDL_WINDOWEVENT_CLOSE:
    return sink.close_was_asked();
  case SDL_WINDOWEVENT_FOCUS_GAINED:
    return sink.keyboard_was_given();
  case SDL_WINDOWEVENT_FOCUS_LOST:
    return sink.keyboard_was_taken();
  case SDL_WINDOWEVENT_MOVED:
  case SDL_WINDOWEVENT_SIZE_CHANGED:
    return note_place();
  case SDL_WINDOWEVENT_MINIMIZED:
  case SDL_WINDOWEVENT_HIDDEN:
    return sink.picture_was_hidden();
  default:
    return;
  }
}

// A window that fills a display, or is maximised, will be as it was before. Wayland does not tell
// where windows are; where there is a border the desktop puts that at the place that is asked for.
void Window::note_place() {
  constexpr uint32_t passing = SDL_WINDOW_MAXIMIZED | SDL_WINDOW_MINIMIZED | SDL_WINDOW_HIDDEN;
  place_.is_full_screen = fills_display(window_.get());
  if (place_.is_full_screen || (SDL_GetWindowFlags(window_.get()) & passing) != 0)
    return;
  SDL_GetWindowSize(window_.get(), &place_.width, &place_.height);
  place_.corner.reset();
  if (std::string_view(SDL_GetCurrentVideoDriver()) != "x11")
    return;
  WindowPlace::Corner corner = {};
  int top = 0;
  int left = 0;
  SDL_GetWindowPosition(window_.get(), &corner.x, &corner.y);
  SDL_GetWindowBordersSize(window_.get(), &top, &left, nullptr, nullptr);
  place_.corner = {corner.x - left, corner.y - top};
}

// Of the display that the window is on.
Size Window::room() const {
  SDL_Rect bounds = {};
  const int display = std::max(0, SDL_GetWindowDisplayIndex(window_.get()));
  return SDL_GetDisplayUsableBounds(display, &bounds) == 0 ? Size{bounds.w, bounds.h} : Size{};
}

std::optional<WindowScale> Window::scale() const {
  return WindowScale{.now = static_cast<double>(place_.height) / picture_.height,
                     .largest = largest_multiple(picture_, room())};
}

void Window::set_scale(int scale) {
  SDL_SetWindowFullscreen(window_.get(), 0);
  SDL_RestoreWindow(window_.get());
  SDL_SetWindowSize(window_.get(), scale * picture_.width, scale * picture_.height);
  note_place();
}

// As it will be when what is due has been done.
bool Window::is_full_screen() const {
  return fills_display(window_.get()) != is_switch_due_;
}

// Each switch keeps the window system busy: one that the next press undoes is not made.
void Window::switch_full_screen_if_due() {
  if (!std::exchange(is_switch_due_, false))
    return;
  const uint32_t mode = fills_display(window_.get()) ? 0U : uint32_t{SDL_WINDOW_FULLSCREEN_DESKTOP};
  SDL_SetWindowFullscreen(window_.get(), mode);
}

void Window::note_pointer_motion() {
  pointer_.move(now_ms());
  SDL_ShowCursor(SDL_ENABLE);
}

void Window::hide_idle_pointer() const {
  if (pointer_.is_idle(now_ms()))
    SDL_ShowCursor(SDL_DISABLE);
}

SDL_Point Window::picture_point(int x, int y) const {
  Size window = {};
  SDL_GetWindowSize(window_.get(), &window.width, &window.height);
  const Area area = letterbox(picture_, window);
  return {(x - area.x) * picture_.width / area.width, (y - area.y) * picture_.height / area.height};
}

} // namespace kavo::host
