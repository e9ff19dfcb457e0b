// Messages for players who started the game from a menu and see no terminal.
#pragma once

#include <string>

namespace kavo::host {

// Shows the text in a window of its own until a key or a click closes it or a signal ends the
// program. Only where QORRT_MESSAGES is "window", which the launcher sets without a terminal,
// standard error is none either and there is a desktop; elsewhere it returns at once.
void show_message_window(const std::string& text);

// Lines of at most so many characters, broken at blanks: the window breaks none. A word that is
// longer has a line of its own.
std::string wrapped(const std::string& text, size_t width);

} // namespace kavo::host
