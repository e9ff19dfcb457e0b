#include "tools/film/help_page.h"

#include <cstdlib>
#include <fstream>
#include <queue>

#include "host/screen/png.h"
#include "tests/fakes/stage.h"
#include "tests/support/temporary_folder.h"
#include "tools/film/player.h"
#include "tools/film/studio.h"

namespace kavo::film {

namespace {

constexpr int pictures_before = 1200; // until the well holds a few pieces
constexpr int frames_for_a_key = 6;

void tap(host::EventSink& sink, const std::string& name) {
  sink.key_went_down(test::key_named(name), false);
  sink.key_went_up(test::key_named(name));
}

} // namespace

bool film_help_page(const std::filesystem::path& file, const std::string& language, int seed) {
  const test::WorkingFolder scores;
  setenv("QORRT_LANG", language.c_str(), 1);
  Player player({}, frames_for_a_key);
  std::queue<std::string> keys({"Return", "Right", "Right", "Right"}); // to the page, then out
  int pictures = 0;
  host::Canvas shown(0, 0);
  test::stage().play = [&](host::EventSink& sink) {
    if (++pictures == pictures_before)
      return tap(sink, "F1");
    player.act(sink);
  };
  test::stage().watch = [&](const host::Canvas& picture) { shown = copy_of(picture); };
  test::stage().wait = [&](host::EventSink& sink) {
    if (!keys.empty()) {
      tap(sink, keys.front());
      return keys.pop();
    }
    std::ofstream(file, std::ios::binary) << host::png_of(shown);
    tap(sink, "F1");
    player.leave();
  };
  const bool has_ended_well = run_game({}, seed);
  test::stage() = {};
  return has_ended_well;
}

} // namespace kavo::film
