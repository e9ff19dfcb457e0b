#include "recording/host_news.h"

#include <string_view>

#include "runtime/qor.h"

namespace kavo::recording {

HostNews& host_news() {
  static HostNews news;
  return news;
}

void dispatch_event(const char* name, const int64_t* values, const uint32_t* tags, int64_t count) {
  if (name == nullptr || std::string_view(name) != "RECORDINGS")
    return qorrt_dispatch_event(name, values, tags, count);
  if (count < 2 || tags[0] != QOR_TAG_STRING)
    return;
  HostNews& news = host_news();
  news.folder = static_cast<const char*>(qor_reference_in({.i64 = values[0]}));
  news.is_recording_wanted = values[1] != 0;
  news.has_changed = true;
}

} // namespace kavo::recording
