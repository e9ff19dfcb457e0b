#include "host/host.h"

#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "host/command.h"
#include "host/failure.h"
#include "host/panel/drawing.h"
#include "host/panel/texts.h"
#include "host/program.h"
#include "host/settings/window_state.h"
#include "host/standard_streams.h"
#include "runtime/clock.h"

namespace kavo::host {

namespace {

constexpr int most_pictures_after_the_wish_to_end = 2;

// The host that may be playing, and the process that it belongs to: no thread survives a fork.
Host* playing = nullptr;
pid_t player = 0;

// The program may end from anywhere, on an error or when the display is lost. The sound's thread
// must be gone before the data that it reads are.
void leave_in_order() {
  if (playing != nullptr && player == getpid())
    playing->leave();
}

void leave_in_order_at_exit_of(Host* host) {
  static const bool is_registered = std::atexit(leave_in_order) == 0;
  playing = is_registered ? host : nullptr;
  player = getpid();
}

double seconds_of_steady_clock() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

// Half of it is heard as about half as loud; as a factor of amplitude it would be more.
double loudness_of(int percent) {
  return percent * percent / 10'000.0;
}

std::unique_ptr<sound::Player> make_sound(Platform& platform) {
  return std::make_unique<sound::Player>(
      platform.make_sound_output(), seconds_of_steady_clock,
      [&platform](const std::string& line) { platform.tell(line); });
}

// What players have set is for this game: another program that the host carries has none of it.
bool is_this_game(int argument_count, const char* const* arguments) {
  return argument_count >= 1 && arguments != nullptr && arguments[0] != nullptr &&
         std::filesystem::path(arguments[0]).filename() == "kavo";
}

} // namespace

Host::Host(std::unique_ptr<Platform> platform)
    : platform_(std::move(platform)), sound(make_sound(*platform_)) {
  open_missing_standard_streams();
  leave_in_order_at_exit_of(this);
}

Host::~Host() {
  playing = nullptr;
  sound.reset();
  close_screen();
}

void Host::start(int argument_count, const char* const* arguments) {
  const bool has_arguments = argument_count > 1 && arguments != nullptr;
  const std::string_view word = has_arguments ? arguments[1] : "";
  has_settings_ = is_this_game(argument_count, arguments) && word != "shot";
  is_played_ = has_settings_ && word != "--replay";
  if (word != "--replay")
    start_scores(argument_count, arguments);
  start_settings();
}

// What nobody plays heeds the environment only.
void Host::start_settings() {
  settings_.open(has_settings_ ? platform_->settings_folder() : std::filesystem::path());
  for (const std::string& line : settings_.take_news())
    platform_->tell(line);
  apply_settings();
}

void Host::apply_settings() {
  const Settings& settings = settings_.current();
  sound->levels({.music = loudness_of(settings.music), .effects = loudness_of(settings.effects)});
  screen.set_calm(settings.is_calm);
  bound_keys_.set_bindings(settings.bindings);
  held_repeat_.set_times(
      settings.repeats ? std::optional<RepeatTimes>({settings.repeat_delay, settings.repeat_rate})
                       : std::nullopt);
  gate_.set_panel_offered(is_played_);
  gate_.attention().set_waited_for(is_played_ && settings.waits);
  tell_where_games_are_kept();
}

void Host::tell_where_games_are_kept() {
  const std::string folder = platform_->games_folder().string();
  if (kavo_games_are_kept != nullptr && !folder.empty())
    kavo_games_are_kept(folder.c_str(), is_played_ && settings_.current().records);
}

double Host::take_replay_report(const ReplayReport& report) {
  if (!replay_.is_on())
    keyboard.release_all();
  replay_.take(report);
  return replay_.wish();
}

void Host::end_replay() {
  replay_.end();
  keyboard.release_all();
}

void Host::open_screen(const ScreenRequest& request) {
  if (!has_settings_)
    start_settings();
  close_screen();
  if (has_settings_)
    remembered_place_ = read_window_state(platform_->state_folder());
  const WindowWish& wish = settings_.window();
  ScreenRequest wanted = request;
  wanted.is_full_screen = wish.is_full_screen.value_or(remembered_place_.has_value() &&
                                                       remembered_place_->is_full_screen);
  if (wish.scale)
    wanted.scale = *wish.scale;
  wanted.may_grow = has_settings_ && !wish.scale;
  if (!wish.scale)
    wanted.place = remembered_place_;
  screen.open(wanted);
  opened_place_ = screen.presenter().place();
}

// Closed first, which frees descriptors that the file may need.
void Host::close_screen() {
  const std::optional<WindowPlace> place = place_to_remember();
  screen.close();
  if (place)
    write_window_state(platform_->state_folder(), *place);
}

// What was asked for this game only is not kept, unless the player has changed it since.
std::optional<WindowPlace> Host::place_to_remember() {
  if (!is_played_ || !screen.is_open() || !opened_place_)
    return {};
  WindowPlace place = *screen.presenter().place();
  const WindowWish& wish = settings_.window();
  if (wish.is_full_screen && place.is_full_screen == opened_place_->is_full_screen)
    place.is_full_screen = remembered_place_.has_value() && remembered_place_->is_full_screen;
  const bool has_its_size =
      place.width == opened_place_->width && place.height == opened_place_->height;
  if (wish.scale && has_its_size) {
    if (!remembered_place_)
      return {};
    place.width = remembered_place_->width;
    place.height = remembered_place_->height;
    place.corner = remembered_place_->corner;
  }
  return place;
}

void Host::start_scores(int argument_count, const char* const* arguments) {
  scores.prepare_for(argument_count, arguments);
  std::string message;
  for (const std::string& line : scores.news()) {
    platform_->tell(line);
    message += line + "\n\n";
  }
  if (!message.empty())
    platform_->show_message(message + (scores.are_taken() ? "Close this message and play there."
                                                          : "Close this message to play."));
  if (scores.are_taken())
    end_program();
}

void Host::leave() {
  sound->shutdown();
  scores.leave();
  if (const auto place = place_to_remember())
    write_window_state(platform_->state_folder(), *place);
  if (failure_ == nullptr)
    return;
  close_screen();
  platform_->show_message(in_players_words(failure_));
}

void Host::show_picture() {
  show_signs();
  screen.presenter().present(screen.canvas());
  // A frame that has asked for keys has just looked; the desktop need not be asked twice.
  if (!has_taken_events_)
    take_events();
  if (gate_.holds_game_up() && !events.is_taking())
    stand_still();
  sound->tend();
  keyboard.end_frame();
  has_taken_events_ = false;
  if (!is_asked_to_end())
    return;
  ++pictures_since_asked_to_end_;
  if (!frames_.is_inside() || pictures_since_asked_to_end_ >= most_pictures_after_the_wish_to_end)
    end_program();
}

// A game that is to end need not be waited for.
void Host::stand_still() {
  keyboard.release_all();
  screen.set_overlay([this](Canvas& canvas) { draw_above(canvas); });
  screen.present_again();
  sound->rest();
  is_standing_still_ = true;
  while (gate_.holds_game_up() && !is_asked_to_end() && screen.is_open()) {
    events.wait_for(screen.presenter(), gate_);
    rest_when_heard();
    screen.present_again();
  }
  panel_.close();
  is_standing_still_ = false;
  heard_until_ms_.reset();
  screen.set_overlay({});
  if (!is_asked_to_end() && screen.is_open()) {
    screen.present_again();
    sound->wake();
  }
}

void Host::draw_above(Canvas& canvas) {
  if (panel_.is_open())
    panel_.draw(canvas);
  else if (replay_.is_on())
    draw_foot_line(canvas, replay_.line(language()));
  else
    draw_waiting(canvas, language());
}

// A sign that leads to the panel while the pointer moves, and a line that tells of it at first.
void Host::show_signs() {
  if (replay_.is_on())
    return screen.set_overlay([this](Canvas& canvas) { draw_above(canvas); });
  constexpr double sign_ms = 2000;
  constexpr double hint_ms = 5000;
  const double now = qor_tick();
  if (gate_.has_pointer_moved())
    sign_until_ms_ = now + sign_ms;
  if (hint_until_ms_ < 0)
    hint_until_ms_ = settings_.is_first_start() ? now + hint_ms : 0;
  const bool has_sign = is_played_ && now < sign_until_ms_;
  const bool has_hint = is_played_ && now < hint_until_ms_;
  gate_.set_sign(has_sign ? std::optional(corner_sign(screen.canvas())) : std::nullopt);
  if (!has_sign && !has_hint)
    return screen.set_overlay({});
  screen.set_overlay([has_sign, has_hint, language = language()](Canvas& canvas) {
    if (has_sign)
      draw_corner_sign(canvas);
    if (has_hint)
      draw_foot_line(canvas, text(Text::first_start, language));
  });
}

PanelWorld Host::panel_world() {
  return {.settings = [this]() -> const Settings& { return settings_.current(); },
          .change = [this](const Settings& wanted) { change_settings(wanted); },
          .is_full_screen = [this] { return screen.presenter().is_full_screen(); },
          .switch_full_screen = [this] { screen.presenter().switch_full_screen(); },
          .window_scale = [this] { return screen.presenter().scale(); },
          .set_window_scale = [this](int scale) { screen.presenter().set_scale(scale); },
          .language = [this] { return language(); },
          .is_key = [this](const std::string& name) { return is_key(name); }};
}

Language Host::language() const {
  return resolved(settings_.current().language, platform_->locale());
}

// A name with a comma or a semicolon in it could not be read again from a list, but for those that
// have words there.
bool Host::is_key(const std::string& name) const {
  return word_for_key(name).find_first_of(",;") == std::string_view::npos &&
         platform_->code_of_key(name).has_value();
}

void Host::change_settings(const Settings& wanted) {
  const Settings before = settings_.current();
  settings_.change(wanted);
  for (const std::string& line : settings_.take_news())
    platform_->tell(line);
  apply_settings();
  if (is_standing_still_)
    let_volumes_be_heard(before);
}

// For a moment the music goes on, and an effect plays on a voice that the game leaves alone.
void Host::let_volumes_be_heard(const Settings& before) {
  constexpr double moment_ms = 1500;
  constexpr double unused_voice = 15;
  const Settings& now = settings_.current();
  if (now.music == before.music && now.effects == before.effects)
    return;
  sound->wake();
  if (now.effects != before.effects)
    sound->play(unused_voice, "e5");
  heard_until_ms_ = qor_tick() + moment_ms;
}

void Host::rest_when_heard() {
  if (!heard_until_ms_ || (panel_.is_open() && qor_tick() < *heard_until_ms_))
    return;
  heard_until_ms_.reset();
  sound->rest();
}

bool Host::is_key_held(std::string_view key_name) {
  const Presenter& presenter = screen.presenter();
  const int code = key_names_.code_of(key_name);
  if (!presenter.unplayable_reason().empty())
    throw CommandError(presenter.unplayable_reason());
  if (!has_taken_events_) {
    take_events();
    held_repeat_.tend(qor_tick());
  }
  return keyboard.is_held(code);
}

void Host::end_frame(int64_t token) {
  frames_.end(token);
  if (!frames_.is_inside() && is_asked_to_end())
    end_program();
}

void Host::take_events() {
  has_taken_events_ = true;
  if (screen.is_open())
    events.take_from(screen.presenter(), gate_);
  gate_.tend(qor_tick());
}

bool Host::is_asked_to_end() {
  if (QuitSignals::has_arrived())
    events.ask_to_quit();
  return events.is_quitting();
}

void Host::end_program() {
  sound->shutdown();
  close_screen();
  platform_->end_program(EXIT_SUCCESS);
}

} // namespace kavo::host
