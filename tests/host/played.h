// A program as a player starts it: with a name, and so with settings, help and a game that waits.
#pragma once

#include <string>
#include <vector>

#include "tests/host/bridge.h"

namespace kavo::test {

class Played {
public:
  explicit Played(const std::vector<const char*>& words = {"kavo"}) {
    for (const char* word : words)
      words_.emplace_back(word);
    std::vector<char*> arguments;
    for (std::string& word : words_)
      arguments.push_back(word.data());
    handle_ = qorrt_init(static_cast<int>(arguments.size()), arguments.data());
  }
  ~Played() { qorrt_shutdown(handle_); }
  Played(const Played&) = delete;
  Played& operator=(const Played&) = delete;

  int64_t handle() const { return handle_; }

  template<typename... Values>
  double send(const char* name, const Values&... values) const {
    const CommandArguments arguments(values...);
    return qorrt_call_typed_f64(handle_, name, arguments.slots(), arguments.tags(),
                                arguments.count());
  }

private:
  std::vector<std::string> words_;
  int64_t handle_;
};

} // namespace kavo::test
