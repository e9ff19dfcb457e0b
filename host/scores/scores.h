// The program's table of scores: known before play begins to be there, to be whole and to be the
// program's alone, or else kept out of its way.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/scores/only_copy.h"

namespace kavo::host {

class Scores {
public:
  // Below the current folder.
  static constexpr std::string_view path = "tmp/kavo_high.txt";

  // As the program's arguments ask for. A program of no name, which has none, has no scores either.
  // QORRT_NO_SCORES in the environment says why nothing can be kept.
  void prepare_for(int argument_count, const char* const* arguments);

  // For a program that only looks at its table: makes the table's folder and looks.
  void prepare_to_look();

  // For one that will save, too. Takes the table for this program alone, removes what a killed one
  // left, puts aside what is no table, and tries whether a table can be read and replaced.
  void prepare_to_keep();

  // For one whose player cannot keep any, for this reason: nothing is touched.
  void do_without(const std::string& reason);

  // Another program has the table: this one must not play on it.
  bool are_taken() const { return are_taken_; }

  // What the player should know before play begins, a line each.
  const std::vector<std::string>& news() const { return news_; }

  // No table is to be read at this path, whatever lies there.
  bool hides(std::string_view file) const { return !is_readable_ && file == path; }

  // What is written to this path is dropped, as the player was told.
  bool drops(std::string_view file) const { return !are_kept_ && file == path; }

  // Lets another program have the table.
  void leave() { only_copy_.leave(); }

private:
  void put_aside_what_is_no_table();
  void try_to_save();
  void give_up(const std::string& reason);

  OnlyCopy only_copy_;
  std::vector<std::string> news_;
  bool are_taken_ = false;
  bool is_readable_ = true;
  bool are_kept_ = true;
};

} // namespace kavo::host
