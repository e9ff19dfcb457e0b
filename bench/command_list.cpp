#include "bench/command_list.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

void add_number(RecordedCommand& command, const std::string& word) {
  qor_slot slot = {};
  const bool is_whole = word.find_first_of(".en") == std::string::npos;
  if (is_whole)
    slot.i64 = std::stoll(word);
  else
    slot.f64 = std::stod(word);
  command.slots.push_back(slot);
  command.tags.push_back(is_whole ? QOR_TAG_INT64 : QOR_TAG_FLOAT64);
}

// A text is the rest of its line.
void add_text(CommandList& list, RecordedCommand& command, std::istream& line) {
  std::string text;
  std::getline(line >> std::ws, text);
  qor_slot slot = {};
  slot.str = list.texts.emplace_back(text).c_str();
  command.slots.push_back(slot);
  command.tags.push_back(QOR_TAG_STRING);
}

} // namespace

CommandList read_commands(const std::string& path) {
  std::ifstream file(path);
  if (!file)
    throw std::runtime_error("cannot read " + path);
  CommandList list;
  for (std::string text; std::getline(file, text);) {
    std::istringstream line(text);
    RecordedCommand command;
    if (!(line >> command.name) || command.name.starts_with('#'))
      continue;
    const bool ends_in_text = command.name == "TEXT";
    for (std::string word; (!ends_in_text || command.slots.size() < 2) && line >> word;)
      add_number(command, word);
    if (ends_in_text)
      add_text(list, command, line);
    list.commands.push_back(command);
  }
  return list;
}

} // namespace bench
