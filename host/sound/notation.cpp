#include "host/sound/notation.h"

#include <string>
#include <utility>

#include "host/sound/pattern_error.h"
#include "host/sound/pitch.h"

namespace kavo::sound {

namespace {

using Kind = PatternNode::Kind;

// On one step. Every factor is a level of the tree, and trees are walked by recursion.
constexpr int most_modifiers = 16;

// Weight and copies belong to the step, so they move to the node that now stands for it.
PatternNode scaled(PatternNode child, Kind kind) {
  PatternNode node;
  node.kind = kind;
  node.column = child.column;
  node.weight = std::exchange(child.weight, 1);
  node.copies = std::exchange(child.copies, 1);
  node.children.push_back(std::move(child));
  return node;
}

void set_once(int& value, int to, char sign, size_t at) {
  if (value != 1)
    throw PatternError(at + 1, std::string("expected \"") + sign + "\" once in a step");
  value = to;
}

class Parser {
public:
  explicit Parser(std::string_view text) : text_(text) {}

  PatternNode pattern() {
    PatternNode root = layers(Kind::sequence, 0);
    if (position_ < text_.size())
      throw unexpected(text_, position_, "a note, ~, [, < or a modifier");
    return root;
  }

private:
  PatternNode layers(Kind layer_kind, int depth);
  PatternNode sequence(Kind kind, int depth);
  PatternNode step(int depth);
  PatternNode term(int depth);
  PatternNode group(char closing, Kind layer_kind, int depth);
  bool modifier(PatternNode& node);
  PatternNode spread(PatternNode child);
  int number(int least, int most, const char* what);
  void expect(char wanted);
  char peek();
  bool digit_follows();

  std::string_view text_;
  size_t position_ = 0;
};

// The next character that is no blank, NUL at the end.
char Parser::peek() {
  while (position_ < text_.size() &&
         std::string_view(" \t\r\n").find(text_[position_]) != std::string_view::npos)
    ++position_;
  return position_ < text_.size() ? text_[position_] : '\0';
}

bool Parser::digit_follows() {
  const char next = peek();
  return next >= '0' && next <= '9';
}

void Parser::expect(char wanted) {
  if (peek() != wanted)
    throw unexpected(text_, position_, std::string("\"") + wanted + '"');
  ++position_;
}

int Parser::number(int least, int most, const char* what) {
  const std::string range =
      std::string(what) + " from " + std::to_string(least) + " to " + std::to_string(most);
  if (!digit_follows())
    throw unexpected(text_, position_, range);
  const size_t start = position_;
  int value = 0;
  for (; position_ < text_.size() && text_[position_] >= '0' && text_[position_] <= '9';
       ++position_)
    value = value > most ? value : value * 10 + (text_[position_] - '0');
  if (value < least || value > most)
    throw PatternError(start + 1, "expected " + range + ", got " +
                                      std::string(text_.substr(start, position_ - start)));
  return value;
}

PatternNode Parser::layers(Kind layer_kind, int depth) {
  PatternNode all;
  all.kind = Kind::layers;
  all.column = position_ + 1;
  all.children.push_back(sequence(layer_kind, depth));
  while (peek() == ',') {
    ++position_;
    all.children.push_back(sequence(layer_kind, depth));
  }
  if (all.children.size() > 1)
    return all;
  PatternNode only = std::move(all.children.front());
  return only;
}

PatternNode Parser::sequence(Kind kind, int depth) {
  PatternNode node;
  node.kind = kind;
  peek();
  node.column = position_ + 1;
  for (char next = peek();
       next == '~' || next == '[' || next == '<' || (next >= 'a' && next <= 'g'); next = peek())
    node.children.push_back(step(depth));
  return node;
}

PatternNode Parser::step(int depth) {
  PatternNode node = term(depth);
  for (int count = 0; modifier(node); ++count)
    if (count == most_modifiers)
      throw PatternError(node.column,
                         "expected at most " + std::to_string(most_modifiers) + " modifiers");
  return node;
}

PatternNode Parser::term(int depth) {
  PatternNode node;
  node.column = position_ + 1;
  switch (peek()) {
  case '~':
    ++position_;
    return node;
  case '[':
    return group(']', Kind::sequence, depth + 1);
  case '<':
    return group('>', Kind::alternation, depth + 1);
  default:
    node.kind = Kind::note;
    node.note = read_note(text_, position_);
    return node;
  }
}

PatternNode Parser::group(char closing, Kind layer_kind, int depth) {
  if (depth > deepest_nesting)
    throw PatternError(position_ + 1, "expected at most " + std::to_string(deepest_nesting) +
                                          " brackets inside one another");
  const size_t column = ++position_;
  PatternNode node = layers(layer_kind, depth);
  if (peek() != closing)
    throw unexpected(text_, position_,
                     std::string("a note, ~, [, <, a modifier or \"") + closing + '"');
  ++position_;
  node.column = column;
  return node;
}

PatternNode Parser::spread(PatternNode child) {
  PatternNode node = scaled(std::move(child), Kind::spread);
  const size_t at = (peek(), position_);
  node.onsets = number(1, largest_factor, "a number of onsets");
  expect(',');
  node.factor = number(1, largest_factor, "a number of steps");
  if (node.onsets > node.factor)
    throw PatternError(at + 1, "expected at most as many onsets as steps, got " +
                                   std::to_string(node.onsets) + " on " +
                                   std::to_string(node.factor));
  if (peek() == ',') {
    ++position_;
    node.rotation = number(0, largest_factor, "a rotation");
  }
  expect(')');
  return node;
}

// True when one stood here and has been applied to `node`.
bool Parser::modifier(PatternNode& node) {
  const char sign = peek();
  if (sign == '\0' || std::string_view("*/@!(").find(sign) == std::string_view::npos)
    return false;
  const size_t at = position_++;
  if (sign == '*' || sign == '/') {
    node = scaled(std::move(node), sign == '*' ? Kind::faster : Kind::slower);
    node.factor = number(1, largest_factor, "a factor");
  } else if (sign == '@') {
    set_once(node.weight, number(1, largest_factor, "a weight"), sign, at);
  } else if (sign == '!') {
    const int copies = digit_follows() ? number(1, largest_factor, "a number of copies") : 2;
    set_once(node.copies, copies, sign, at);
  } else {
    node = spread(std::move(node));
  }
  return true;
}

} // namespace

PatternNode parse_pattern(std::string_view text) {
  return Parser(text).pattern();
}

} // namespace kavo::sound
