#include "host/scores/scores.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "host/command_error.h"
#include "host/files.h"
#include "host/scores/table_file.h"
#include "host/temporary_file.h"

namespace kavo::host {

namespace {

namespace fs = std::filesystem;
using Kind = TableFile::Kind;

// What a new name and its points may add to the table.
constexpr int64_t longest_entry = 64; // bytes

std::string table() {
  return std::string(Scores::path);
}

// The player's mask may close the folder to everybody; its owner needs it.
void make_folder() {
  const std::string folder = fs::path(Scores::path).parent_path();
  struct stat status = {};
  if (::mkdir(folder.c_str(), 0755) == 0 && ::stat(folder.c_str(), &status) == 0)
    ::chmod(folder.c_str(), (status.st_mode & 07777) | S_IRWXU);
}

// For the player, who may not know where the game keeps its files.
std::string where() {
  std::error_code error;
  const std::string folder = fs::current_path(error).string();
  return error ? "" : " (in " + folder + ")";
}

std::string failure(const char* action, int error) {
  return std::string("cannot ") + action + " " + shown(Scores::path) + ": " + std::strerror(error);
}

} // namespace

void Scores::prepare_for(int argument_count, const char* const* arguments) {
  if (argument_count < 1 || arguments == nullptr)
    return;
  const bool is_scene = argument_count > 1 && std::string_view(arguments[1]) == "shot";
  const char* hindrance = std::getenv("QORRT_NO_SCORES");
  if (is_scene)
    prepare_to_look();
  else if (hindrance != nullptr && *hindrance != '\0')
    do_without(hindrance);
  else
    prepare_to_keep();
}

void Scores::prepare_to_look() {
  make_folder();
  const Kind kind = look_at_table(table()).kind;
  is_readable_ = kind == Kind::table || kind == Kind::missing;
}

void Scores::prepare_to_keep() {
  make_folder();
  const fs::path destination = link_end(table());
  are_taken_ = !only_copy_.enter(destination);
  if (are_taken_) {
    news_.push_back("the game is running already, with these scores; play there" + where());
    return;
  }
  remove_leftovers(destination.parent_path());
  put_aside_what_is_no_table();
  if (are_kept_)
    try_to_save();
}

void Scores::do_without(const std::string& reason) {
  is_readable_ = false;
  give_up(reason);
}

void Scores::put_aside_what_is_no_table() {
  const TableFile found = look_at_table(table());
  if (found.kind == Kind::out_of_reach)
    return do_without(failure("read", found.error) + where());
  if (found.kind != Kind::no_table)
    return;
  const std::string aside = put_aside(table());
  if (aside.empty())
    return do_without(failure("put aside", errno) + where());
  news_.push_back(shown(path) + " was " + found.what + " and no table of scores; it is called " +
                  shown(aside) + " now" + where());
}

void Scores::try_to_save() {
  try {
    try_writing(path, longest_entry);
  } catch (const CommandError& error) {
    give_up(error.what() + where());
  }
}

void Scores::give_up(const std::string& reason) {
  are_kept_ = false;
  news_.push_back("scores are not kept: " + reason);
}

} // namespace kavo::host
