// What the program that plays may want to hear from the host beyond its events: a function that
// it defines. Programs that define none hear nothing.
#pragma once

extern "C" {

// In which folder games are kept, whether or not it is there yet, and whether the player wants
// that (1 or 0). Called when the host starts and whenever the player's wish may have changed; not
// where no folder is known. The text lives as long as the call.
[[gnu::weak]] void kavo_games_are_kept(const char* folder, int is_wanted);
}
