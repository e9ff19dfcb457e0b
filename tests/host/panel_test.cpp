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
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/keys/controls.h"
#include "host/panel/drawing.h"
#include "host/panel/key_texts.h"
#include "host/panel/texts.h"
#include "host/screen/font.h"
#include "host/screen/png.h"
#include "host/settings/settings_file.h"
#include "host/settings/window_state.h"
#include "host/sound/memory_output.h"
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

double fake_now_ms = 0;

struct FakeTime {
  FakeTime() {
    const qor_clock clock = {
        .tick = [](void*) { return fake_now_ms; }, .sleep = nullptr, .context = nullptr};
    qor_set_clock(&clock);
  }
  ~FakeTime() { qor_set_clock(nullptr); }
};

// The player's hands: keys by their names, "hold" one until it has repeated itself three times,
// "move x y", "click x y", "south button" and "later", with fake time.
struct Hands {
  static void act(EventSink& sink, const std::string& deed) {
    if (deed == "later") {
      fake_now_ms += 2000;
      return;
    }
    int x = 0;
    int y = 0;
    if (std::sscanf(deed.c_str(), "move %d %d", &x, &y) == 2)
      return sink.pointer_moved(x, y);
    if (std::sscanf(deed.c_str(), "click %d %d", &x, &y) == 2) {
      sink.button_went_down(1, x, y);
      return sink.button_went_up(1, x, y);
    }
    if (deed.ends_with(" button"))
      return press(sink, *host::control_called(deed.substr(0, deed.size() - 7)));
    const bool is_long = deed.starts_with("hold ");
    const std::string name = is_long ? deed.substr(5) : deed;
    sink.key_went_down(key_named(name), false);
    for (int repeat = 0; is_long && repeat < 3; ++repeat)
      sink.key_went_down(key_named(name), true);
    sink.key_went_up(key_named(name));
  }
  static void press(EventSink& sink, host::Control control) {
    const host::ControlPress pressed = {1000 + static_cast<int>(control), control};
    sink.control_went_down(pressed);
    sink.control_went_up(pressed);
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
    stage().scale = {.now = 1, .largest = 3};
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
  static void play(const Played& program, const std::vector<std::string>& deeds,
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
      {"set-keys", {"F1", "Down", "Return", "Up", "Up", "Up", "Return", "Down"}},
      {"set-controller", {"F1", "Down", "Return", "Up", "Up", "Return", "Down", "Down", "Return"}},
      {"keys", {"F1", "Return"}},
      {"controller", {"F1", "Return", "Right"}},
      {"lean", {"F1", "Return", "Right", "Right"}},
      {"blocks", {"F1", "Return", "Right", "Right", "Right"}},
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

TEST_F(PanelTest, AGameThatWaitsLooksLikeTheGoldenOnes) {
  for (const char* language : {"en", "de"}) {
    const Environment wanted("QORRT_LANG", language);
    const Played program;
    stage().play = [](EventSink& sink) { sink.keyboard_was_given(); };
    open(program);
    stage().play = [](EventSink& sink) { sink.keyboard_was_taken(); };
    int waits = 0;
    stage().wait = [&](EventSink& sink) {
      ++waits;
      expect_like_golden(std::string("waiting-") + language, shown);
      sink.button_went_down(1, 5, 5);
    };
    program.send("SCREENFLIP");
    EXPECT_EQ(waits, 1);
    stage().play = nullptr;
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

TEST(PanelTexts, OfKeysFitTheirSlots) {
  host::Bindings longest;
  for (auto& keys : longest.keys)
    keys = {"Keypad Backspace", "AudioRewindEverything"};
  for (auto& controls : longest.controls)
    controls.fill(host::Control::right_stick_right);
  for (const Language language : {Language::english, Language::german}) {
    for (const auto& bindings : {host::Bindings(), longest})
      for (const auto device : {host::Device::keyboard, host::Device::controller})
        for (const std::string& line : host::lines_of_help(bindings, device, language))
          expect_drawable(line, 70);
    for (const host::Action action : host::all_actions)
      expect_drawable(host::label_of(action, language), 16);
    for (int number = 0; number < host::control_count; ++number)
      expect_drawable(host::text_of_control(static_cast<host::Control>(number), language), 16);
    expect_drawable(host::text_of_key("AudioRewindEverything", language), 16);
    expect_drawable(host::text(Text::press_it, language), 16);
  }
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
    const std::map<std::string, size_t> depths = {
        {"menu", 1}, {"set-keys", 3}, {"set-controller", 4}};
    deeds.insert(deeds.end(), depths.contains(page.name) ? depths.at(page.name) : 2, "Escape");
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
      {{"Down", "Down", "Down", "Down", "Right"},
       [](Settings& settings) { settings.is_calm = true; }},
      {{"Down", "Down", "Down", "Down", "Down", "Return"},
       [](Settings& settings) { settings.waits = false; }},
      {{"Down", "Down", "Down", "Down", "Down", "Down", "Return"},
       [](Settings& settings) { settings.records = false; }},
      {{"Up", "Up", "Up", "Up", "Up", "Up", "Up", "Right"},
       [](Settings& settings) { settings.repeats = true; }},
      {{"Up", "Up", "Up", "Up", "Up", "Up", "Right"},
       [](Settings& settings) { settings.repeat_delay = 220; }},
      {{"Up", "Up", "Up", "Up", "Up", "Left", "Left"},
       [](Settings& settings) { settings.repeat_rate = 30; }},
      {{"Up", "Up", "Up", "Return", "Right", "Return", "J"},
       [](Settings& settings) { settings.bindings.keys_of(host::Action::left)[1] = "J"; }},
      {{"Up", "Up", "Up", "Up", "Right", "Right"},
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

// ---- keys ---------------------------------------------------------------------------------------

const std::vector<std::string> to_keys = {"F1", "Down", "Return", "Up", "Up", "Up", "Return"};
const std::vector<std::string> to_controller = {"F1", "Down", "Return", "Up", "Up", "Return"};

std::vector<std::string> operator+(std::vector<std::string> before,
                                   const std::vector<std::string>& after) {
  before.insert(before.end(), after.begin(), after.end());
  return before;
}

// How the key answers in this frame and in the next, when it is tapped now.
std::vector<double> answers_to_a_tap(const Played& program, const std::string& tapped,
                                     const char* asked) {
  stage().play = [&](EventSink& sink) {
    Hands::act(sink, tapped);
    stage().play = nullptr;
  };
  std::vector<double> answers;
  for (int frame = 0; frame < 2; ++frame) {
    program.send("SCREENFLIP");
    answers.push_back(program.send("GFX.KEYSTATE", asked));
  }
  return answers;
}

const std::vector<double> one_press = {1, 0};
const std::vector<double> nothing = {0, 0};

TEST_F(PanelTest, EveryActionGetsAnotherKeyAndKeepsIt) {
  const std::vector<std::string> others = {"J", "L", "I", "K", "7", "8", "9", "0", "X", "Q"};
  const std::vector<const char*> names = {"Left", "Right",  "Up", "Down", "Space",
                                          "P",    "Return", "O",  "M",    "Escape"};
  std::vector<std::string> deeds = to_keys + std::vector<std::string>{"Right"};
  for (const std::string& other : others)
    deeds = deeds + std::vector<std::string>{"Return", other, "Down"};
  {
    const Played program;
    open(program);
    play(program, deeds + std::vector<std::string>{"F1"});
    for (size_t number = 0; number < others.size(); ++number)
      EXPECT_EQ(answers_to_a_tap(program, others[number], names[number]), one_press);
  }
  const Played next;
  open(next);
  for (size_t number = 0; number < others.size(); ++number) {
    EXPECT_EQ(answers_to_a_tap(next, others[number], names[number]), one_press) << "a new start";
    EXPECT_EQ(answers_to_a_tap(next, names[number], names[number]), one_press) << "the first slot";
  }
  EXPECT_EQ(answers_to_a_tap(next, "A", "A"), nothing) << "it was left's second one";
}

TEST_F(PanelTest, AKeyThatIsTakenChangesHands) {
  const Played program;
  open(program);
  play(program, to_keys + std::vector<std::string>{"Return", "Space", "F1"});
  EXPECT_EQ(answers_to_a_tap(program, "Left", "Left"), nothing);
  EXPECT_EQ(answers_to_a_tap(program, "Space", "Left"), one_press);
  EXPECT_EQ(answers_to_a_tap(program, "Space", "Space"), nothing);
  EXPECT_EQ(kept().bindings.keys_of(host::Action::left), (host::Bindings::Keys{"Space", "A"}));
  EXPECT_EQ(kept().bindings.keys_of(host::Action::drop), (host::Bindings::Keys{"", ""}));
}

TEST_F(PanelTest, EscapeAndF1AreNeverBoundAndArrowsReturnAndEscapeAlwaysWorkIt) {
  const Played program;
  open(program);
  // Escape ends the listening only. Return, arrows and Escape are given away where they can be.
  play(program, to_keys + std::vector<std::string>{"Return", "Escape", "Return", "Return", "Down",
                                                   "Return", "Up", "Down", "Return", "Down", "F1"});
  EXPECT_EQ(kept().bindings.keys_of(host::Action::left), (host::Bindings::Keys{"Return", "A"}));
  EXPECT_EQ(kept().bindings.keys_of(host::Action::right), (host::Bindings::Keys{"Up", "D"}));
  EXPECT_EQ(kept().bindings.keys_of(host::Action::turn), (host::Bindings::Keys{"Down", "W"}));
  EXPECT_EQ(answers_to_a_tap(program, "Escape", "Escape"), one_press);
  // The first slot of the last action stays, the second is free; F1 closes while it listens.
  play(program, to_keys + std::vector<std::string>{"Up", "Up", "Return", "Delete", "Right",
                                                   "Return", "Q", "Return", "F1"});
  EXPECT_EQ(kept().bindings.keys_of(host::Action::escape), (host::Bindings::Keys{"Escape", "Q"}));
  play(program, to_keys + std::vector<std::string>{"Up", "Return", "F1"});
  EXPECT_EQ(kept().bindings, host::Bindings()) << "back to the defaults";
}

TEST_F(PanelTest, ASlotIsEmptied) {
  const Played program;
  open(program);
  play(program, to_keys + std::vector<std::string>{"Delete", "F1"});
  EXPECT_EQ(kept().bindings.keys_of(host::Action::left), (host::Bindings::Keys{"", "A"}));
  EXPECT_EQ(answers_to_a_tap(program, "Left", "Left"), nothing);
  play(program, to_controller + std::vector<std::string>{"west button", "F1"});
  EXPECT_EQ(kept().bindings.controls_of(host::Action::left), host::Bindings::Controls());
}

TEST_F(PanelTest, EveryActionGetsAnotherButtonAndKeepsIt) {
  const std::vector<std::string> others = {
      "left shoulder", "right shoulder", "left trigger", "right trigger", "left stick",
      "right stick",   "r-stick up",     "r-stick down", "paddle 1",      "misc"};
  const std::vector<const char*> names = {"Left", "Right",  "Up", "Down", "Space",
                                          "P",    "Return", "O",  "M",    "Escape"};
  std::vector<std::string> deeds = to_controller + std::vector<std::string>{"Right"};
  for (const std::string& other : others)
    deeds = deeds + std::vector<std::string>{"Return", other + " button", "Down"};
  {
    const Played program;
    open(program);
    play(program, deeds + std::vector<std::string>{"F1"});
  }
  const Played next;
  open(next);
  for (size_t number = 0; number < others.size(); ++number)
    EXPECT_EQ(answers_to_a_tap(next, others[number] + " button", names[number]), one_press)
        << others[number];
  EXPECT_EQ(answers_to_a_tap(next, "south button", "Space"), one_press);
}

TEST_F(PanelTest, AControllerWorksItWhateverItsButtonsAreBoundTo) {
  const Played program;
  open(program);
  // South for left, east for right: they still open and lead back here.
  play(program,
       to_controller + std::vector<std::string>{"south button", "south button", "cross down button",
                                                "south button", "east button", "guide button"});
  EXPECT_EQ(kept().bindings.controls_of(host::Action::left),
            (host::Bindings::Controls{host::Control::south}));
  EXPECT_EQ(answers_to_a_tap(program, "south button", "Space"), nothing);
  EXPECT_EQ(answers_to_a_tap(program, "south button", "Left"), one_press);
  play(program, {"guide button", "cross down button", "start button", "cross left button",
                 "east button", "east button"});
  EXPECT_EQ(kept().music, 95);
}

TEST_F(PanelTest, ClicksChooseASlot) {
  const Played program;
  open(program);
  play(program, to_keys + std::vector<std::string>{"click 450 150", "J", "click 250 200", "K",
                                                   "click 330 715", "F1"});
  EXPECT_EQ(kept().bindings.keys_of(host::Action::left), (host::Bindings::Keys{"Left", "J"}));
  EXPECT_EQ(kept().bindings.keys_of(host::Action::right), (host::Bindings::Keys{"K", "D"}));
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

TEST_F(PanelTest, TheWindowTakesWholeMultiplesThatFit) {
  const Played program;
  open(program);
  const std::vector<std::string> to_the_size = {"F1", "Down", "Return", "Down", "Down", "Down"};
  const auto size_after = [&](const std::vector<std::string>& deeds) {
    std::vector<std::string> all = to_the_size;
    all.insert(all.end(), deeds.begin(), deeds.end());
    all.emplace_back("F1");
    play(program, all);
    return stage().scale->now;
  };
  EXPECT_EQ(size_after({"Right"}), 2);
  EXPECT_EQ(size_after({"Right", "Right", "Right"}), 3);
  EXPECT_EQ(size_after({"Left", "Left", "Left"}), 1);
  stage().scale->now = 1.4;
  EXPECT_EQ(size_after({"Return"}), 2);
  stage().scale->now = 1.4;
  EXPECT_EQ(size_after({"Left"}), 1);
  stage().scale.reset();
  play(program, {"F1", "Down", "Return", "Down", "Down", "Down", "Left", "Return", "F1"});
}

// ---- what is heard ------------------------------------------------------------------------------

class PanelSound : public PanelTest {
protected:
  PanelSound() {
    stage().make_sound_output = [this] {
      auto made = std::make_unique<sound::MemoryOutput>();
      output = made.get();
      return made;
    };
  }

  // The loudest sample of the next tenth of a second, in which nothing else happens.
  double loudest_of_a_moment() {
    const size_t from = output->interleaved().size();
    output->render(4800);
    double level = 0;
    for (size_t i = from; i < output->interleaved().size(); ++i)
      level = std::max(level, std::abs(static_cast<double>(output->interleaved()[i])));
    return level;
  }

  // How loud it is after each of the deeds.
  std::vector<double> heard_after(const Played& program, const std::vector<std::string>& deeds) {
    std::vector<double> levels;
    play(program, deeds, [&](size_t) { levels.push_back(loudest_of_a_moment()); });
    return levels;
  }

  sound::MemoryOutput* output = nullptr;
};

TEST_F(PanelSound, TheMusicIsHeardForAMomentWhenItsVolumeChanges) {
  const FakeTime time;
  const Played program;
  open(program);
  program.send("SOUND.INIT");
  program.send("SOUND.VOICE", 0, "SQUARE", 0, 0.1, 1, 0.1);
  program.send("SOUND.NOTE", "a4", 1);
  output->render(24'000);
  const auto levels =
      heard_after(program, {"F1", "Down", "Return", "Left", "Left", "Left", "later", "Up", "F1"});
  EXPECT_EQ(levels[2], 0.0) << "the panel is silent";
  EXPECT_GT(levels[3], 0.01) << "95 %";
  EXPECT_GT(levels[4], 0.01);
  EXPECT_LT(levels[5], levels[4]) << "85 % is less";
  EXPECT_EQ(levels[6], 0.0) << "a moment later it is silent again";
}

TEST_F(PanelSound, AnEffectIsHeardWhenItsVolumeChanges) {
  const FakeTime time;
  const Played program;
  open(program);
  program.send("SOUND.INIT");
  const auto levels =
      heard_after(program, {"F1", "Down", "Return", "Down", "Left", "later", "Left", "F1"});
  EXPECT_EQ(levels[3], 0.0);
  EXPECT_GT(levels[4], 0.01);
  EXPECT_EQ(levels[5], 0.0);
  EXPECT_GT(levels[6], 0.01);
}

TEST_F(PanelTest, ACalmDisplayBeginsWhenItIsSwitchedOn) {
  const Played program;
  open(program);
  play(program, {"F1", "Down", "Return", "Down", "Down", "Down", "Down", "Return", "F1"});
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

// ---- a controller's back button
// -------------------------------------------------------------------

class BackButton : public PanelTest {
protected:
  BackButton() { open(program); }

  // What the game sees of it as O in this frame, in which the player does that.
  double frame(const std::function<void(EventSink&)>& deed = {}) {
    stage().play = [&](EventSink& sink) {
      if (deed)
        deed(sink);
    };
    program.send("SCREENFLIP");
    const double answer = program.send("GFX.KEYSTATE", "O");
    stage().play = nullptr;
    return answer;
  }

  static constexpr host::ControlPress back = {1000, host::Control::back};
  static void press(EventSink& sink) { sink.control_went_down(back); }
  static void release(EventSink& sink) { sink.control_went_up(back); }

  FakeTime time;
  Played program;
};

TEST_F(BackButton, HeldForASecondOpensThePanelAndIsNotTheGames) {
  EXPECT_EQ(frame(press), 0.0);
  fake_now_ms += 999;
  EXPECT_EQ(frame(), 0.0);
  fake_now_ms += 1;
  EXPECT_EQ(frame(), 0.0);
  int waits = 0;
  stage().wait = [&](EventSink& sink) {
    ++waits;
    release(sink);
    Hands::act(sink, "east button");
  };
  EXPECT_EQ(frame(), 0.0);
  EXPECT_EQ(waits, 1);
  EXPECT_EQ(frame(), 0.0);
}

TEST_F(BackButton, LetGoBeforeThatIsTheGames) {
  EXPECT_EQ(frame(press), 0.0);
  fake_now_ms += 500;
  EXPECT_EQ(frame(release), 1.0);
  EXPECT_EQ(frame(), 0.0);
  fake_now_ms += 5000;
  EXPECT_EQ(frame(), 0.0);
}

TEST_F(BackButton, BoundToWhatCannotWaitItIsTheGamesAtOnceAndOpensThePanelAsWell) {
  play(program, to_controller + std::vector<std::string>{"Down", "Down", "Down", "Return",
                                                         "back button", "F1"});
  stage().play = press;
  program.send("SCREENFLIP");
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Down"), 1.0);
  stage().play = nullptr;
  fake_now_ms += 1000;
  program.send("SCREENFLIP");
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Down"), 1.0);
  stage().wait = [](EventSink& sink) { Hands::act(sink, "F1"); };
  program.send("SCREENFLIP");
  EXPECT_EQ(program.send("GFX.KEYSTATE", "Down"), 0.0) << "what is held is let go";
}

// ---- keys that repeat themselves
// ------------------------------------------------------------------

TEST_F(PanelTest, AHeldDirectionRepeatsItselfWhenThatIsSet) {
  const FakeTime time;
  const Played program;
  open(program);
  const std::string left = "Left";
  const auto presses_in = [&](int frames) {
    int presses = 0;
    double before = 0;
    for (int frame = 0; frame < frames; ++frame) {
      fake_now_ms += 10;
      program.send("SCREENFLIP");
      const double now = program.send("GFX.KEYSTATE", "Left");
      presses += static_cast<int>(now > before);
      before = now;
    }
    return presses;
  };
  const auto hold = [&] {
    stage().play = [&](EventSink& sink) {
      sink.key_went_down(key_named(left), false);
      stage().play = nullptr;
    };
    const int presses = presses_in(70);
    stage().play = [&](EventSink& sink) {
      sink.key_went_up(key_named(left));
      stage().play = nullptr;
    };
    presses_in(5);
    return presses;
  };
  EXPECT_EQ(hold(), 1);
  play(program, {"F1", "Down", "Return", "Up", "Up", "Up", "Up", "Up", "Up", "Up", "Return", "F1"});
  EXPECT_EQ(hold(), 11) << "one, and from 200 ms on one in 50 ms of 700";
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
  program.send("SCREEN", 8, 8, "x", 1); // of which hardly anything has to be drawn
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
