// The window on the desktop, through SDL and without OpenGL: the picture is scaled here and put
// into the window's own memory.
#pragma once

#include <SDL.h>

#include <memory>
#include <optional>
#include <vector>

#include "host/desktop/controllers.h"
#include "host/desktop/foreign_keys.h"
#include "host/desktop/idle_pointer.h"
#include "host/desktop/screen_saver.h"
#include "host/desktop/x_picture.h"
#include "host/screen/presenter.h"
#include "host/screen/scaler.h"
#include "host/screen/shown_picture.h"

namespace kavo::host {

class Window final : public Presenter {
public:
  // Throws CommandError with SDL's reason when there is no display to open it on.
  explicit Window(const ScreenRequest& request);

  ~Window() override;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  void present(Canvas& canvas) override;
  void deliver_events(EventSink& sink) override;
  void wait_for_events(EventSink& sink) override;
  bool is_full_screen() const override;
  void switch_full_screen() override { is_switch_due_ = !is_switch_due_; }
  std::optional<WindowPlace> place() const override { return place_; }
  std::optional<WindowScale> scale() const override;
  void set_scale(int scale) override;
  const std::string& unplayable_reason() const override { return unplayable_reason_; }

private:
  // SDL's video part, for as long as it lives.
  struct Video {
    Video();
    ~Video() { SDL_QuitSubSystem(SDL_INIT_VIDEO); }
    Video(const Video&) = delete;
    Video& operator=(const Video&) = delete;
  };
  struct DestroyWindow {
    void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  };

  void deliver(const SDL_Event& event, EventSink& sink);
  void deliver_key(const SDL_KeyboardEvent& event, EventSink& sink);
  void note_place();
  Size room() const;
  void deliver_window_event(const SDL_WindowEvent& event, EventSink& sink);
  SDL_Surface* surface();
  void present_without_surface(const Canvas& canvas);
  int longest_wait_ms() const;
  void switch_full_screen_if_due();
  void hide_idle_pointer() const;
  void note_pointer_motion();
  SDL_Point picture_point(int x, int y) const;
  static int SDLCALL watch_changes(void* data, SDL_Event* event);
  void send_home();
  std::vector<Area> present_on(const SDL_Surface& surface, Canvas& canvas);
  void lodge(Canvas& canvas, const SDL_Surface& surface);
  std::vector<Area> draw_scaled(const Canvas& canvas, const std::vector<Area>& parts,
                                const SDL_Surface& surface);
  void draw_converted(const Canvas& canvas, const SDL_Surface& surface);
  bool is_a_sign_of_life_due() const;
  void update(const std::vector<Area>& areas);

  Video video_;
  std::unique_ptr<SDL_Window, DestroyWindow> window_;
  Size picture_;
  Scaler scaler_;
  ShownPicture shown_; // in this window as it is now
  uint64_t last_shown_at_ms_ = 0;
  Canvas* lodger_ = nullptr;        // whose picture lies in the window's memory
  std::vector<uint32_t> converted_; // for displays of another pixel format
  std::optional<Controllers>
      controllers_;                     // from the first picture on, which need not wait for them
  std::unique_ptr<XPicture> x_picture_; // when SDL has no memory for the window
  bool has_complained_ = false;         // that nothing can be shown
  bool is_switch_due_ = false;          // to full screen or back
  WindowPlace place_;
  IdlePointer pointer_;
  uint64_t last_event_at_ms_ = 0;
  ScreenSaver screen_saver_;
  ForeignKeys foreign_keys_;
  std::string unplayable_reason_; // stays empty: a window can be played in
};

} // namespace kavo::host
