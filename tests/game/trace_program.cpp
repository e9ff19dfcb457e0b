// kavo-trace [frames]: prints each command of start-up, of all scenes and of a visit to the program
// (title, options, whole games, pauses, names), as the game sends them to a recording host with
// scripted keys and chance. Two machines are of one mind when they print the same bytes.
#include <charconv>
#include <cstdio>
#include <cstring>
#include <exception>
#include <utility>

#include "game/program.h"
#include "game/state.h"
#include "runtime/qor.h"
#include "tests/fakes/fake_clock.h"
#include "tests/fakes/recording_host.h"
#include "tests/game/players.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

constexpr int64_t whole_visit = 2000; // frames

void print_new_commands() {
  for (const std::string& line : std::exchange(recording_host().trace, {}))
    std::printf("%s\n", line.c_str());
}

// The whole program with these words behind its name. False when it ended with an error.
bool run_with(std::vector<std::string> words) {
  words.insert(words.begin(), "kavo");
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  fake_clock() = FakeClock();
  static_cast<void>(run_program(static_cast<int>(words.size()), arguments.data()));
  print_new_commands();
  for (const std::string& fault : recording_host().faults)
    std::fprintf(stderr, "kavo-trace: %s\n", fault.c_str());
  if (qor_err_code() != 0)
    std::fprintf(stderr, "kavo-trace: %s\n", qor_err_msg());
  return recording_host().faults.empty() && qor_err_code() == 0;
}

bool show_scenes() {
  bool is_well = true;
  for (const char* word : {"kavo", "pop", "pu", "storm", "qbomb", "title", "opts", "enter", ""}) {
    std::printf("== shot %s\n", word);
    recording_host().reset();
    is_well &= run_with({"shot", word});
  }
  return is_well;
}

bool visit(int64_t frames) {
  std::printf("== %lld frames\n", static_cast<long long>(frames));
  recording_host().reset();
  Visitor visitor(7, frames);
  recording_host().on_frame = [&visitor] {
    print_new_commands();
    recording_host().keys = visitor.keys();
  };
  const bool is_well = run_with({});
  std::fprintf(stderr, "kavo-trace: %lld frames, %lld games, %lld names\n",
               static_cast<long long>(visitor.frames()), static_cast<long long>(visitor.games()),
               static_cast<long long>(visitor.names()));
  return is_well && visitor.names() > 0;
}

int trace(int64_t frames) {
  const WorkingFolder folder;
  const bool are_scenes_well = show_scenes();
  const bool is_well = visit(frames) && are_scenes_well;
  release_state();
  return is_well ? 0 : 1;
}

} // namespace
} // namespace kavo::test

int main(int argc, char** argv) {
  int64_t frames = kavo::test::whole_visit;
  if (argc == 2)
    std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), frames);
  try {
    return kavo::test::trace(frames);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kavo-trace: %s\n", error.what());
    return 1;
  }
}
