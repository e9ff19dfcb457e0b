// The player's settings: what a file says, what becomes of what it should not say, what is kept.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/settings/entries.h"
#include "host/settings/settings_file.h"
#include "host/settings/settings_store.h"
#include "tests/host/bridge.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using kavo::host::Action;
using kavo::host::all_actions;
using kavo::host::Bindings;
using kavo::host::Control;
using kavo::host::Language;
using kavo::host::new_settings_text;
using kavo::host::read_settings;
using kavo::host::Settings;
using kavo::host::SettingsStore;
using kavo::host::with_changes;
using kavo::test::Environment;
using kavo::test::read_file;
using kavo::test::write_file;

using Lines = std::vector<std::string>;

// Every setting has another value than usual.
Settings unusual() {
  Settings settings;
  settings.music = 35;
  settings.effects = 0;
  settings.is_calm = true;
  settings.waits = false;
  settings.language = Language::german;
  settings.repeats = true;
  settings.repeat_delay = 400;
  settings.repeat_rate = 30;
  Bindings& bindings = settings.bindings;
  for (size_t number = 0; number < all_actions.size(); ++number) {
    const std::string digit = std::to_string(number);
    bindings.keys_of(all_actions[number]) = {digit, "Keypad " + digit};
    bindings.controls_of(all_actions[number]) = {};
  }
  bindings.keys_of(Action::escape)[0] = "Escape";
  bindings.keys_of(Action::music) = {"", ""};
  bindings.keys_of(Action::left) = {",", ";"};
  bindings.controls_of(Action::turn) = {Control::west, Control::right_stick_up};
  return settings;
}

TEST(SettingsText, ReadsBackWhatItSays) {
  Settings read;
  EXPECT_EQ(read_settings(new_settings_text(unusual()), read), Lines());
  EXPECT_EQ(read, unusual());
}

TEST(SettingsText, ReadsBackWhatWasChangedInIt) {
  Settings read;
  EXPECT_EQ(read_settings(with_changes(new_settings_text({}), {}, unusual()), read), Lines());
  EXPECT_EQ(read, unusual());
  Settings from_nothing;
  EXPECT_EQ(read_settings(with_changes("", {}, unusual()), from_nothing), Lines());
  EXPECT_EQ(from_nothing, unusual());
}

TEST(SettingsText, TellsWhatEachEntryMeans) {
  const std::string text = new_settings_text({});
  EXPECT_NE(text.find("[sound]\n; How loud the music is, in percent: 0 to 100.\nmusic = 100\n"),
            std::string::npos)
      << text;
}

TEST(SettingsText, KeepsWhatIsNotOursWhenAValueChanges) {
  const std::string others = "\n"
                             "[colours]\n"
                             "sky = blue\n"
                             "long = " +
                             std::string(300, 'y') + "\n";
  const std::string before = "; mine\n"
                             "[sound]\n"
                             "  music=70   ; not too loud\n"
                             "brass = 12\n" +
                             others;
  Settings old_settings;
  EXPECT_EQ(read_settings(before, old_settings), Lines());
  EXPECT_EQ(old_settings.music, 70);
  Settings settings = old_settings;
  settings.music = 20;
  settings.effects = 30;
  EXPECT_EQ(with_changes(before, old_settings, settings), "; mine\n"
                                                          "[sound]\n"
                                                          "music = 20\n"
                                                          "brass = 12\n"
                                                          "; How loud the effects are.\n"
                                                          "effects = 30\n" +
                                                              others);
}

TEST(SettingsText, NamesABadValueAndLeavesItsSettingAsItIs) {
  Settings settings;
  EXPECT_EQ(read_settings("[sound]\nmusic = loud\neffects = 101\n[picture]\ncalm = 1\n"
                          "[player]\nlanguage = fr\n",
                          settings),
            (Lines{"sound.music must be a whole number from 0 to 100, got \"loud\"",
                   "sound.effects must be a whole number from 0 to 100, got \"101\"",
                   "picture.calm must be yes or no, got \"1\"",
                   "player.language must be auto, en or de, got \"fr\""}));
  EXPECT_EQ(settings, Settings());
}

