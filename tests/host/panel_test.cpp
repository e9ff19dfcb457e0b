// Help and settings above the game: what they look like, what their keys do, what is kept.
// KAVO_UPDATE_GOLDEN=1 writes their pictures anew.
#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/panel/drawing.h"
#include "host/panel/texts.h"
#include "host/screen/font.h"
#include "host/screen/png.h"
#include "host/settings/settings_file.h"
#include "runtime/clock.h"
#include "tests/fakes/stage.h"
#include "tests/host/played.h"
#include "tests/host/read_png.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

#ifdef __SANITIZE_ADDRESS__
extern "C" size_t __sanitizer_get_current_allocated_bytes(); // its header comes with Clang only
#endif

namespace kavo::test {
namespace {

namespace fs = std::filesystem;
namespace colour = host::colour;
using host::EventSink;
using host::Language;
using host::Settings;
using host::Text;

constexpr int width = 660;
constexpr int height = 800;

// The player's hands: keys by their names, "hold" one until it has repeated itself three times,
// "move x y" and "click x y".
struct Hands {
  static void act(EventSink& sink, const std::string& deed) {
    int x = 0;
    int y = 0;
    if (std::sscanf(deed.c_str(), "move %d %d", &x, &y) == 2)
      return sink.pointer_moved(x, y);
    if (std::sscanf(deed.c_str(), "click %d %d", &x, &y) == 2) {
      sink.button_went_down(1, x, y);
      return sink.button_went_up(1, x, y);
    }
    const bool is_long = deed.starts_with("hold ");
    const std::string name = is_long ? deed.substr(5) : deed;
    sink.key_went_down(key_named(name), false);
    for (int repeat = 0; is_long && repeat < 3; ++repeat)
      sink.key_went_down(key_named(name), true);
    sink.key_went_up(key_named(name));
  }
};

class PanelTest : public testing::Test {
protected:
  PanelTest() {
    stage() = {};
    stage().settings_folder = folder.path();
    stage().watch = [this](const host::Canvas& picture) {
      shown.assign(picture.pixels().begin(), picture.pixels().end());
    };
    write_file(folder / "settings.ini", "");
  }
  ~PanelTest() override { stage() = {}; }

  static void open(const Played& program) {
    program.send("SCREEN", width, height, "x", 1);
    program.send("DRAWCOLOR", 200, 60, 60);
    program.send("RECT", 0, 0, width, height, 1);
    program.send("SCREENFLIP");
  }

  // One picture at which the player does the first deed; the others while the game stands still,
  // before which `look` is called each time.
  void play(const Played& program, const std::vector<std::string>& deeds,
            const std::function<void(size_t)>& look = {}) {
    size_t done = 0;
    stage().wait = [&](EventSink& sink) {
      if (look)
        look(done);
      ASSERT_LT(done, deeds.size()) << "it stands still after the last deed";
      const size_t deed = done++;
      Hands::act(sink, deeds[deed]);
    };
    stage().play = [&](EventSink& sink) {
      if (done == 0)
        Hands::act(sink, deeds[done++]);
    };
    for (int picture = 0; done < deeds.size() && picture < 10; ++picture)
      program.send("SCREENFLIP");
    EXPECT_EQ(done, deeds.size()) << "it does not stand still";
    stage().play = nullptr;
  }

  Settings kept() const {
    Settings settings;
    EXPECT_EQ(host::read_settings(read_file(folder / "settings.ini"), settings),
              std::vector<std::string>());
    return settings;
  }

  uint32_t pixel(int x, int y) const { return shown[static_cast<size_t>(y) * width + x]; }

