#include "recording/host_news.h"

#include "host/program.h"

namespace kavo::recording {

HostNews& host_news() {
  static HostNews news;
  return news;
}

} // namespace kavo::recording

void kavo_games_are_kept(const char* folder, int is_wanted) {
  kavo::recording::host_news() = {
      .folder = folder, .is_recording_wanted = is_wanted != 0, .has_changed = true};
}
