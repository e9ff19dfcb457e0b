// The part of the world that the panel shows and changes.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/screen/presenter.h"
#include "host/settings/settings.h"

namespace kavo::host {

struct PanelWorld {
  std::function<const Settings&()> settings;
  std::function<void(const Settings&)> change; // effective at once
  std::function<bool()> is_full_screen;
  std::function<void()> switch_full_screen;
  std::function<std::optional<WindowScale>()> window_scale; // nothing where there is no window
  std::function<void(int)> set_window_scale;
  std::function<Language()> language;                  // English or German
  std::function<bool(const std::string& name)> is_key; // that can be kept by its name
};

} // namespace kavo::host
