#include "tests/desktop/keys/typing.h"

#include <algorithm>
#include <csignal>
#include <iterator>
#include <set>
#include <sstream>
#include <thread>

namespace kavo::typing {

namespace {

using namespace std::chrono_literals;

// The server's clock counts whole milliseconds, so that two of them may be three of ours.
constexpr auto shortest_pause = 4ms;

// What the program calls the key.
std::string meaning_of(const std::string& key) {
  static const std::map<std::string, std::string> second_names = {
      {"a", "left"}, {"d", "right"}, {"w", "up"}, {"s", "down"}};
  if (const auto second = second_names.find(key); second != second_names.end())
    return second->second;
  std::string name = key;
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return name;
}

std::multiset<std::string> words_of(const std::string& line) {
  std::istringstream words(line);
  return {std::istream_iterator<std::string>(words), {}};
}

std::string joined(const std::multiset<std::string>& words) {
  std::string text;
  for (const std::string& word : words)
    text += word + ' ';
  return text;
}

bool is_change(const std::string& line) {
  return line.starts_with('+') || line.starts_with('-');
}

} // namespace

const std::vector<std::string> game_keys = {"Left",   "Right", "Up", "Down", "space",
                                            "Return", "p",     "o",  "m",    "Escape"};
const std::vector<std::string> direction_keys = {"Left", "a", "Right", "d", "Up", "w", "Down", "s"};

Typist::Typist(int frame_ms)
    : program_(desktop_.start({{KEYS_PROGRAM, std::to_string(frame_ms)}, {}, "."})),
      window_(desktop_.wait_for_window("keys")) {
  window_->focus();
}

void Typist::press(const std::string& key) {
  count(key, true);
  press_unseen(key);
}

void Typist::release(const std::string& key) {
  count(key, false);
  release_unseen(key);
}

void Typist::tap(const std::string& key) {
  press(key);
  release(key);
}

bool Typist::is_down(const std::string& key) const {
  return std::find(held_.begin(), held_.end(), key) != held_.end();
}

void Typist::press_unseen(const std::string& key) {
  const auto released = released_.find(key);
  if (released != released_.end())
    std::this_thread::sleep_until(released->second + shortest_pause);
  desktop_.press(key);
}

void Typist::release_unseen(const std::string& key) {
  desktop_.release(key);
  released_[key] = std::chrono::steady_clock::now();
}

void Typist::count(const std::string& key, bool is_down) {
  typed_.push_back((is_down ? '+' : '-') + meaning_of(key));
  presses_ += is_down;
  if (is_down)
    held_.push_back(key);
  else
    std::erase(held_, key);
}

void Typist::take_the_keyboard_away() {
  window_->take_focus_away();
  while (!held_.empty())
    count(held_.front(), false);
}

void Typist::give_it_back() {
  window_->focus();
}

void Typist::move_pointer_out_and_in() {
  for (const int place : {1000, 10, 1000, 10})
    desktop_.move_pointer(place, place);
}

void Typist::make_it_busy() {
  const int before = count_in_output("busy\n");
  desktop_.tap("F5");
  says("busy\n", before + 1);
}

void Typist::stop_it() {
  program_->send_signal(SIGSTOP);
}

void Typist::let_it_go_on() {
  program_->send_signal(SIGCONT);
}

void Typist::let_it_catch_up() const {
  constexpr int most_unseen = 50;
  if (presses_ % most_unseen == 0)
    says("+", presses_ - most_unseen);
}

bool Typist::says(const std::string& text, int times) const {
  return kavo::desktop::eventually([&] { return count_in_output(text) >= times; });
}

int Typist::count_in_output(const std::string& text) const {
  const std::string output = program_->output_so_far();
  int count = 0;
  for (size_t at = 0; (at = output.find(text, at)) != std::string::npos; at += text.size())
    ++count;
  return count;
}

std::string Typist::difference_at_the_end() {
  while (!held_.empty())
    release(std::string(held_.front()));
  desktop_.tap("F6");
  const kavo::desktop::Outcome outcome = program_->wait();
  if (!outcome.has_exited || outcome.code != 0)
    return "the program ended with " + std::to_string(outcome.code) + ": " + outcome.errors;
  return difference_to(outcome.output);
}

std::string Typist::difference_to(const std::string& output) {
  std::istringstream lines(output);
  auto next = typed_.begin();
  for (std::string line; std::getline(lines, line);) {
    if (!is_change(line))
      continue;
    ++frames_;
    const std::multiset<std::string> seen = words_of(line);
    const auto rest = static_cast<size_t>(typed_.end() - next);
    const auto end = next + static_cast<ptrdiff_t>(std::min(seen.size(), rest));
    const std::multiset<std::string> typed(next, end);
    if (seen != typed)
      return "frame " + std::to_string(frames_) + " of changes saw " + joined(seen) +
             "where this was typed: " + joined(typed);
    next = end;
  }
  return next == typed_.end() ? "" : "never seen: " + *next;
}

} // namespace kavo::typing
