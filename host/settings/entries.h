// The settings as entries of a file, each by its section and key: what text stands for which value.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "host/settings/settings.h"

namespace kavo::host {

// A value that stands in a file and cannot be one; `expectation` says what can.
struct BadValue {
  std::string expectation;
};

class Entry {
public:
  virtual ~Entry() = default;
  Entry(const Entry&) = delete;
  Entry& operator=(const Entry&) = delete;

  std::string_view section() const { return section_; }
  std::string_view key() const { return key_; }
  // For who reads the file; empty where the entry before says it all.
  std::string_view comment() const { return comment_; }

  // The value as text, which read() takes back.
  virtual std::string text_in(const Settings& settings) const = 0;
  // Throws BadValue and leaves the settings as they were.
  virtual void read(std::string_view text, Settings& settings) const = 0;

protected:
  Entry(std::string_view section, std::string_view key, std::string comment);

private:
  std::string section_;
  std::string key_;
  std::string comment_;
};

// All of them, in the order of a new file.
std::span<const Entry* const> all_entries();

// Null when no entry is called that.
const Entry* find_entry(std::string_view section, std::string_view key);

} // namespace kavo::host
