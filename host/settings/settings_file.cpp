#include "host/settings/settings_file.h"

#include <ini.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <optional>

#include "host/command_error.h"
#include "host/settings/entries.h"

namespace kavo::host {

namespace {

// What inih finds in a line.
struct Found {
  size_t line; // counted from 0
  std::string_view section;
  std::string_view key;
  std::string_view value;
};

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find('\n', start), text.size());
    lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

// Hands inih one line after the other, so that it is known which line it speaks of.
class LineReader {
public:
  using Take = std::function<void(const Found&)>;

  LineReader(const std::vector<std::string>& lines, Take take)
      : lines_(lines), take_(std::move(take)) {}

  // The number of the first line that says nothing, counted from 1; 0 when there is none.
  int read() { return ini_parse_stream(give_line, this, take_entry, this); }

private:
  // A line that is too long for inih's room cannot be one of ours: the rest of it is dropped. What
  // stands before the first letter is, too, for inih takes an indented line for more of the last.
  static char* give_line(char* room, int size, void* self) {
    auto& reader = *static_cast<LineReader*>(self);
    if (reader.next_ == reader.lines_.size())
      return nullptr;
    const std::string& line = reader.lines_[reader.next_++];
    const size_t start = std::min(line.find_first_not_of(" \t\r\v\f"), line.size());
    // inih's texts end at the first NUL.
    const size_t length = std::min({line.find('\0', start), line.size()}) - start;
    const size_t fitting = std::min(length, static_cast<size_t>(size) - 1);
    std::memcpy(room, line.data() + start, fitting);
    room[fitting] = '\0';
    return room;
  }

  static int take_entry(void* self, const char* section, const char* key, const char* value) {
    auto& reader = *static_cast<LineReader*>(self);
    reader.take_({reader.next_ - 1, section, key, value});
    return 1;
  }

  const std::vector<std::string>& lines_;
  Take take_;
  size_t next_ = 0;
};

std::string line_for(const Entry& entry, const Settings& settings) {
  return std::string(entry.key()) + " = " + entry.text_in(settings);
}

void add_comment(std::vector<std::string>& lines, size_t place, const Entry& entry) {
  if (!entry.comment().empty())
    lines.insert(lines.begin() + static_cast<ptrdiff_t>(place),
                 "; " + std::string(entry.comment()));
}

// Where the entry stands, the last time if it does so more than once; and after which line its
// section ends.
struct Place {
  std::optional<size_t> line;
  std::optional<size_t> section_end;
};

Place place_of(const Entry& entry, const std::vector<std::string>& lines) {
  Place place;
  LineReader(lines, [&](const Found& found) {
    if (found.section != entry.section())
      return;
    place.section_end = found.line + 1;
    if (found.key == entry.key())
      place.line = found.line;
  }).read();
  return place;
}

void add_section(std::vector<std::string>& lines, std::string_view name) {
  lines.emplace_back();
  lines.push_back("[" + std::string(name) + "]");
}

void put(const Entry& entry, const Settings& settings, std::vector<std::string>& lines) {
  const Place place = place_of(entry, lines);
  if (place.line) {
    lines[*place.line] = line_for(entry, settings);
    return;
  }
  if (!place.section_end)
    add_section(lines, entry.section());
  const size_t end = place.section_end.value_or(lines.size());
  lines.insert(lines.begin() + static_cast<ptrdiff_t>(end), line_for(entry, settings));
  add_comment(lines, end, entry);
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines)
    text += line + '\n';
  return text;
}

} // namespace

std::vector<std::string> read_settings(const std::string& text, Settings& settings) {
  std::vector<std::string> complaints;
  const std::vector<std::string> lines = lines_of(text);
  const int bad_line =
      LineReader(lines, [&](const Found& found) {
        const Entry* entry = find_entry(found.section, found.key);
        if (entry == nullptr)
          return;
        try {
          entry->read(found.value, settings);
        } catch (const BadValue& bad) {
          complaints.push_back(std::string(found.section) + "." + std::string(found.key) +
                               " must be " + bad.expectation + ", got " + shown(found.value));
        }
      }).read();
  if (bad_line > 0)
    complaints.push_back("line " + std::to_string(bad_line) +
                         " says nothing: " + shown(lines[static_cast<size_t>(bad_line) - 1]));
  return complaints;
}

std::string with_changes(const std::string& text, const Settings& before, const Settings& after) {
  std::vector<std::string> lines = lines_of(text);
  for (const Entry* entry : all_entries())
    if (entry->text_in(before) != entry->text_in(after))
      put(*entry, after, lines);
  return joined(lines);
}

std::string new_settings_text(const Settings& settings) {
  std::vector<std::string> lines = {"; The settings of KAVO. F1 changes them in the game."};
  std::string_view section;
  for (const Entry* entry : all_entries()) {
    if (entry->section() != section) {
      section = entry->section();
      add_section(lines, section);
    }
    add_comment(lines, lines.size(), *entry);
    lines.push_back(line_for(*entry, settings));
  }
  return joined(lines);
}

} // namespace kavo::host