TEST(SettingsText, HasKeysByTheirNames) {
  const std::string text = new_settings_text({});
  EXPECT_NE(text.find("\nleft = Left, A\nright = Right, D\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\nturn = cross up, west, north\n"), std::string::npos) << text;
  Settings settings;
  EXPECT_EQ(read_settings("[keys]\nleft = Q\nturn =  Comma ,Left Shift\nmusic = none\n"
                          "[controller]\ndrop = left trigger\n",
                          settings),
            Lines());
  EXPECT_EQ(settings.bindings.keys_of(Action::left), (Bindings::Keys{"Q", ""}));
  EXPECT_EQ(settings.bindings.keys_of(Action::turn), (Bindings::Keys{",", "Left Shift"}));
  EXPECT_EQ(settings.bindings.keys_of(Action::music), (Bindings::Keys{"", ""}));
  EXPECT_EQ(settings.bindings.controls_of(Action::drop),
            (Bindings::Controls{Control::left_trigger}));
}

TEST(SettingsText, NamesKeysThatCannotBeListed) {
  Settings settings;
  EXPECT_EQ(read_settings("[keys]\nleft = A, B, C\nright = A,, B\n"
                          "[controller]\ndrop = trigger\nturn = guide\n",
                          settings),
            (Lines{"keys.left must be up to two names of keys, such as \"Left, A\", or none, got "
                   "\"A, B, C\"",
                   "keys.right must be up to two names of keys, such as \"Left, A\", or none, got "
                   "\"A,, B\"",
                   "controller.drop must be up to three parts of a controller, such as \"cross up, "
                   "west\", or none, got \"trigger\"",
                   "controller.turn must be up to three parts of a controller, such as \"cross up, "
                   "west\", or none, got \"guide\""}));
  EXPECT_EQ(settings, Settings());
}

TEST(SettingsText, GoesOnAfterALineThatSaysNothing) {
  Settings settings;
  EXPECT_EQ(read_settings("what is this\n[sound]\nmusic = 5\n", settings),
            (Lines{"line 1 says nothing: \"what is this\""}));
  EXPECT_EQ(settings.music, 5);
}

TEST(SettingsText, MayBeIndentedAndComeFromOtherSystems) {
  Settings settings;
  EXPECT_EQ(read_settings("\xEF\xBB\xBF[sound]\r\n  music = 5\r\n\teffects: 10 \r\n", settings),
            Lines());
  EXPECT_EQ(settings.music, 5);
  EXPECT_EQ(settings.effects, 10);
}

TEST(SettingsText, TheLastOfTwoEntriesCounts) {
  Settings before;
  const std::string text = "[sound]\nmusic = 5\nmusic = 15\n";
  EXPECT_EQ(read_settings(text, before), Lines());
  EXPECT_EQ(before.music, 15);
  Settings after = before;
  after.music = 25;
  Settings read;
  EXPECT_EQ(read_settings(with_changes(text, before, after), read), Lines());
  EXPECT_EQ(read.music, 25);
}

class SettingsStoreTest : public testing::Test {
protected:
  std::string text() const { return read_file(file); }
  static void change_music(SettingsStore& changed, int music) {
    Settings settings = changed.current();
    settings.music = music;
    changed.change(settings);
  }

  kavo::test::TemporaryFolder home;
  fs::path folder = home.path() / "config" / "kavo";
  fs::path file = folder / "settings.ini";
  SettingsStore store;
};

