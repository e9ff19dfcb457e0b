#include "host/panel/texts.h"

#include <array>

namespace kavo::host {

namespace {

struct Row {
  Text text;
  std::string_view english;
  std::string_view german;
};

constexpr std::array rows = {
    Row{Text::waiting, "The game waits", "Das Spiel wartet"},
    Row{Text::how_to_go_on, "A key or a click goes on.",
        "Eine Taste oder ein Klick setzt es fort."},
    Row{Text::first_start, "F1: help and settings", "F1: Hilfe und Einstellungen"},
    Row{Text::help, "Help", "Hilfe"},
    Row{Text::settings, "Settings", "Einstellungen"},
    Row{Text::back_to_the_game, "Back to the game", "Zurück zum Spiel"},
    Row{Text::music, "Music", "Musik"},
    Row{Text::effects, "Effects", "Effekte"},
    Row{Text::calm, "Calm display", "Ruhiges Bild"},
    Row{Text::full_screen, "Full screen", "Vollbild"},
    Row{Text::window_size, "Window size", "Fenstergröße"},
    Row{Text::waits, "Waits in the background", "Wartet im Hintergrund"},
    Row{Text::records, "Keeps the last games", "Behält die letzten Spiele"},
    Row{Text::language, "Language", "Sprache"},
    Row{Text::automatic, "of the session", "der Sitzung"},
    Row{Text::defaults, "Back to the defaults", "Alles wie am Anfang"},
    Row{Text::yes, "yes", "ja"},
    Row{Text::no, "no", "nein"},
    Row{Text::repeats, "Repeats while held", "Wiederholt, solange gehalten"},
    Row{Text::repeat_delay, "  the first time after", "  zum ersten Mal nach"},
    Row{Text::repeat_rate, "  then every", "  dann alle"},
    Row{Text::keys, "Keys", "Tasten"},
    Row{Text::controller, "Controller", "Gamepad"},
    Row{Text::usual_keys, "All keys as at the start", "Alle Tasten wie am Anfang"},
    Row{Text::usual_controls, "All buttons as at the start", "Alle Knöpfe wie am Anfang"},
    Row{Text::press_it, "press it now", "jetzt drücken"},
    Row{Text::taken_from, "taken from", "bisher bei"},
    Row{Text::escape_stays, "Escape always leads back: it stays.",
        "Escape führt immer zurück: es bleibt."},
    Row{Text::no_key_for_this, "This key cannot be used here.", "Diese Taste geht hier nicht."},
    Row{Text::keys_of_bindings, "Arrows: choose   Return: change   Delete: none   Escape: back",
        "Pfeile: wählen   Eingabe: ändern   Entf: keine   Escape: zurück"},
    Row{Text::keys_of_listening, "Escape: leave it as it was", "Escape: lassen, wie es war"},
    Row{Text::keys_of_a_menu, "Arrows: choose   Return: open   Escape: back",
        "Pfeile: wählen   Eingabe: öffnen   Escape: zurück"},
    Row{Text::keys_of_settings, "Up, Down: choose   Left, Right: change   Escape: back",
        "Hoch, Runter: wählen   Links, Rechts: ändern   Escape: zurück"},
    Row{Text::keys_of_help, "Left, Right: other pages   Escape: back",
        "Links, Rechts: andere Seiten   Escape: zurück"},
};

constexpr bool are_in_order() {
  for (size_t index = 0; index < rows.size(); ++index)
    if (rows[index].text != static_cast<Text>(index))
      return false;
  return true;
}
static_assert(are_in_order(), "a text is found by its number");

using Lines = std::span<const std::string_view>;

constexpr std::array<std::string_view, 7> keys_in_english = {
    "",
    "F1                      help and settings",
    "F11, Alt+Return         full screen and back",
    "",
    "Settings, Keys: each of these but Escape can be another key.",
    "Letters are those of your keyboard's layout. The keypad's arrows and",
    "Enter count, too.",
};
constexpr std::array<std::string_view, 7> keys_in_german = {
    "",
    "F1                      Hilfe und Einstellungen",
    "F11, Alt+Eingabe        Vollbild und zurück",
    "",
    "Einstellungen, Tasten: jede von ihnen außer Escape kann eine andere",
    "sein. Buchstaben richten sich nach Ihrer Tastaturbelegung. Pfeile und",
    "Enter des Ziffernblocks gelten ebenfalls.",
};
constexpr std::array<std::string_view, 8> controller_in_english = {
    "",
    "Guide, or Back held     help and settings; there:",
    "Cross                   choose and change",
    "South, Start            open",
    "East                    back",
    "",
    "Buttons are named by their place. The left stick counts as the cross.",
    "Settings, Controller: each of them can be another one in play.",
};
constexpr std::array<std::string_view, 8> controller_in_german = {
    "",
    "Guide; Back halten      Hilfe und Einstellungen; dort:",
    "Kreuz                   wählen und ändern",
    "Süd, Start              öffnen",
    "Ost                     zurück",
    "",
    "Tasten heißen nach ihrem Ort. Der linke Stick gilt wie das Kreuz.",
    "Einstellungen, Gamepad: im Spiel kann jede eine andere sein.",
};
constexpr std::array<std::string_view, 11> lean_in_english = {
    "Every block pulls the board towards its side, and the more the",
    "farther it lies from the middle.",
    "",
    "The meter below the well shows the pull: the needle is the pull, the",
    "red marks are where the board tips.",
    "",
    "When the needle passes a mark the whole board tips a quarter turn to",
    "the heavy side, the blocks fall to the new floor, and the game goes",
    "on in a well that lies on its side, or stands again.",
    "",
    "After a tip the needle is grey, and the board rests for some pieces.",
};
constexpr std::array<std::string_view, 11> lean_in_german = {
    "Jeder Klotz zieht das Brett auf seine Seite, und je weiter er von der",
    "Mitte liegt, desto mehr.",
    "",
    "Die Anzeige unter dem Schacht zeigt den Zug: die Nadel ist der Zug,",
    "an den roten Marken kippt das Brett.",
    "",
    "Kommt die Nadel über eine Marke, so kippt das ganze Brett um eine",
    "Vierteldrehung zur schweren Seite, die Klötze fallen auf den neuen",
    "Boden, und das Spiel geht im liegenden oder stehenden Schacht weiter.",
    "",
    "Danach ist die Nadel grau, und das Brett ruht für einige Steine.",
};
constexpr std::array<std::string_view, 5> blocks_in_english = {
    "A bomb: empties the nine cells around it. 150 points.",
    "Empties its row and its column. 250 points.",
    "A coin: 500 points, gone at once.",
    "Stays where it lands and pulls twice as much. 10 points.",
    "Fills the gaps of its row. 100 points and 10 for itself.",
};
constexpr std::array<std::string_view, 5> blocks_in_german = {
    "Eine Bombe: leert die neun Zellen um sich. 150 Punkte.",
    "Leert seine Reihe und seine Spalte. 250 Punkte.",
    "Eine Münze: 500 Punkte, gleich wieder verschwunden.",
    "Bleibt liegen und zieht doppelt. 10 Punkte.",
    "Füllt die Lücken seiner Reihe. 100 Punkte und 10 für sich.",
};
constexpr std::array<std::string_view, 22> points_in_english = {
    "!Rows",
    "100, 400, 900 and 1600 for one to four at once. Ten rows make a level,",
    "and each level is faster.",
    "",
    "!Combos",
    "Rows that pieces clear one after the other pay 75, 150, 225 and so on,",
    "from the second piece on.",
    "",
    "!Balance",
    "20 for each piece that comes to rest on a nearly level board.",
    "",
    "!Stars",
    "250 for each that the falling piece is steered through. A piece that",
    "is dropped flies past.",
    "",
    "!Pieces",
    "5 to 25 points each, when they land. About one in seven is a special",
    "block.",
    "",
    "!The end",
    "comes when a new piece finds no room. The five best scores get a name",
    "of three letters.",
};
constexpr std::array<std::string_view, 22> points_in_german = {
    "!Reihen",
    "100, 400, 900 und 1600 für eine bis vier auf einmal. Zehn Reihen sind",
    "ein Level, und jedes Level ist schneller.",
    "",
    "!Kombos",
    "Reihen, die Steine nacheinander abräumen, bringen 75, 150, 225 und so",
    "weiter, vom zweiten Stein an.",
    "",
    "!Gleichgewicht",
    "20 für jeden Stein, nach dem das Brett fast eben steht.",
    "",
    "!Sterne",
    "250 für jeden, durch den der fallende Stein gesteuert wird. Wer ihn",
    "fallen lässt, fliegt vorbei.",
    "",
    "!Steine",
    "5 bis 25 Punkte für jeden, der liegen bleibt. Etwa jeder siebte ist",
    "ein besonderer Klotz.",
    "",
    "!Das Ende",
    "kommt, wenn ein neuer Stein keinen Platz mehr findet. Die fünf besten",
    "Ergebnisse bekommen einen Namen aus drei Buchstaben.",
};
constexpr std::array<std::string_view, 14> words_in_english = {
    "Schlagseite             list, as of a ship: the lean",
    "wieder scharf in 3      armed again after 3 pieces",
    "Reihen, Naechste        rows, next piece",
    "Pfeile                  arrow keys",
    "Hoch/Runter             up/down",
    "Links/Rechts            left/right",
    "Musik an, aus           music on, off",
    "Optionen, Titel         options, title",
    "Beenden, Ende           quit, end",
    "waehlen, umschalten     choose, switch",
    "zurueck, weiter         back, go on",
    "NEUER HIGHSCORE!        a new high score!",
    "Punkte                  points",
    "Buchstabe, Stelle       letter, place",
};
constexpr std::array<std::string_view, 14> words_in_german = {
    "Schlagseite             die Neigung, wie bei einem Schiff",
    "wieder scharf in 3      nach 3 Steinen kann es wieder kippen",
    "Reihen                  abgeräumte Reihen",
    "Naechste                der nächste Stein",
    "Best                    das beste Ergebnis",
    "Score, Punkte           die Punkte dieses Spiels",
    "Level                   die Stufe, mit der es schneller wird",
    "Space=Drop              Leertaste: fallen lassen",
    "ESC                     die Escape-Taste",
    "COMBO x2                zweiter Stein, der Reihen abräumt",
    "HIGHSCORES              die fünf besten Ergebnisse",
    "GAME OVER               das Spiel ist verloren",
    "Sound                   die Effekte",
    "inkl. Leer              auch ein Leerzeichen",
};

struct Page {
  std::string_view english_title;
  Lines english;
  std::string_view german_title;
  Lines german;
};
constexpr std::array<Page, help_page_count> pages = {{
    {"Keys", keys_in_english, "Tasten", keys_in_german},
    {"Controller", controller_in_english, "Gamepad", controller_in_german},
    {"The lean", lean_in_english, "Die Schlagseite", lean_in_german},
    {"Special blocks", blocks_in_english, "Besondere Klötze", blocks_in_german},
    {"Points", points_in_english, "Punkte", points_in_german},
    {"Words on the screen", words_in_english, "Wörter auf dem Bild", words_in_german},
}};

} // namespace

std::string_view text(Text text, Language language) {
  const Row& row = rows[static_cast<size_t>(text)];
  return language == Language::german ? row.german : row.english;
}

HelpPage help_page(int page, Language language) {
  const Page& found = pages[static_cast<size_t>(page)];
  return language == Language::german ? HelpPage{found.german_title, found.german}
                                      : HelpPage{found.english_title, found.english};
}

Language resolved(Language language, std::string_view locale) {
  if (language != Language::automatic)
    return language;
  const bool is_german = locale == "de" || locale.starts_with("de_") || locale.starts_with("de.") ||
                         locale.starts_with("de-") || locale.starts_with("de@");
  return is_german ? Language::german : Language::english;
}

} // namespace kavo::host
