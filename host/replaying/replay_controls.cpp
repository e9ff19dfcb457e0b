#include "host/replaying/replay_controls.h"

#include <algorithm>
#include <cstdio>

namespace kavo::host {

namespace {

constexpr int fastest = 3; // 2^3 times

std::string clock_text(double milliseconds) {
  const auto seconds = static_cast<long long>(std::clamp(milliseconds, 0.0, 1e12) / 1000);
  char text[32];
  static_cast<void>(std::snprintf(text, sizeof text, "%lld:%02lld", seconds / 60, seconds % 60));
  return text;
}

std::string_view chosen(Language language, std::string_view english, std::string_view german) {
  return language == Language::german ? german : english;
}

} // namespace

void ReplayControls::take(const ReplayReport& report) {
  report_ = report;
  is_on_ = true;
  if (has_ended())
    is_paused_ = is_to_end_ = false;
}

double ReplayControls::wish() const {
  return is_to_leave_ ? leave : is_to_end_ ? to_the_end : 1 << pace_;
}

void ReplayControls::press(std::string_view key) {
  if (key == "Escape")
    is_to_leave_ = true;
  else if (key == "Space" || key == "P" || key == "Return")
    toggle_pause();
  else if (key == "Right" || key == "Up")
    change_pace(1);
  else if (key == "Left" || key == "Down")
    change_pace(-1);
  else if (key == "End")
    is_to_end_ = !has_ended();
  else if (key == "1" || key == "2" || key == "4" || key == "8")
    pace_ = key == "1" ? 0 : key == "2" ? 1 : key == "4" ? 2 : fastest;
  is_paused_ = is_paused_ && !is_to_leave_ && !is_to_end_;
}

void ReplayControls::toggle_pause() {
  is_paused_ = !is_paused_ && !has_ended();
}

void ReplayControls::change_pace(int by) {
  pace_ = std::clamp(pace_ + by, 0, fastest);
}

std::string ReplayControls::line(Language language) const {
  std::string text(chosen(language, "Recording  ", "Aufzeichnung  "));
  text += clock_text(report_.milliseconds);
  switch (report_.standing) {
  case ReplayReport::Standing::as_recorded:
    return text.append(chosen(language, "   The end, as recorded. Escape: back",
                              "   Das Ende, wie aufgezeichnet. Escape: zurück"));
  case ReplayReport::Standing::cut_off:
    return text.append(chosen(language, "   Recorded as far as this. Escape: back",
                              "   So weit aufgezeichnet. Escape: zurück"));
  case ReplayReport::Standing::diverged:
    return text.append(chosen(language, "   Differs from frame ", "   Anders ab Bild "))
        .append(std::to_string(report_.frame + 1))
        .append(chosen(language, ": another version? Escape: back",
                       ": andere Version? Escape: zurück"));
  case ReplayReport::Standing::playing:
    break;
  }
  text += " / " + clock_text(report_.length_ms) + "   " + std::to_string(1 << pace_) + "×   ";
  return text
      .append(chosen(language, is_paused_ ? "Space: go on" : "Space: pause",
                     is_paused_ ? "Leer: weiter" : "Leer: Pause"))
      .append(chosen(language, "  Arrows: pace  End  Escape: back",
                     "  Pfeile: Tempo  Ende  Escape: zurück"));
}

} // namespace kavo::host
