// What the panel calls actions, keys and the parts of a controller, in each of its languages.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/keys/bindings.h"
#include "host/settings/settings.h"

namespace kavo::host {

// In UTF-8; the language is English or German. None is longer than a slot of the pages of keys.
std::string_view label_of(Action action, Language language);
std::string text_of_key(std::string_view key_name, Language language);
std::string text_of_control(Control control, Language language);

// Of help: what each action's keys or parts of a controller are, and what it does. Each line fits.
enum class Device : uint8_t { keyboard, controller };
std::vector<std::string> lines_of_help(const Bindings& bindings, Device device, Language language);

} // namespace kavo::host