TEST_F(SettingsStoreTest, AFirstStartLeavesACommentedFileForThePlayerAlone) {
  store.open(folder);
  EXPECT_TRUE(store.is_first_start());
  EXPECT_EQ(store.take_news(), Lines());
  EXPECT_EQ(text(), new_settings_text({}));
  struct stat status = {};
  ASSERT_EQ(::stat(folder.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700U);
  SettingsStore second;
  second.open(folder);
  EXPECT_FALSE(second.is_first_start());
  EXPECT_EQ(second.take_news(), Lines());
}

TEST_F(SettingsStoreTest, KeepsEverySettingForTheNextStart) {
  store.open(folder);
  store.change(unusual());
  EXPECT_EQ(store.current(), unusual());
  SettingsStore next;
  next.open(folder);
  EXPECT_EQ(next.current(), unusual());
  EXPECT_EQ(next.take_news(), Lines());
}

TEST_F(SettingsStoreTest, NamesTheFileOfABadValue) {
  fs::create_directories(folder);
  write_file(file, "[sound]\nmusic = much\n");
  store.open(folder);
  EXPECT_EQ(
      store.take_news(),
      Lines{file.string() + ": sound.music must be a whole number from 0 to 100, got \"much\""});
  EXPECT_EQ(store.current(), Settings());
}

TEST_F(SettingsStoreTest, NamesKeysThatNoKeyIsCalledOrTwoActionsHave) {
  fs::create_directories(folder);
  write_file(file, "[keys]\nleft = Foo\nright = Q\nturn = Q, W\n");
  SettingsStore picky([](const std::string& name) { return name != "Foo"; });
  picky.open(folder);
  EXPECT_EQ(picky.take_news(),
            (Lines{file.string() + ": keys.left cannot have the key \"Foo\"",
                   file.string() + ": keys.turn cannot have \"Q\", which right has"}));
  Settings expected;
  expected.bindings.keys_of(Action::right) = {"Q", ""};
  expected.bindings.keys_of(Action::turn) = {"", "W"};
  EXPECT_EQ(picky.current(), expected);
}

TEST_F(SettingsStoreTest, KeepsNothingWithoutAFolder) {
  store.open({});
  change_music(store, 10);
  EXPECT_EQ(store.current().music, 10);
  EXPECT_EQ(store.take_news(), Lines());
  EXPECT_TRUE(fs::is_empty(home.path()));
}

TEST_F(SettingsStoreTest, TheEnvironmentGoesBeforeTheFileAndIsNotKept) {
  store.open(folder);
  change_music(store, 40);
  const Environment music("QORRT_MUSIC", "15");
  const Environment effects("QORRT_EFFECTS", "0");
  const Environment calm("QORRT_CALM", "1");
  const Environment language("QORRT_LANG", "de");
  SettingsStore asked;
  asked.open(folder);
  EXPECT_EQ(asked.current().music, 15);
  EXPECT_EQ(asked.current().effects, 0);
  EXPECT_TRUE(asked.current().is_calm);
  EXPECT_EQ(asked.current().language, Language::german);
  Settings patient = asked.current();
  patient.waits = false;
  asked.change(patient);
  Settings kept;
  EXPECT_EQ(read_settings(text(), kept), Lines());
  Settings expected;
  expected.music = 40;
  expected.waits = false;
  EXPECT_EQ(kept, expected);
}

TEST_F(SettingsStoreTest, NamesWhatTheEnvironmentCannotMean) {
  const Environment music("QORRT_MUSIC", "loud");
  const Environment language("QORRT_LANG", "");
  store.open({});
  EXPECT_EQ(store.take_news(),
            Lines{"QORRT_MUSIC must be a whole number from 0 to 100, got \"loud\""});
  EXPECT_EQ(store.current(), Settings());
}

TEST_F(SettingsStoreTest, TwoCopiesKeepWhatEachOfThemChanged) {
  store.open(folder);
  SettingsStore other;
  other.open(folder);
  change_music(store, 10);
  Settings settings = other.current();
  settings.effects = 20;
  other.change(settings);
  Settings kept;
  EXPECT_EQ(read_settings(text(), kept), Lines());
  EXPECT_EQ(kept.music, 10);
  EXPECT_EQ(kept.effects, 20);
}

TEST_F(SettingsStoreTest, ComeBackWhenTheFileWasRemovedMeanwhile) {
  store.open(folder);
  fs::remove_all(folder);
  change_music(store, 10);
  SettingsStore next;
  next.open(folder);
  EXPECT_EQ(next.current().music, 10);
}

// What is in the way may be in anybody's: a file where the folder is to be, a folder or a pipe
// where the file is to be, more than settings can be.
TEST_F(SettingsStoreTest, AreEffectiveButNotKeptWhereTheyCannotBeAndSayItOnce) {
  const std::vector<void (*)(const fs::path&)> obstacles = {
      [](const fs::path& path) { write_file(path.parent_path(), "in the way"); },
      [](const fs::path& path) { fs::create_directories(path); },
      [](const fs::path& path) {
        fs::create_directories(path.parent_path());
        ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
      },
      [](const fs::path& path) {
        fs::create_directories(path.parent_path());
        write_file(path, std::string(70'000, ';'));
      },
  };
  for (size_t number = 0; number < obstacles.size(); ++number) {
    SCOPED_TRACE(number);
    const fs::path here = home.path() / std::to_string(number) / "kavo";
    fs::create_directories(here.parent_path());
    obstacles[number](here / "settings.ini");
    SettingsStore hindered;
    hindered.open(here);
    change_music(hindered, 10);
    change_music(hindered, 20);
    EXPECT_EQ(hindered.current().music, 20);
    const Lines news = hindered.take_news();
    ASSERT_EQ(news.size(), 1U);
    EXPECT_TRUE(news[0].starts_with("settings are not kept: ")) << news[0];
  }
}

TEST_F(SettingsStoreTest, LeaveNothingBesideTheFile) {
  store.open(folder);
  for (int music = 0; music <= 100; music += 5)
    change_music(store, music);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

} // namespace
