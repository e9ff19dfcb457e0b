// The text of the player's file of settings. The library inih reads it; what is not ours in it
// (other keys, comments, the order of lines) stays as it is when a value changes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/settings/settings.h"

namespace kavo::host {

// Reads what the text says into the settings. A value that cannot be one leaves its setting as it
// is and is named by a line in the result, as is a line of the text that says nothing.
std::vector<std::string> read_settings(const std::string& text, Settings& settings);

// The text with another value for each setting in which the two differ: in its line, or in a new
// one at the end of its section.
std::string with_changes(const std::string& text, const Settings& before, const Settings& after);

// A whole new text, with what each entry means.
std::string new_settings_text(const Settings& settings);

} // namespace kavo::host