  WorkingFolder scores;
  TemporaryFolder folder;
  std::vector<uint32_t> shown;
};

// ---- what it looks like -------------------------------------------------------------------------

struct PageOfPanel {
  const char* name;
  std::vector<std::string> way; // from the game to the page
};

const std::vector<PageOfPanel>& pages() {
  static const std::vector<PageOfPanel> all = {
      {"menu", {"F1"}},
      {"settings", {"F1", "Down", "Return"}},
      {"keys", {"F1", "Return"}},
      {"lean", {"F1", "Return", "Right"}},
      {"blocks", {"F1", "Return", "Right", "Right"}},
      {"points", {"F1", "Return", "Left", "Left"}},
      {"words", {"F1", "Return", "Left"}},
  };
  return all;
}

std::string png_of(const std::vector<uint32_t>& pixels) {
  host::Canvas canvas(width, height);
  std::ranges::copy(pixels, canvas.pixels_to_change().begin());
  return host::png_of(canvas);
}

void expect_like_golden(const std::string& name, const std::vector<uint32_t>& shown) {
  const std::string path = std::string(KAVO_GOLDEN_FOLDER) + "/panel/" + name + ".png";
  if (std::getenv("KAVO_UPDATE_GOLDEN") != nullptr)
    return write_file(path, png_of(shown));
  ASSERT_TRUE(fs::exists(path)) << path;
  if (read_png(read_file(path)).pixels == shown)
    return;
  const std::string copy = testing::TempDir() + name + ".png";
  write_file(copy, png_of(shown));
  ADD_FAILURE() << name << " looks otherwise; it is kept as " << copy;
}

TEST_F(PanelTest, PagesLookLikeTheGoldenOnes) {
  for (const char* language : {"en", "de"}) {
    const Environment wanted("QORRT_LANG", language);
    for (const PageOfPanel& page : pages()) {
      const Played program;
      open(program);
      std::vector<std::string> deeds = page.way;
      deeds.emplace_back("F1");
      play(program, deeds, [&](size_t done) {
        if (done == page.way.size())
          expect_like_golden(std::string(page.name) + "-" + language, shown);
      });
    }
  }
}

double luminance(uint32_t rgb) {
  const auto part = [rgb](unsigned shift) {
    const double value = static_cast<double>(rgb >> shift & 0xFFU) / 255;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0);
}

TEST(PanelColours, CanBeReadOnBothGrounds) {
  for (const uint32_t letters : {colour::heading, colour::chosen, colour::plain, colour::faint})
    for (const uint32_t ground : {colour::ground, colour::chosen_ground})
      EXPECT_GE((luminance(letters) + 0.05) / (luminance(ground) + 0.05), 4.5)
          << std::hex << letters << " on " << ground;
}

void expect_drawable(std::string_view line, int most) {
  EXPECT_LE(host::length_of(line), most) << line;
  const uint8_t* box = host::glyph_rows(host::replacement_character);
  for (std::string_view rest = line; !rest.empty();)
    EXPECT_NE(host::glyph_rows(host::next_code_point(rest)), box) << line;
}

TEST(PanelTexts, FitAndHaveALetterForEachOfTheirs) {
  constexpr int room = 70; // characters
  for (const Language language : {Language::english, Language::german}) {
    for (int which = 0; which <= static_cast<int>(Text::keys_of_help); ++which)
      expect_drawable(host::text(static_cast<Text>(which), language), room);
    for (int page = 0; page < host::help_page_count; ++page)
      for (const std::string_view line : host::help_page(page, language).lines)
        expect_drawable(line, page == host::page_of_the_blocks ? room - 6 : room);
  }
  EXPECT_NE(host::text(Text::back_to_the_game, Language::german).find("ü"), std::string_view::npos);
}

TEST(PanelTexts, AreOfThePlayersLanguage) {
  for (const char* locale : {"de", "de_DE.UTF-8", "de_AT@euro", "de.UTF-8"})
    EXPECT_EQ(host::resolved(Language::automatic, locale), Language::german) << locale;
  for (const char* locale : {"", "C", "en_GB.UTF-8", "den", "fr_FR"})
    EXPECT_EQ(host::resolved(Language::automatic, locale), Language::english) << locale;
  EXPECT_EQ(host::resolved(Language::english, "de_DE"), Language::english);
}

// ---- what its keys do ---------------------------------------------------------------------------

TEST_F(PanelTest, IsOpenedAndClosedByF1AndEscapeAndNoneOfItIsTheGames) {
  for (const char* end : {"F1", "Escape"}) {
    const Played program;
    open(program);
    play(program, {"F1", "Left", "Right", end});
    for (const char* key : {"Left", "Right", "Escape", "F1"})
      for (int frame = 0; frame < 3; ++frame) {
        EXPECT_EQ(program.send("GFX.KEYSTATE", key), 0.0) << key;
        program.send("SCREENFLIP");
      }
    EXPECT_EQ(pixel(1, 1), 0xC83C3CU) << "the picture is bright again";
  }
}

TEST_F(PanelTest, StandsAboveADimmedPictureThatTheProgramSavesAsItIs) {
  const Played program;
  open(program);
  play(program, {"F1", "F1"}, [&](size_t) {
    EXPECT_EQ(pixel(1, 1), 0x320F0FU);
    program.send("GFX.SAVE_SCREENSHOT", "saved.png");
  });
  const auto saved = read_png(read_file("saved.png")).pixels;
  EXPECT_TRUE(std::ranges::all_of(saved, [](uint32_t each) { return each == 0xC83C3CU; }));
}

TEST_F(PanelTest, EscapeLeadsBackFromEveryPage) {
  for (const PageOfPanel& page : pages()) {
    const Played program;
    open(program);
    std::vector<std::string> deeds = page.way;
    deeds.insert(deeds.end(), page.name == std::string("menu") ? 1 : 2, "Escape");
    play(program, deeds);
    EXPECT_EQ(program.send("GFX.KEYSTATE", "Escape"), 0.0);
  }
}

// Deeds on the page of settings, and what they set.
struct Change {
  std::vector<std::string> deeds;
  std::function<void(Settings&)> expected;
};

TEST_F(PanelTest, EverySettingIsEffectiveAtOnceAndThereAtTheNextStart) {
  const std::vector<Change> changes = {
      {{"Left", "Left"}, [](Settings& settings) { settings.music = 90; }},
      {{"Right"}, [](Settings& settings) { settings.music = 95; }},
      {{"Down", "Left"}, [](Settings& settings) { settings.effects = 95; }},
      {{"Up", "Up", "Up", "Up", "Right"}, [](Settings& settings) { settings.is_calm = true; }},
      {{"Up", "Up", "Up", "Return"}, [](Settings& settings) { settings.waits = false; }},
      {{"Up", "Up", "Right", "Right"},
       [](Settings& settings) { settings.language = Language::german; }},
  };
  Settings expected;
  for (const Change& change : changes) {
    std::vector<std::string> deeds = {"F1", "Down", "Return"};
    deeds.insert(deeds.end(), change.deeds.begin(), change.deeds.end());
    deeds.emplace_back("F1");
    const Played program;
    open(program);
    change.expected(expected);
    play(program, deeds, [&](size_t done) {
      if (done + 1 == deeds.size()) {
        EXPECT_EQ(kept(), expected) << "before it is closed";
      }
    });
    EXPECT_EQ(kept(), expected);
  }
  const Played program;
  open(program);
  play(program, {"F1", "Down", "Return", "Up", "Return", "F1"});
  EXPECT_EQ(kept(), Settings()) << "back to the defaults";
}

TEST_F(PanelTest, VolumesStayWithinTheirBounds) {
  const Played program;
  open(program);
  std::vector<std::string> deeds = {"F1", "Down", "Return", "Right"};
  deeds.insert(deeds.end(), 25, "Left");
  deeds.emplace_back("F1");
  play(program, deeds);
  EXPECT_EQ(kept().music, 0);
}

TEST_F(PanelTest, ACalmDisplayBeginsWhenItIsSwitchedOn) {
  const Played program;
  open(program);
  play(program, {"F1", "Down", "Return", "Down", "Down", "Down", "Return", "F1"});
  program.send("SCREENFLIP");
  program.send("CLS");
  program.send("SCREENFLIP");
  EXPECT_GT(pixel(1, 1), 0U) << "it follows gradually";
}

TEST_F(PanelTest, AKeyThatIsHeldGoesOnChangingAVolume) {
  const Played program;
  open(program);
  play(program, {"F1", "Down", "Return", "hold Left", "hold Escape", "Escape"});
  EXPECT_EQ(kept().music, 80);
}

// ---- the pointer --------------------------------------------------------------------------------

TEST_F(PanelTest, ASignShowsWhileThePointerMovesAndOpensIt) {
  const Played program;
  open(program);
  EXPECT_EQ(pixel(630, 10), 0xC83C3CU);
  play(program, {"move 100 100"});
  program.send("SCREENFLIP");
  EXPECT_EQ(pixel(630, 12), colour::ground);
  bool is_open = false;
  play(program, {"click 635 15", "Escape"}, [&](size_t) { is_open = true; });
  EXPECT_TRUE(is_open);
}

TEST_F(PanelTest, ClicksChooseChangeAndLeadBack) {
  const Played program;
  open(program);
  // Settings; music, its left arrow twice and its right one once; the foot twice.
  play(program, {"F1", "move 200 200", "click 200 200", "click 385 160", "click 385 160",
                 "click 450 160", "click 330 715", "click 330 715"});
  EXPECT_EQ(kept().music, 95);
}

// ---- the rest -----------------------------------------------------------------------------------

double fake_now_ms = 0;

struct FakeTime {
  FakeTime() {
    const qor_clock clock = {
        .tick = [](void*) { return fake_now_ms; }, .sleep = nullptr, .context = nullptr};
    qor_set_clock(&clock);
  }
  ~FakeTime() { qor_set_clock(nullptr); }
};

TEST_F(PanelTest, AFirstStartTellsOfItForFiveSeconds) {
  const FakeTime time;
  fs::remove(folder / "settings.ini");
  const auto says = [&] { return pixel(width / 2, height - 35) == colour::ground; };
  const Played program;
  open(program);
  EXPECT_TRUE(says());
  fake_now_ms += 4999;
  program.send("SCREENFLIP");
  EXPECT_TRUE(says());
  fake_now_ms += 2;
  program.send("SCREENFLIP");
  EXPECT_FALSE(says());
  const Played second;
  open(second);
  EXPECT_FALSE(says());
}

TEST_F(PanelTest, IsNotThereForAProgramThatNobodyPlays) {
  Bridge bridge;
  bridge.send("SCREEN", width, height, "x", 1);
  stage().play = [](EventSink& sink) { Hands::act(sink, "F1"); };
  bridge.send("SCREENFLIP");
  EXPECT_EQ(bridge.send("GFX.KEYSTATE", "F1"), 1.0);
}

size_t taken_memory() {
#ifdef __SANITIZE_ADDRESS__
  return __sanitizer_get_current_allocated_bytes();
#else
  return mallinfo2().uordblks;
#endif
}

TEST_F(PanelTest, OpenedAndClosedAThousandTimesItLeavesMemoryAsItWas) {
  stage().watch = [](const host::Canvas&) {};
  const Played program;
  open(program);
  const std::vector<std::string> look_in = {"F1", "F1"};
  const std::vector<std::string> visit = {"F1",   "Return", "Right", "Escape",
                                          "Down", "Return", "F1"};
  const auto come_and_go = [&](int rounds) {
    for (int round = 0; round < rounds; ++round)
      play(program, round % 10 == 0 ? visit : look_in);
  };
  come_and_go(10);
  const size_t before = taken_memory();
  come_and_go(1000);
  EXPECT_EQ(taken_memory(), before);
}

} // namespace
} // namespace kavo::test
