// Keys as people have them: layouts, scripts, locks, dead keys and input methods.
#include <string>
#include <utility>
#include <vector>

#include "tests/host/desktop/window_fixture.h"

namespace {

class WindowKeysTest : public kavo::test::WindowTest {
protected:
  // Presses the key that bears `symbol` and looks whether the key called `name` is held, until
  // both are up again.
  void expect_tap(const std::string& symbol, const std::string& name, const std::string& where) {
    desktop.tap(symbol);
    bridge.send("SCREENFLIP");
    EXPECT_TRUE(is_held(name.c_str())) << where << ": " << symbol;
    bridge.send("SCREENFLIP");
    EXPECT_FALSE(is_held(name.c_str())) << where << ": " << symbol;
  }

  void expect_letters(const std::string& where) {
    for (const char letter : std::string("awsdpom"))
      expect_tap(std::string(1, letter), std::string(1, static_cast<char>(letter - 'a' + 'A')),
                 where);
  }
};

TEST_F(WindowKeysTest, EveryLetterOfTheGameIsWhereTheLayoutHasIt) {
  for (const char* layout : {"us", "de", "fr", "gb", "es", "se", "tr"}) {
    desktop.set_layout(layout);
    open();
    expect_letters(layout);
  }
}

TEST_F(WindowKeysTest, ALayoutOfAnotherScriptHasTheLettersInTheirPlaces) {
  desktop.set_layout("ru");
  open();
  for (const auto& [symbol, name] : {std::pair("Cyrillic_ef", "A"),
                                     {"Cyrillic_tse", "W"},
                                     {"Cyrillic_yeru", "S"},
                                     {"Cyrillic_ve", "D"},
                                     {"Cyrillic_ze", "P"},
                                     {"Cyrillic_shcha", "O"},
                                     {"Cyrillic_softsign", "M"}})
    expect_tap(symbol, name, "ru");
  desktop.set_layout("gr");
  open();
  expect_tap("Greek_alpha", "A", "gr");
  expect_tap("Greek_mu", "M", "gr");
}

TEST_F(WindowKeysTest, UmlautsAreNoOtherLetters) {
  desktop.set_layout("de");
  open();
  desktop.tap("odiaeresis");
  bridge.send("SCREENFLIP");
  for (const char* name : {"A", "W", "S", "D", "P", "O", "M"})
    EXPECT_FALSE(is_held(name)) << name;
}

TEST_F(WindowKeysTest, ModifiersDoNotKeepAKeyFromTheGame) {
  open();
  for (const char* modifier : {"Shift_L", "Shift_R", "Caps_Lock", "Control_L", "Num_Lock"}) {
    desktop.press(modifier);
    for (const auto& [symbol, name] : {std::pair("Left", "Left"),
                                       {"space", "Space"},
                                       {"Return", "Return"},
                                       {"KP_Enter", "Return"},
                                       {"Escape", "Escape"},
                                       {"p", "P"}})
      expect_tap(symbol, name, modifier);
    desktop.release(modifier);
    desktop.tap(modifier); // the locks are off again
  }
}

TEST_F(WindowKeysTest, ADeadKeySwallowsNothing) {
  const kavo::test::Environment locale("LC_ALL", "C.UTF-8");
  desktop.set_layout("fr");
  open();
  expect_letters("fr");
  for (const char* dead_key : {"dead_circumflex", "dead_diaeresis"}) {
    desktop.tap(dead_key);
    bridge.send("SCREENFLIP");
    expect_letters(dead_key);
    desktop.tap(dead_key);
    bridge.send("SCREENFLIP");
    expect_tap("space", "Space", dead_key);
  }
}

TEST_F(WindowKeysTest, AnInputMethodThatIsSetSwallowsNothing) {
  for (const char* method : {"@im=ibus", "@im=fcitx", "@im=none"}) {
    const kavo::test::Environment locale("LC_ALL", "C.UTF-8");
    const kavo::test::Environment modifiers("XMODIFIERS", method);
    open();
    expect_letters(method);
    expect_tap("space", "Space", method);
    expect_tap("Left", "Left", method);
  }
}

} // namespace
